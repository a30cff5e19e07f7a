#include "DemoCommand.h"

#include <cstdio>

#include "CliSession.h"
#include "MemberCommands.h"
#include "MenuText.h"
#include "facade/NutritionSDK.h"
#include "session/NutritionAuth.h"
#include "views/Window.h"

namespace nutrition::cli {
namespace {

std::string text(const std::optional<std::string>& value) {
  return value.value_or("-");
}

std::string number(const std::optional<std::int64_t>& value, const char* unit) {
  return value ? std::to_string(*value) + unit : "-";
}

void printProfile(const Platform& platform) {
  const auto profile = NutritionSDK::sharedInstance().getProfile();
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
              user.getKcalForDiet(currentDate(*platform.clock), *platform.calendar),
              user.dailyKcal.value_or(0));
}

}  // namespace

int runDemo(const std::vector<std::string>& arguments) {
  auto options = parseCliOptions(arguments);
  if (!options) {
    std::fprintf(stderr, "usage: nutrition %s\n", kMemberOptionsUsage);
    return 2;
  }
  CliSession cli(*options, /*keepSandboxState=*/false);
  if (!cli.open()) {
    printRequests(cli.http());
    return 1;
  }
  std::printf("NutritionKit against %s%s\n", cli.baseURL().c_str(),
              cli.embedded() ? " (the embedded sandbox backend)" : "");
  const auto& session = NutritionAuth::sharedInstance();
  std::printf("Logged in as %s; the backend %s member %s.\n",
              session.credentials->clientName.value_or(session.appID).c_str(),
              session.isUnregister ? "does not know" : "knows", session.userId().c_str());

  // Fill in the profile; the backend creates (or updates) the member and builds a new menu.
  if (!cli.sendDemoProfile()) {
    printRequests(cli.http());
    return 1;
  }
  std::printf("Profile sent; the backend now %s the member.\n",
              session.isUnregister ? "still does not know" : "knows");
  printProfile(cli.platform());

  const auto menu = cli.builtMenu(/*verbose=*/true);
  if (!menu) {
    printRequests(cli.http());
    return 1;
  }
  std::printf("\n");
  printToday();
  std::printf("\nThe weekly menu home, as the member sees it:\n");
  auto window = openKeyWindow(cli);
  if (!printMenuHome(cli, *window)) return 1;
  std::printf("\n");
  printRequests(cli.http());
  return 0;
}

}  // namespace nutrition::cli
