#include "platform/Platform.h"

#include <atomic>
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

std::atomic<void (*)()> installObserver{nullptr};

// Fills each empty member of `platform` from `defaults`.
std::shared_ptr<const Platform> completed(const std::shared_ptr<const Platform>& platform) {
  auto filled = Platform::portableDefaults();
  if (!platform) return filled;
  auto complete = std::make_shared<Platform>(*platform);
  const auto fill = [](auto& member, const auto& fallback) {
    if (!member) member = fallback;
  };
  fill(complete->clock, filled->clock);
  fill(complete->calendar, filled->calendar);
  fill(complete->keyValueStores, filled->keyValueStores);
  fill(complete->locale, filled->locale);
  fill(complete->http, filled->http);
  fill(complete->mainQueue, filled->mainQueue);
  fill(complete->resources, filled->resources);
  fill(complete->notifications, filled->notifications);
  fill(complete->fonts, filled->fonts);
  if (complete->documentsDirectory.empty()) {
    complete->documentsDirectory = filled->documentsDirectory;
  }
  return complete;
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
  platform->fonts = std::make_shared<InMemoryFontRegistry>();
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
  platform = completed(platform);
  {
    std::lock_guard lock(platformMutex());
    std::swap(installed(), platform);
  }
  if (auto* observer = installObserver.load()) observer();
  return platform;
}

void Platform::setInstallObserver(void (*observer)()) {
  installObserver.store(observer);
}

}  // namespace nutrition
