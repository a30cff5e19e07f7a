// The screens of the module shown in the terminal: the command opens the member's session,
// shows the screen in a key window the way a host would, and prints its view tree.

#include <chrono>
#include <cstdio>
#include <string>

#include "CliSession.h"
#include "MemberCommands.h"
#include "facade/Core.h"
#include "facade/NutritionSDK.h"
#include "views/TextRenderer.h"
#include "views/Window.h"

namespace nutrition::cli {

std::shared_ptr<Window> openKeyWindow(const CliSession& cli) {
  auto window = std::make_shared<Window>(nullptr, cli.platform().mainQueue);
  window->setRootViewController(std::make_shared<ViewController>());
  Core::current().application().setKeyWindow(window);
  return window;
}

namespace {

using namespace std::chrono_literals;

// Takes --scheme and --watch off the front of `arguments`; false (message printed) when one is
// wrong.
bool takeScreenOptions(std::vector<std::string>& arguments, std::int64_t& scheme, int& watch) {
  while (arguments.size() >= 2 && (arguments[0] == "--scheme" || arguments[0] == "--watch")) {
    const std::string name = arguments[0];
    const std::string value = arguments[1];
    if (name == "--scheme") {
      if (value != "1" && value != "2" && value != "3") {
        std::fprintf(stderr, "nutrition: --scheme takes 1 (12/12), 2 (14/10) or 3 (16/8)\n");
        return false;
      }
      scheme = std::stoll(value);
    } else {
      const bool digits = !value.empty() && value.size() <= 4 &&
                          value.find_first_not_of("0123456789") == std::string::npos;
      watch = digits ? std::stoi(value) : 0;
      if (watch < 1 || watch > 3600) {
        std::fprintf(stderr, "nutrition: --watch takes a number of seconds from 1 to 3600\n");
        return false;
      }
    }
    arguments.erase(arguments.begin(), arguments.begin() + 2);
  }
  return true;
}

}  // namespace

int runFastingScreen(const std::vector<std::string>& arguments) {
  const char* usage = "fasting [--scheme 1|2|3] [--watch N]";
  std::vector<std::string> rest = arguments;
  std::int64_t scheme = 3;
  int watch = 0;
  if (!takeScreenOptions(rest, scheme, watch)) return 2;
  auto cli = openMember(rest, usage);
  if (!cli || !ensureScheme(*cli, scheme)) return 1;
  auto window = openKeyWindow(*cli);

  std::shared_ptr<ViewController> screen;
  bool answered = false;
  NutritionSDK::sharedInstance().getAyunoController([&](std::shared_ptr<ViewController> shown) {
    screen = std::move(shown);
    answered = true;
  });
  if (!cli->runUntil([&] { return answered; }, 5s) || !screen) {
    return cli->fail("the member has no fasting scheme");
  }
  screen->modalPresentationStyle = ModalPresentationStyle::fullScreen;
  window->rootViewController()->present(screen, false);
  std::string shown = renderText(*screen);
  std::fputs(shown.c_str(), stdout);

  // Each tick of the screen's own timer redraws it; print each new look until time is up.
  cli->letClockRun();
  const auto deadline = std::chrono::steady_clock::now() + std::chrono::seconds(watch);
  for (int tick = 1; watch > 0 && std::chrono::steady_clock::now() < deadline; ++tick) {
    const auto left =
        std::chrono::ceil<std::chrono::seconds>(deadline - std::chrono::steady_clock::now());
    std::string next;
    if (!cli->runUntil([&] { return (next = renderText(*screen)) != shown; }, left)) break;
    shown = std::move(next);
    std::printf("--- tick %d\n%s", tick, shown.c_str());
    std::fflush(stdout);
  }
  return 0;
}

int runFastingPhase(const std::vector<std::string>& arguments) {
  auto cli = openMember(arguments, "fasting phase");
  if (!cli) return 1;
  auto window = openKeyWindow(*cli);
  std::shared_ptr<ViewController> screen;
  NutritionSDK::sharedInstance().getAyunoPhaseInfo(
      [&](std::shared_ptr<ViewController> shown) { screen = std::move(shown); });
  window->rootViewController()->present(screen, false);
  std::fputs(renderText(*screen).c_str(), stdout);
  return 0;
}

}  // namespace nutrition::cli
