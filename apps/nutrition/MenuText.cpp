#include "MenuText.h"

#include <cstdio>
#include <string>

#include "facade/NutritionSDK.h"

namespace nutrition::cli {
namespace {

const char* const kDayNames[] = {"Monday", "Tuesday",  "Wednesday", "Thursday",
                                 "Friday", "Saturday", "Sunday"};

std::string dayName(std::int64_t day) {
  return day >= 1 && day <= 7 ? kDayNames[day - 1] : "day " + std::to_string(day);
}

}  // namespace

void printDay(const NutritionDay& day) {
  std::printf("%s (day %lld): %lld kcal\n", dayName(day.day.value_or(0)).c_str(),
              static_cast<long long>(day.day.value_or(0)),
              static_cast<long long>(day.kcalDay.value_or(0)));
  for (const auto& intake : day.intakes.value_or(std::vector<NutritionIntake>{})) {
    std::printf("  %s  %lld kcal\n", intake.name.value_or("-").c_str(),
                static_cast<long long>(intake.getTotalKcal()));
    for (const auto& dish : intake.dishes.value_or(std::vector<NutritionDish>{})) {
      std::printf("    - %s (%s)  %lld kcal\n", dish.name.value_or("-").c_str(),
                  dish.typeName.value_or("-").c_str(),
                  static_cast<long long>(dish.kcal.value_or(0)));
    }
  }
}

void printToday() {
  const NutritionDay today = NutritionSDK::sharedInstance().getTodayMenu();
  std::printf("Today's menu: ");
  if (today.day) return printDay(today);
  std::printf("the menu has no day for today\n");
}

void printWeek(const NutritionMenu& menu) {
  for (const auto& day : menu.days.value_or(std::vector<NutritionDay>{})) {
    printDay(day);
    std::printf("\n");
  }
  std::printf("Mean per day: %.0f kcal\n", menu.kcalMedia.value_or(0));
}

}  // namespace nutrition::cli
