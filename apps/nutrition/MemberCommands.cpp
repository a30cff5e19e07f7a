#include "MemberCommands.h"

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <memory>
#include <optional>

#include "CliSession.h"
#include "MenuText.h"
#include "backend/DataServiceNutrition.h"
#include "config/NutritionSDKUtils.h"
#include "facade/NutritionSDK.h"
#include "fasting/AyunoUtils.h"
#include "logic/NutritionUtils.h"
#include "session/NutritionAuth.h"

namespace nutrition::cli {

using namespace std::chrono_literals;

std::unique_ptr<CliSession> openMember(const std::vector<std::string>& arguments,
                                       const char* usage) {
  auto options = parseCliOptions(arguments);
  if (!options) {
    std::fprintf(stderr, "usage: nutrition %s %s\n", usage, kMemberOptionsUsage);
    return nullptr;
  }
  auto cli = std::make_unique<CliSession>(*options, /*keepSandboxState=*/true);
  if (!cli->open() || !cli->ensureProfile()) return nullptr;
  return cli;
}

namespace {

int showMenu(const std::vector<std::string>& arguments, bool wholeWeek) {
  auto cli = openMember(arguments, wholeWeek ? "week" : "today");
  if (!cli) return 1;
  const auto menu = cli->builtMenu(/*verbose=*/false);
  if (!menu) return 1;
  if (wholeWeek) {
    printWeek(*menu);
  } else {
    printToday();
  }
  return 0;
}

const char* schemeLabel(std::int64_t scheme) {
  if (scheme == 1) return "12/12";
  if (scheme == 2) return "14/10";
  return "16/8";
}

// The share of the fast shown beside the elapsed time: 0 to 100, whatever the clock did (a
// start in the future reads 0; the ring's 0.999 after the end reads 100).
int shownPercentage(double percentage) {
  if (percentage == 0.999) return 100;
  if (!std::isfinite(percentage)) return percentage > 0 ? 100 : 0;
  return static_cast<int>(std::clamp(percentage * 100.0, 0.0, 100.0));
}

void printFastingStatus(const Platform& platform, const StringTables& strings) {
  const auto& sdk = NutritionSDK::sharedInstance();
  const auto& ayuno = AyunoUtils::shared();
  const auto& user = NutritionAuth::sharedInstance().currentUser;
  const std::int64_t scheme = user ? user->intermittentFastingID.value_or(0) : 0;
  std::printf("Scheme: %s\n", sdk.hasIntermittentFasting() ? schemeLabel(scheme) : "none");
  if (!sdk.isDoingIntermittentFasting()) {
    std::printf("No fast running. Start one with: nutrition fasting start\n");
  } else {
    const AyunoPhase phase = ayuno.getCurrentPhase();
    std::printf("%s\n", strings.localized("¡Estás ayunando ahora!").c_str());
    std::printf("  %s: %s (%d%%)\n", strings.localized("Tiempo transcurrido").c_str(),
                ayuno.getCurrentTimeString().c_str(),
                shownPercentage(ayuno.getCurrentPercentage()));
    std::printf("  %s: %s, %s\n", strings.localized("Fase actual del ayuno").c_str(),
                sdk.getIntermittentFastingPhase().c_str(), phase.timeInfo.value_or("").c_str());
    std::printf("  %s: %s\n", strings.localized("Empieza").c_str(), ayuno.getStartTime().c_str());
    std::printf("  %s: %s\n", strings.localized("Termina").c_str(), ayuno.getFinishTime().c_str());
  }
  const auto pending = platform.notifications->pending();
  if (pending.empty()) std::printf("No notification pending.\n");
  for (const auto& request : pending) {
    const auto& t = request.trigger;
    std::printf("Notification \"%s\" pending for %04d-%02u-%02u %02d:%02d:%02d: %s\n",
                request.identifier.c_str(), t.year, t.month, t.day, t.hour, t.minute, t.second,
                request.body.c_str());
  }
}

}  // namespace

bool ensureScheme(CliSession& cli, std::int64_t wanted) {
  auto& user = NutritionAuth::sharedInstance().currentUser;
  if (user->intermittentFastingID && *user->intermittentFastingID != 0) return true;
  user->intermittentFastingID = wanted;
  user->regenerateMenu = false;  // a fasting plan does not need a new menu
  bool answered = false;
  DataServiceNutrition::sharedInstance().updateUser(*user, false,
                                                    [&](auto, auto) { answered = true; });
  if (!cli.runUntil([&] { return answered; }, 70s)) {
    cli.fail("the backend did not take the fasting scheme");
    return false;
  }
  return NutritionAuth::sharedInstance().currentUser->intermittentFastingID == wanted;
}

int runToday(const std::vector<std::string>& arguments) {
  return showMenu(arguments, false);
}

int runWeek(const std::vector<std::string>& arguments) {
  return showMenu(arguments, true);
}

int runFasting(const std::vector<std::string>& arguments) {
  const char* usage = "fasting [--watch N] | phase | start [--scheme 1|2|3] | status | end";
  if (arguments.empty() || arguments[0].starts_with("--")) return runFastingScreen(arguments);
  const std::string action = arguments[0];
  if (action == "phase") {
    return runFastingPhase(std::vector<std::string>(arguments.begin() + 1, arguments.end()));
  }
  std::vector<std::string> rest(arguments.begin() + 1, arguments.end());
  std::int64_t scheme = 3;
  if (action == "start" && rest.size() >= 2 && rest[0] == "--scheme") {
    if (rest[1] != "1" && rest[1] != "2" && rest[1] != "3") {
      std::fprintf(stderr, "nutrition: --scheme takes 1 (12/12), 2 (14/10) or 3 (16/8)\n");
      return 2;
    }
    scheme = std::stoll(rest[1]);
    rest.erase(rest.begin(), rest.begin() + 2);
  }
  if (action != "start" && action != "status" && action != "end") {
    std::fprintf(stderr, "nutrition: unknown fasting action '%s'\nusage: nutrition %s\n",
                 action.c_str(), usage);
    return 2;
  }
  auto cli = openMember(rest, usage);
  if (!cli) return 1;
  auto& ayuno = AyunoUtils::shared();
  if (action == "start") {
    if (!ensureScheme(*cli, scheme)) return 1;
    std::printf(ayuno.startIfFinished() ? "Fast started.\n" : "A fast is already running.\n");
  } else if (action == "end") {
    std::printf(ayuno.isFinished() ? "No fast was running.\n" : "Fast ended.\n");
    ayuno.finish();
  }
  printFastingStatus(cli->platform(), cli->strings());
  return 0;
}

}  // namespace nutrition::cli
