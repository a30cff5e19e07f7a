#include "CliSession.h"

#include <cstdio>
#include <cstdlib>

#include "facade/NutritionSDK.h"
#include "logic/NutritionUtils.h"
#include "platform/linux/LinuxPlatform.h"
#include "sandbox/SeedData.h"
#include "session/NutritionAuth.h"

namespace nutrition::cli {

// NUTRITIONKIT_NOW's clock: stands still at the instant it names, so a run prints the same
// thing every time, until a command lets it run on in real time from there (`--watch`).
class PinnedClock final : public Clock {
 public:
  explicit PinnedClock(Date now) : now_(now) {}
  TimePoint now() const override {
    if (!runningSince_) return now_;
    return now_ + std::chrono::duration_cast<std::chrono::system_clock::duration>(
                      std::chrono::steady_clock::now() - *runningSince_);
  }
  void run() {
    if (!runningSince_) runningSince_ = std::chrono::steady_clock::now();
  }

 private:
  Date now_;
  std::optional<std::chrono::steady_clock::time_point> runningSince_;
};

namespace {

using namespace std::chrono_literals;

// The clock NUTRITIONKIT_NOW pins, if it names an instant.
std::shared_ptr<PinnedClock> pinnedClock() {
  const char* text = std::getenv("NUTRITIONKIT_NOW");
  if (text == nullptr || *text == '\0') return nullptr;
  const auto now = parseIso8601(text);
  if (!now) {
    std::fprintf(stderr, "nutrition: ignoring NUTRITIONKIT_NOW=%s (not an ISO 8601 date-time)\n",
                 text);
    return nullptr;
  }
  return std::make_shared<PinnedClock>(*now);
}

}  // namespace

const char* const kMemberOptionsUsage = "[--base-url URL --app-id ID --password P] [--member M]";

std::optional<CliOptions> parseCliOptions(const std::vector<std::string>& arguments) {
  CliOptions options;
  for (std::size_t i = 0; i < arguments.size(); ++i) {
    const std::string& name = arguments[i];
    if (i + 1 >= arguments.size()) {
      std::fprintf(stderr, "nutrition: '%s' needs a value\n", name.c_str());
      return std::nullopt;
    }
    const std::string& value = arguments[++i];
    if (name == "--base-url") {
      options.baseURL = value.ends_with('/') ? value : value + "/";
    } else if (name == "--app-id") {
      options.appID = value;
    } else if (name == "--password") {
      options.password = value;
    } else if (name == "--member") {
      options.member = value;
    } else {
      std::fprintf(stderr, "nutrition: unknown option '%s'\n", name.c_str());
      return std::nullopt;
    }
  }
  if (options.baseURL && options.appID.empty()) {
    std::fprintf(stderr, "nutrition: --base-url needs --app-id and --password\n");
    return std::nullopt;
  }
  return options;
}

CliSession::CliSession(CliOptions options, bool keepSandboxState)
    : options_(std::move(options)), keepSandboxState_(keepSandboxState) {}

CliSession::~CliSession() {
  // Close the client's connections before the embedded backend stops.
  Platform::install(nullptr);
  platform_.reset();
  http_.reset();
}

bool CliSession::open() {
  LinuxPlatformOptions platformOptions;
  if (!options_.baseURL) {
    sandbox::SandboxServer::Options sandboxOptions{.processingTime = 2s};
    if (keepSandboxState_) sandboxOptions.dataDirectory = platformOptions.dataDirectory / "sandbox";
    sandbox_ = std::make_unique<sandbox::SandboxServer>(sandboxOptions);
    if (!sandbox_->start()) {
      std::fprintf(stderr, "nutrition: cannot start the embedded sandbox backend\n");
      return false;
    }
    const auto& account = sandbox::SeedData::embedded().accounts.front();
    options_.baseURL = sandbox_->baseURL();
    options_.appID = account.clientAlias;
    options_.password = account.password;
  }
  base_ = *options_.baseURL;

  platform_ = makeLinuxPlatform(platformOptions);
  if (auto clock = pinnedClock()) {
    pinned_ = clock;
    platform_->clock = std::move(clock);
  }
  http_ = std::make_shared<RecordingHttpClient>(platform_->http);
  platform_->http = http_;
  queue_ = std::dynamic_pointer_cast<ManualMainQueue>(platform_->mainQueue);
  strings_ =
      std::make_unique<StringTables>(*platform_->resources, platform_->locale->languageCode());
  Platform::install(platform_);

  auto& sdk = NutritionSDK::sharedInstance();
  sdk.setURL(base_);
  sdk.start(options_.member, options_.appID, options_.password);
  // The member is ready, known or new, once the facade has a profile to give.
  if (!runUntil([&] { return sdk.getProfile().has_value(); }, 70s)) {
    fail("the backend did not answer the login in time");
    return false;
  }
  if (!NutritionAuth::sharedInstance().credentials) {
    fail("login refused: wrong app id or password for '" + options_.appID + "'");
    return false;
  }
  return true;
}

bool CliSession::ensureProfile() {
  return !NutritionAuth::sharedInstance().isUnregister || sendDemoProfile();
}

bool CliSession::sendDemoProfile() {
  auto standard = platform_->keyValueStores->standard();
  standard->remove(NutritionAuth::kHoldMenuTimerKey);
  NutritionSDK::sharedInstance().updateProfile(NutritionGender::female, 165, 62,
                                               parseIso8601("1990-05-17T00:00:00Z"), 2,
                                               std::nullopt, true, true);
  // The hold timer is set when the backend has taken the profile and the member is read again.
  if (!runUntil([&] { return standard->getDouble(NutritionAuth::kHoldMenuTimerKey).has_value(); },
                70s)) {
    fail("the profile update got no answer");
    return false;
  }
  return true;
}

std::optional<NutritionMenu> CliSession::builtMenu(bool verbose) {
  const auto deadline = std::chrono::steady_clock::now() + 60s;
  while (true) {
    bool answered = false;
    std::optional<NutritionMenu> menu;
    NutritionUtils::sharedInstance().downloadMenu([&](std::optional<NutritionMenu> answer) {
      menu = std::move(answer);
      answered = true;
    });
    if (!runUntil([&] { return answered; }, 70s) || !menu) {
      fail("no menu came back from the backend");
      return std::nullopt;
    }
    if (menu->processed == true) return menu;
    if (std::chrono::steady_clock::now() >= deadline) {
      fail("the backend did not finish the menu within a minute");
      return std::nullopt;
    }
    if (verbose)
      std::printf("The backend is still building the menu; asking again in a second...\n");
    runUntil([] { return false; }, 1s);
  }
}

void CliSession::letClockRun() {
  if (pinned_) pinned_->run();
}

bool CliSession::runUntil(const std::function<bool()>& done, std::chrono::seconds timeout) {
  const auto deadline = std::chrono::steady_clock::now() + timeout;
  while (!done()) {
    if (http_->transportError() || std::chrono::steady_clock::now() >= deadline) return false;
    queue_->waitAndRun(100ms);
  }
  return true;
}

int CliSession::fail(const std::string& what) const {
  if (const auto error = http_ ? http_->transportError() : std::nullopt) {
    std::fprintf(stderr, "nutrition: cannot reach the backend at %s: %s\n", base_.c_str(),
                 error->c_str());
  } else {
    std::fprintf(stderr, "nutrition: %s\n", what.c_str());
  }
  return 1;
}

void printRequests(const RecordingHttpClient& http) {
  std::printf("Requests made:\n");
  for (const auto& exchange : http.exchanges()) {
    std::printf("  %-6s %s  -> %s\n", exchange.method.c_str(), exchange.url.c_str(),
                exchange.transportError ? exchange.transportError->c_str()
                : exchange.answered     ? std::to_string(exchange.status).c_str()
                                        : "no answer yet");
    if (!exchange.body.empty()) std::printf("         body: %s\n", exchange.body.c_str());
  }
}

}  // namespace nutrition::cli
