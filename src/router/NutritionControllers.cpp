#include "router/NutritionControllers.h"

#include "screens/fasting/AyunoViewController.h"

namespace nutrition {

void NutritionControllers::getAyunoViewController(ScreenCompletion completion) {
  postIfAlive(screens_.ui.mainQueue, lifetime_.watch(), [this, completion = std::move(completion)] {
    auto screen = std::make_shared<AyunoViewController>(screens_);
    if (completion) completion(screen);
  });
}

void NutritionControllers::showWeekMenu() {}

void NutritionControllers::showProfile() {}

}  // namespace nutrition
