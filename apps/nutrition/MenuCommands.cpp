// The menu screens in the terminal: the weekly menu home as the router shows it, a day of its
// strip, an intake with its recipe pages, and the alternative and favourite buttons of a page,
// each tapped as a member would and printed with the text renderer.

#include <chrono>
#include <cstdio>
#include <string>

#include "CliSession.h"
#include "MemberCommands.h"
#include "facade/Core.h"
#include "screens/menu/IntakeViewController.h"
#include "screens/menu/NutricionHomeViewController.h"
#include "screens/menu/WaitingScreenViewController.h"
#include "views/NavigationController.h"
#include "views/TextRenderer.h"
#include "views/Window.h"

namespace nutrition::cli {
namespace {

using namespace std::chrono_literals;

constexpr const char* kUsage =
    "menu [--day N] [intake I | alternative I D | favorite I D]  (N: 1 = today ... 7; I: the "
    "intake's card, 1 = first; D: the dish's page, 1 = first)";

struct MenuRequest {
  int day = 1;
  std::string action;  // "", "intake", "alternative" or "favorite"
  int intake = 0;
  int dish = 0;
};

bool isNumber(const std::string& text, int low, int high, int& value) {
  if (text.empty() || text.size() > 3 || text.find_first_not_of("0123456789") != std::string::npos)
    return false;
  value = std::stoi(text);
  return value >= low && value <= high;
}

// Takes the menu's own arguments off the front of `arguments`; prints the problem when one is
// wrong.
std::optional<MenuRequest> takeMenuRequest(std::vector<std::string>& arguments) {
  MenuRequest request;
  for (std::size_t at = 0; at < arguments.size(); ++at) {
    if (arguments[at] != "--day") continue;
    if (at + 1 >= arguments.size() || !isNumber(arguments[at + 1], 1, 7, request.day)) {
      std::fprintf(stderr, "nutrition: --day takes 1 (today) to 7\n");
      return std::nullopt;
    }
    arguments.erase(arguments.begin() + static_cast<long>(at),
                    arguments.begin() + static_cast<long>(at) + 2);
    break;
  }
  if (arguments.empty() || arguments[0].starts_with("--")) return request;
  request.action = arguments[0];
  const std::size_t wanted = request.action == "intake" ? 2 : 3;
  if ((request.action != "intake" && request.action != "alternative" &&
       request.action != "favorite") ||
      arguments.size() < wanted || !isNumber(arguments[1], 1, 99, request.intake) ||
      (wanted == 3 && !isNumber(arguments[2], 1, 99, request.dish))) {
    std::fprintf(stderr, "nutrition: usage: nutrition %s\n", kUsage);
    return std::nullopt;
  }
  arguments.erase(arguments.begin(), arguments.begin() + static_cast<long>(wanted));
  return request;
}

// Lets every request sent so far be answered and what the answers bring be shown (the dish
// photos), for up to five seconds.
void settle(CliSession& cli) {
  int turns = 0;
  cli.runUntil(
      [&] {
        for (const auto& exchange : cli.http().exchanges()) {
          if (!exchange.answered) return false;
        }
        return ++turns > 2;
      },
      5s);
}

// The home inside the navigation controller the router presented on the window's root.
NutricionHomeViewController* shownHome(Window& window) {
  auto* navigation =
      dynamic_cast<NavigationController*>(window.rootViewController()->presentedViewController());
  if (navigation == nullptr || navigation->viewControllers().empty()) return nullptr;
  return dynamic_cast<NutricionHomeViewController*>(navigation->viewControllers().front().get());
}

NavigationController* homeNavigation(Window& window) {
  return dynamic_cast<NavigationController*>(
      window.rootViewController()->presentedViewController());
}

// Asks the router for the weekly menu as the host's menu button does. While a new menu is on
// hold the waiting screen comes first: it runs to its end and its "Ver menú" is tapped.
NutricionHomeViewController* openHome(CliSession& cli, Window& window) {
  if (!cli.builtMenu(/*verbose=*/false)) return nullptr;
  NutritionUtils& utils = Core::current().utils();
  // The favourites are asked for when the data holder is made; the carousel shows them.
  cli.runUntil([&] { return utils.favoriteDishes.has_value(); }, 10s);
  const auto waiting = [&] {
    return dynamic_cast<WaitingScreenViewController*>(
        window.rootViewController()->presentedViewController());
  };
  Core::current().router().showWeekMenu();
  cli.runUntil([&] { return shownHome(window) != nullptr || waiting() != nullptr; }, 10s);
  if (WaitingScreenViewController* screen = waiting()) {
    std::printf("The new menu is being made; the waiting screen runs to its end.\n");
    cli.letClockRun();
    cli.runUntil([&] { return !screen->isWaiting(); }, 15s);
    screen->button->tap();
    cli.runUntil([&] { return shownHome(window) != nullptr; }, 10s);
  }
  return shownHome(window);
}

int openIntake(CliSession& cli, NutricionHomeViewController& home, const MenuRequest& request,
               Window& window) {
  const auto intakes = home.sortedIntakes();
  if (request.intake > static_cast<int>(intakes.size())) {
    return cli.fail("the day has " + std::to_string(intakes.size()) +
                    " intakes; there is no intake " + std::to_string(request.intake));
  }
  const bool fastingCard = !home.collectionView->cells().empty() &&
                           home.collectionView->cells().front().second->kind().starts_with("Ayuno");
  home.collectionView->selectItem({0, request.intake - 1 + (fastingCard ? 1 : 0)});
  auto* screen =
      dynamic_cast<IntakeViewController*>(homeNavigation(window)->presentedViewController());
  if (screen == nullptr) return cli.fail("the intake screen did not open");
  // The supplement notice of some diets is shown over the intake; print it, then close it.
  if (ViewController* notice = screen->presentedViewController()) {
    std::fputs(renderText(*notice).c_str(), stdout);
    notice->dismiss(false);
  }
  const std::size_t pages = screen->presentationCount();
  if (request.dish > static_cast<int>(pages)) {
    return cli.fail("the intake has " + std::to_string(pages) + " dishes; there is no dish " +
                    std::to_string(request.dish));
  }
  if (request.action == "intake") {
    settle(cli);
    std::fputs(renderText(*screen).c_str(), stdout);
    for (std::size_t page = 1; page < pages; ++page) {
      screen->pageViewController->swipe(PageViewController::Direction::forward);
      settle(cli);
      std::printf("--- page %zu of %zu\n", page + 1, pages);
      std::fputs(renderText(*screen->currentPage()).c_str(), stdout);
    }
    return 0;
  }
  for (int page = 1; page < request.dish; ++page)
    screen->pageViewController->swipe(PageViewController::Direction::forward);
  NutricionRecetaViewController* page = screen->currentPage();
  NutritionUtils& utils = Core::current().utils();
  if (request.action == "alternative") {
    if (screen->alternativeButton->isHidden) return cli.fail("this intake has no alternatives");
    const auto before = page->receta;
    screen->alternativeButton->tap();
    if (!cli.runUntil([&] { return page->receta != before; }, 15s))
      return cli.fail("no alternative dish came back from the backend");
  } else {
    const auto before = utils.favoriteDishes;
    screen->favoriteButton->tap();
    if (!cli.runUntil([&] { return utils.favoriteDishes != before; }, 15s))
      return cli.fail("the backend did not take the favourite");
    std::printf("The dish is %s the favourites.\n",
                page->isFavorite() ? "now among" : "no longer among");
  }
  std::fputs(renderText(*screen).c_str(), stdout);
  return 0;
}

}  // namespace

bool printMenuHome(CliSession& cli, Window& window) {
  NutricionHomeViewController* home = openHome(cli, window);
  if (home == nullptr) {
    std::fputs(renderText(*window.rootViewController()).c_str(), stdout);
    cli.fail("the weekly menu home did not open");
    return false;
  }
  settle(cli);
  std::fputs(renderText(*homeNavigation(window)).c_str(), stdout);
  return true;
}

int runMenu(const std::vector<std::string>& arguments) {
  std::vector<std::string> rest = arguments;
  const auto request = takeMenuRequest(rest);
  if (!request) return 2;
  auto cli = openMember(rest, kUsage);
  if (!cli) return 1;
  auto window = openKeyWindow(*cli);
  NutricionHomeViewController* home = openHome(*cli, *window);
  if (home == nullptr) {
    std::fputs(renderText(*window->rootViewController()).c_str(), stdout);
    return cli->fail("the weekly menu home did not open");
  }
  if (request->day > 1) {
    home->dayViews().at(static_cast<std::size_t>(request->day - 1))->tap();
    cli->runUntil([] { return true; }, 1s);
  }
  if (request->action.empty()) {
    settle(*cli);
    std::fputs(renderText(*homeNavigation(*window)).c_str(), stdout);
    return 0;
  }
  return openIntake(*cli, *home, *request, *window);
}

}  // namespace nutrition::cli
