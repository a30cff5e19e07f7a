#include "platform/Platform.h"

#include <mutex>

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
  return platform;
}

std::shared_ptr<const Platform> Platform::current() {
  std::lock_guard lock(platformMutex());
  return installed();
}

std::shared_ptr<const Platform> Platform::install(std::shared_ptr<const Platform> platform) {
  const bool complete = platform && platform->clock && platform->calendar &&
                        platform->keyValueStores && platform->locale;
  if (!complete) {
    auto filled = portableDefaults();
    if (platform) {
      if (platform->clock) filled->clock = platform->clock;
      if (platform->calendar) filled->calendar = platform->calendar;
      if (platform->keyValueStores) filled->keyValueStores = platform->keyValueStores;
      if (platform->locale) filled->locale = platform->locale;
    }
    platform = std::move(filled);
  }
  std::lock_guard lock(platformMutex());
  std::swap(installed(), platform);
  return platform;
}

}  // namespace nutrition
