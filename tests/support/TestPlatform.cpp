#include "support/TestPlatform.h"

#include "base/SharedInstance.h"

namespace nutrition::test {

Date utc(int year, unsigned month, unsigned day, int hour, int minute, int second) {
  using namespace std::chrono;
  return sys_days{std::chrono::year{year} / std::chrono::month{month} / std::chrono::day{day}} +
         hours{hour} + minutes{minute} + seconds{second};
}

TestPlatform::TestPlatform(Options options)
    : clock_(std::make_shared<FakeClock>(options.now)),
      stores_(std::make_shared<InMemoryKeyValueStores>()) {
  auto platform = std::make_shared<Platform>();
  platform->clock = clock_;
  platform->calendar =
      options.calendar ? options.calendar : std::make_shared<FixedOffsetCalendar>();
  platform->keyValueStores = stores_;
  platform->locale = std::make_shared<FixedDeviceLocale>(options.language);
  resetSharedInstances();
  previous_ = Platform::install(std::move(platform));
}

TestPlatform::~TestPlatform() {
  resetSharedInstances();
  Platform::install(previous_);
}

}  // namespace nutrition::test
