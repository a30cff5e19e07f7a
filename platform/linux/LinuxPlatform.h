#pragma once
// The Platform bundle of the Linux host: system clock, the tz database calendar, key-value
// stores as files under the data directory, and the locale environment.

#include <filesystem>
#include <memory>

#include "platform/Platform.h"

namespace nutrition {

// $XDG_DATA_HOME/nutritionkit, else ~/.local/share/nutritionkit, else ./.nutritionkit.
std::filesystem::path defaultDataDirectory();

std::shared_ptr<Platform> makeLinuxPlatform(const std::filesystem::path& dataDirectory);

}  // namespace nutrition
