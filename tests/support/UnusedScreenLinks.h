#pragma once
// The services and routes of a screen context for screens that must not reach them: any use
// fails the test.

#include <stdexcept>

#include "screens/ScreenContext.h"

namespace nutrition::test {

struct UnusedScreenLinks final : ScreenServices, ScreenRoutes {
  NutritionUtils& utils() override { throw std::logic_error("data holder reached"); }
  NutritionProfileUtils& profileUtils() override { throw std::logic_error("profile reached"); }
  NutritionAuth& session() override { throw std::logic_error("session reached"); }
  [[nodiscard]] const DataServiceNutrition& dataService() const override {
    throw std::logic_error("REST client reached");
  }
  [[nodiscard]] const Platform& platform() const override {
    throw std::logic_error("platform reached");
  }
  void showWeekMenu() override { throw std::logic_error("weekly menu asked for"); }
  void showProfile() override { throw std::logic_error("profile editor asked for"); }
  void getAyunoViewController(ScreenCompletion /*completion*/) override {
    throw std::logic_error("fasting screen asked for");
  }
};

}  // namespace nutrition::test
