#pragma once
// Decides which of the module's screens to show for a request of the host or of another
// screen, builds it with its inputs and presents it on the key window's top screen (or hands
// it over). Holds no state of its own.
//
// The top screen is the key window's root followed through what each screen presents; without
// a key window or a root, a presenting operation shows nothing.

#include <functional>
#include <memory>
#include <vector>

#include "base/Lifetime.h"
#include "model/HealthProfile.h"
#include "screens/ScreenContext.h"
#include "views/ViewController.h"

namespace nutrition {

class NutritionControllers {
 public:
  using ScreenCompletion = ScreenRoutes::ScreenCompletion;

  static NutritionControllers& sharedInstance();

  explicit NutritionControllers(const ScreenContext& screens) : screens_(screens) {}

  // The unregistered-member alert, the weekly menu or the waiting screens: a held menu that is
  // processed is shown; otherwise it is downloaded first.
  void showWeekMenu();
  // A weekly menu home to embed, handed over at once (the data holder marks it embedded); then
  // a missing or unprocessed menu is downloaded, and the waiting screens shown when the new one
  // is not ready either.
  void getWeekMenu(const ScreenCompletion& completion);
  // A weekly menu home once a menu is held; after a failed download the completion never runs.
  void getNutrition(ScreenCompletion completion);
  // The weekly menu home in the themed navigation controller, over full screen; the waiting
  // screens while the menu is on hold.
  void showMenu();
  void showWaitScreens(bool isFromMenu);
  // The profile editor in a plain navigation controller, over full screen; nothing without
  // questionnaire pages.
  void showProfile();
  // The profile editor, made on the main queue's next turn and not presented; nothing at once
  // without questionnaire pages.
  void getProfile(const ScreenCompletion& completion);
  // The full intake of today's intake `index` (in card order); an index out of range shows
  // nothing.
  void showTodayIntake(int index);
  // A new fasting screen, made on the main queue's next turn and handed to `completion`.
  void getAyunoViewController(ScreenCompletion completion);
  void showUserUnregisterAlert();

 private:
  // The top screen, or null without a key window or a root.
  [[nodiscard]] ViewController* topScreen() const;
  void onMain(std::function<void()> task);
  static bool isReady(const std::optional<NutritionMenu>& menu);
  [[nodiscard]] std::shared_ptr<ViewController> makeEditor(
      std::vector<HealthProfilePage> pages) const;

  const ScreenContext& screens_;
  Lifetime lifetime_;
};

}  // namespace nutrition
