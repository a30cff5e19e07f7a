#include "support/TestPlatform.h"

#include <unistd.h>

#include <atomic>

#include "platform/linux/DirectoryResourceBundle.h"

namespace nutrition::test {

Date utc(int year, unsigned month, unsigned day, int hour, int minute, int second) {
  using namespace std::chrono;
  return sys_days{std::chrono::year{year} / std::chrono::month{month} / std::chrono::day{day}} +
         hours{hour} + minutes{minute} + seconds{second};
}

TestPlatform::TestPlatform(Options options)
    : clock_(std::make_shared<FakeClock>(options.now)),
      stores_(std::make_shared<InMemoryKeyValueStores>()),
      queue_(std::make_shared<ManualMainQueue>(clock_)),
      scripted_(std::make_shared<ScriptedHttpClient>()) {
  static std::atomic<int> counter{0};
  documents_ = std::filesystem::temp_directory_path() /
               ("nutrition-test-" + std::to_string(::getpid()) + "-" + std::to_string(counter++));
  std::filesystem::remove_all(documents_);

  auto platform = std::make_shared<Platform>();
  platform->clock = clock_;
  platform->calendar =
      options.calendar ? options.calendar : std::make_shared<FixedOffsetCalendar>();
  platform->keyValueStores = stores_;
  platform->locale = std::make_shared<FixedDeviceLocale>(options.language);
  platform->http = options.http ? options.http : scripted_;
  platform->mainQueue = queue_;
  platform->resources =
      options.realResources
          ? std::shared_ptr<const ResourceBundle>(
                std::make_shared<DirectoryResourceBundle>(NUTRITION_RESOURCES_DIR))
          : std::make_shared<EmptyResourceBundle>();
  platform->notifications = std::make_shared<InMemoryNotificationScheduler>();
  platform->fonts = std::make_shared<InMemoryFontRegistry>();
  platform->documentsDirectory = documents_.string();
  platform_ = std::move(platform);
  if (options.install) previous_ = Platform::install(platform_);
}

TestPlatform::~TestPlatform() {
  if (previous_) Platform::install(previous_);
  std::error_code ignored;
  std::filesystem::remove_all(documents_, ignored);
}

double TestPlatform::nowSeconds() const {
  return secondsSince1970(*clock_);
}

}  // namespace nutrition::test
