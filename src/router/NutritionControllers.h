#pragma once
// Decides which of the module's screens to show for a request of the host or of another
// screen, builds it with its inputs and presents it on the key window's top screen (or hands
// it over). Holds no state of its own.

#include <functional>
#include <memory>

#include "base/Lifetime.h"
#include "screens/ScreenContext.h"
#include "views/ViewController.h"

namespace nutrition {

class NutritionControllers {
 public:
  using ScreenCompletion = ScreenRoutes::ScreenCompletion;

  static NutritionControllers& sharedInstance();

  explicit NutritionControllers(const ScreenContext& screens) : screens_(screens) {}

  // A new fasting screen, made on the main queue's next turn and handed to `completion`.
  void getAyunoViewController(ScreenCompletion completion);
  void showWeekMenu();
  void showProfile();

 private:
  const ScreenContext& screens_;
  Lifetime lifetime_;
};

}  // namespace nutrition
