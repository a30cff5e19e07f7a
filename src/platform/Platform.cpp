#include "platform/Platform.h"

#include <filesystem>
#include <mutex>
#include <system_error>

namespace nutrition {
namespace {

std::mutex& platformMutex() {
  static std::mutex mutex;
  return mutex;
}

std::shared_ptr<const Platform>& installed() {
  static std::shared_ptr<const Platform> platform = Platform::portableDefaults();
  return platform;
}

}  // namespace

std::shared_ptr<Platform> Platform::portableDefaults() {
  auto platform = std::make_shared<Platform>();
  platform->clock = std::make_shared<SystemClock>();
  platform->calendar = std::make_shared<FixedOffsetCalendar>();
  platform->keyValueStores = std::make_shared<InMemoryKeyValueStores>();
  platform->locale = std::make_shared<FixedDeviceLocale>("");
  platform->http = std::make_shared<OfflineHttpClient>();
  platform->mainQueue = std::make_shared<ManualMainQueue>(platform->clock);
  platform->resources = std::make_shared<EmptyResourceBundle>();
  platform->notifications = std::make_shared<InMemoryNotificationScheduler>();
  std::error_code error;
  const auto temporary = std::filesystem::temp_directory_path(error);
  platform->documentsDirectory =
      ((error ? std::filesystem::path("/tmp") : temporary) / "NutritionKit" / "Documents").string();
  return platform;
}

std::shared_ptr<const Platform> Platform::current() {
  std::lock_guard lock(platformMutex());
  return installed();
}

std::shared_ptr<const Platform> Platform::install(std::shared_ptr<const Platform> platform) {
  const bool complete = platform && platform->clock && platform->calendar &&
                        platform->keyValueStores && platform->locale && platform->http &&
                        platform->mainQueue && platform->resources && platform->notifications &&
                        !platform->documentsDirectory.empty();
  if (!complete) {
    auto filled = portableDefaults();
    if (platform) {
      if (platform->clock) filled->clock = platform->clock;
      if (platform->calendar) filled->calendar = platform->calendar;
      if (platform->keyValueStores) filled->keyValueStores = platform->keyValueStores;
      if (platform->locale) filled->locale = platform->locale;
      if (platform->http) filled->http = platform->http;
      if (platform->mainQueue) filled->mainQueue = platform->mainQueue;
      if (platform->resources) filled->resources = platform->resources;
      if (platform->notifications) filled->notifications = platform->notifications;
      if (!platform->documentsDirectory.empty()) {
        filled->documentsDirectory = platform->documentsDirectory;
      }
    }
    platform = std::move(filled);
  }
  std::lock_guard lock(platformMutex());
  std::swap(installed(), platform);
  return platform;
}

}  // namespace nutrition
