#include "platform/linux/LinuxPlatform.h"

#include <cstdlib>

#include "platform/linux/CurlHttpClient.h"
#include "platform/linux/DirectoryResourceBundle.h"
#include "platform/linux/EnvDeviceLocale.h"
#include "platform/linux/FileKeyValueStore.h"
#include "platform/linux/FileNotificationScheduler.h"
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

std::filesystem::path defaultResourcesDirectory() {
  if (const char* path = std::getenv("NUTRITIONKIT_RESOURCES"); path != nullptr && *path != '\0') {
    return path;
  }
  return NUTRITION_RESOURCES_DIR;
}

std::shared_ptr<Platform> makeLinuxPlatform(const LinuxPlatformOptions& options) {
  auto platform = std::make_shared<Platform>();
  platform->clock = std::make_shared<SystemClock>();
  platform->calendar = std::make_shared<TzCalendar>();
  platform->keyValueStores =
      std::make_shared<FileKeyValueStores>(options.dataDirectory / "defaults");
  platform->locale = std::make_shared<EnvDeviceLocale>();
  platform->http = std::make_shared<CurlHttpClient>();
  platform->mainQueue = std::make_shared<ManualMainQueue>(platform->clock);
  platform->resources = std::make_shared<DirectoryResourceBundle>(options.resourcesDirectory);
  platform->fonts = std::make_shared<InMemoryFontRegistry>();
  platform->notifications =
      std::make_shared<FileNotificationScheduler>(options.dataDirectory / "notifications.json");
  platform->documentsDirectory = (options.dataDirectory / "Documents").string();
  return platform;
}

}  // namespace nutrition
