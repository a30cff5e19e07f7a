#include "platform/linux/LinuxPlatform.h"

#include <cstdlib>

#include "platform/linux/EnvDeviceLocale.h"
#include "platform/linux/FileKeyValueStore.h"
#include "platform/linux/TzCalendar.h"

namespace nutrition {

std::filesystem::path defaultDataDirectory() {
  if (const char* xdg = std::getenv("XDG_DATA_HOME"); xdg != nullptr && *xdg == '/') {
    return std::filesystem::path(xdg) / "nutritionkit";
  }
  if (const char* home = std::getenv("HOME"); home != nullptr && *home == '/') {
    return std::filesystem::path(home) / ".local/share/nutritionkit";
  }
  return ".nutritionkit";
}

std::shared_ptr<Platform> makeLinuxPlatform(const std::filesystem::path& dataDirectory) {
  auto platform = std::make_shared<Platform>();
  platform->clock = std::make_shared<SystemClock>();
  platform->calendar = std::make_shared<TzCalendar>();
  platform->keyValueStores = std::make_shared<FileKeyValueStores>(dataDirectory / "defaults");
  platform->locale = std::make_shared<EnvDeviceLocale>();
  return platform;
}

}  // namespace nutrition
