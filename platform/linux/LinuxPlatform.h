#pragma once
// The Platform bundle of the Linux host: system clock, the tz database calendar, key-value
// stores, pending notifications and the documents folder under the data directory, libcurl,
// the locale environment, a main queue the host's loop runs, and the resources directory.

#include <filesystem>
#include <memory>

#include "platform/Platform.h"

namespace nutrition {

// $XDG_DATA_HOME/nutritionkit, else ~/.local/share/nutritionkit, else ./.nutritionkit.
std::filesystem::path defaultDataDirectory();

// $NUTRITIONKIT_RESOURCES, else the resources directory of the source tree this was built from.
std::filesystem::path defaultResourcesDirectory();

struct LinuxPlatformOptions {
  std::filesystem::path dataDirectory = defaultDataDirectory();
  std::filesystem::path resourcesDirectory = defaultResourcesDirectory();
};

// The host runs the main queue it holds (a ManualMainQueue: waitAndRun in its loop).
std::shared_ptr<Platform> makeLinuxPlatform(const LinuxPlatformOptions& options = {});

}  // namespace nutrition
