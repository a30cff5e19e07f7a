#pragma once
// The device language on Linux, from the locale environment: the first non-empty of LC_ALL,
// LC_MESSAGES and LANG ("fr_FR.UTF-8" gives "fr"; "C" and "POSIX" name no language).

#include <string>
#include <string_view>

#include "platform/DeviceLocale.h"

namespace nutrition {

class EnvDeviceLocale final : public DeviceLocale {
 public:
  std::string languageCode() const override;
};

// The language part of a POSIX locale name, lower case; empty for "C", "POSIX" or "".
std::string languageFromLocaleName(std::string_view name);

}  // namespace nutrition
