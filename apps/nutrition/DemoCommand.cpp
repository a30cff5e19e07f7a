#include "DemoCommand.h"

#include <chrono>
#include <cstdio>
#include <functional>
#include <optional>

#include "RecordingHttpClient.h"
#include "backend/DataServiceNutrition.h"
#include "facade/NutritionSDK.h"
#include "facade/NutritionSDKUtils.h"
#include "logic/MenuDay.h"
#include "platform/linux/LinuxPlatform.h"
#include "sandbox/SandboxServer.h"
#include "sandbox/SeedData.h"
#include "session/NutritionAuth.h"

namespace nutrition::cli {
namespace {

using namespace std::chrono_literals;

struct DemoOptions {
  std::optional<std::string> baseURL;
  std::string appID;
  std::string password;
  std::string member = "demo-member";
};

const char* kUsage = "usage: nutrition [--base-url URL --app-id ID --password P] [--member M]\n";

std::optional<DemoOptions> parse(const std::vector<std::string>& arguments) {
  DemoOptions options;
  for (std::size_t i = 0; i < arguments.size(); ++i) {
    const std::string& name = arguments[i];
    if (i + 1 >= arguments.size()) {
      std::fprintf(stderr, "nutrition: '%s' needs a value\n%s", name.c_str(), kUsage);
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
      std::fprintf(stderr, "nutrition: unknown option '%s'\n%s", name.c_str(), kUsage);
      return std::nullopt;
    }
  }
  return options;
}

// Runs the main queue until `done` holds or `timeout` passes; false on timeout or when a
// request got no answer.
bool runUntil(ManualMainQueue& queue, const RecordingHttpClient& http,
              const std::function<bool()>& done, std::chrono::seconds timeout) {
  const auto deadline = std::chrono::steady_clock::now() + timeout;
  while (!done()) {
    if (http.transportError() || std::chrono::steady_clock::now() >= deadline) return false;
    queue.waitAndRun(100ms);
  }
  return true;
}

std::string text(const std::optional<std::string>& value) {
  return value.value_or("-");
}

std::string number(const std::optional<std::int64_t>& value, const char* unit) {
  return value ? std::to_string(*value) + unit : "-";
}

int fail(const RecordingHttpClient& http, const std::string& base, const std::string& what) {
  if (const auto error = http.transportError()) {
    std::fprintf(stderr, "nutrition: cannot reach the backend at %s: %s\n", base.c_str(),
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

void printProfile(const Platform& platform) {
  const auto& sdk = NutritionSDK::sharedInstance();
  const auto profile = sdk.getProfile();
  const auto& user = *NutritionAuth::sharedInstance().currentUser;
  std::printf("\nPublic profile:\n");
  std::printf("  name %s %s, height %s, weight %s, gender %s, born %s\n",
              text(profile->name).c_str(), text(profile->lastName).c_str(),
              number(profile->height, " cm").c_str(), number(profile->weight, " kg").c_str(),
              profile->gender ? std::string(rawValue(*profile->gender)).c_str() : "-",
              profile->birthDate
                  ? platform.calendar->format(*profile->birthDate, "dd/MM/yyyy").c_str()
                  : "-");
  std::printf("  ideal weight %.1f kg (target %s), weight at an ideal BMI %.1f kg\n",
              user.getIdealWeight(), number(user.targetWeight, " kg").c_str(),
              user.getIdealWeightKcal());
  std::printf("  daily energy for the profile %.0f kcal; plan sent %.0f kcal\n",
              user.getKcalForDiet(), user.dailyKcal.value_or(0));
}

void printToday(const NutritionMenu& menu, const Platform& platform) {
  const Date now = std::chrono::floor<std::chrono::seconds>(platform.clock->now());
  const std::int64_t today = menuDayNumber(now, *platform.calendar);
  std::printf("\nToday's menu (day %lld of 7, 1 = Monday):\n", static_cast<long long>(today));
  for (const auto& day : menu.days.value_or(std::vector<NutritionDay>{})) {
    if (day.day != today) continue;
    for (const auto& intake : day.intakes.value_or(std::vector<NutritionIntake>{})) {
      std::printf("  %s  %lld kcal\n", text(intake.name).c_str(),
                  static_cast<long long>(intake.getTotalKcal()));
      for (const auto& dish : intake.dishes.value_or(std::vector<NutritionDish>{})) {
        std::printf("    - %s (%s)  %s\n", text(dish.name).c_str(), text(dish.typeName).c_str(),
                    number(dish.kcal, " kcal").c_str());
      }
    }
    std::printf("  day total %s\n", number(day.kcalDay, " kcal").c_str());
    return;
  }
  std::printf("  the menu has no day %lld\n", static_cast<long long>(today));
}

}  // namespace

int runDemo(const std::vector<std::string>& arguments) {
  auto options = parse(arguments);
  if (!options) return 2;

  std::unique_ptr<sandbox::SandboxServer> embedded;
  if (!options->baseURL) {
    embedded = std::make_unique<sandbox::SandboxServer>(
        sandbox::SandboxServer::Options{.processingTime = 2s});
    if (!embedded->start()) {
      std::fprintf(stderr, "nutrition: cannot start the embedded sandbox backend\n");
      return 1;
    }
    const auto& account = sandbox::SeedData::embedded().accounts.front();
    options->baseURL = embedded->baseURL();
    options->appID = account.clientAlias;
    options->password = account.password;
  } else if (options->appID.empty()) {
    std::fprintf(stderr, "nutrition: --base-url needs --app-id and --password\n%s", kUsage);
    return 2;
  }
  const std::string base = *options->baseURL;

  auto platform = makeLinuxPlatform();
  auto http = std::make_shared<RecordingHttpClient>(platform->http);
  platform->http = http;
  auto queue = std::dynamic_pointer_cast<ManualMainQueue>(platform->mainQueue);
  Platform::install(platform);

  std::printf("NutritionKit against %s%s\n", base.c_str(),
              embedded ? " (the embedded sandbox backend)" : "");
  std::printf("App id %s, member %s\n\n", options->appID.c_str(), options->member.c_str());

  auto& sdk = NutritionSDK::sharedInstance();
  auto& session = NutritionAuth::sharedInstance();
  sdk.setURL(base);
  sdk.start(options->member, options->appID, options->password);
  if (!runUntil(
          *queue, *http, [&] { return session.currentUser.has_value(); }, 70s)) {
    printRequests(*http);
    return fail(*http, base, "the backend did not answer the login in time");
  }
  if (!session.credentials) {
    printRequests(*http);
    return fail(*http, base,
                "login refused: wrong app id or password for '" + options->appID + "'");
  }
  std::printf("Logged in as %s; the backend %s member %s.\n",
              session.credentials->clientName.value_or(options->appID).c_str(),
              session.isUnregister ? "does not know" : "knows", session.userId().c_str());

  // Fill in the profile; the backend creates (or updates) the member and builds a new menu.
  auto standard = platform->keyValueStores->standard();
  standard->remove(NutritionAuth::kHoldMenuTimerKey);
  sdk.updateProfile(NutritionGender::female, 165, 62, parseIso8601("1990-05-17T00:00:00Z"), 2,
                    std::nullopt, true, true);
  if (!runUntil(
          *queue, *http,
          [&] { return standard->getDouble(NutritionAuth::kHoldMenuTimerKey).has_value(); }, 70s)) {
    printRequests(*http);
    return fail(*http, base, "the profile update got no answer");
  }
  std::printf("Profile sent; the backend now %s the member.\n",
              session.isUnregister ? "still does not know" : "knows");
  printProfile(*platform);

  // Wait while the backend builds the menu.
  std::optional<NutritionMenu> menu;
  const auto deadline = std::chrono::steady_clock::now() + 60s;
  while (true) {
    bool answered = false;
    DataServiceNutrition::sharedInstance().getWeeklyIAMenu(
        [&](std::optional<Error>, std::optional<NutritionMenu> answer) {
          menu = std::move(answer);
          answered = true;
        });
    if (!runUntil(
            *queue, *http, [&] { return answered; }, 70s) ||
        !menu) {
      printRequests(*http);
      return fail(*http, base, "no menu came back from the backend");
    }
    if (menu->processed == true) break;
    if (std::chrono::steady_clock::now() >= deadline) {
      printRequests(*http);
      return fail(*http, base, "the backend did not finish the menu within a minute");
    }
    std::printf("The backend is still building the menu; asking again in a second...\n");
    runUntil(
        *queue, *http, [] { return false; }, 1s);
  }
  printToday(*menu, *platform);
  std::printf("\n");
  printRequests(*http);
  // Close the client's connections before the embedded backend stops.
  Platform::install(nullptr);
  return 0;
}

}  // namespace nutrition::cli
