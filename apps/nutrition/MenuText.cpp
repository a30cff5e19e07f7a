#include "MenuText.h"

#include <cstdio>
#include <string>

#include "logic/MenuDay.h"
#include "text/Localization.h"

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
    std::printf("  %s  %lld %s\n", intake.name.value_or("-").c_str(),
                static_cast<long long>(intake.getTotalKcal()), localized("kcal").c_str());
    for (const auto& dish : intake.dishes.value_or(std::vector<NutritionDish>{})) {
      std::printf("    - %s (%s)  %lld %s\n", dish.name.value_or("-").c_str(),
                  dish.typeName.value_or("-").c_str(),
                  static_cast<long long>(dish.kcal.value_or(0)), localized("kcal").c_str());
    }
  }
}

void printToday(const NutritionMenu& menu, const Platform& platform) {
  const Date now = std::chrono::floor<std::chrono::seconds>(platform.clock->now());
  const std::int64_t today = menuDayNumber(now, *platform.calendar);
  std::printf("Today's menu: ");
  for (const auto& day : menu.days.value_or(std::vector<NutritionDay>{})) {
    if (day.day == today) return printDay(day);
  }
  std::printf("the menu has no %s (day %lld)\n", dayName(today).c_str(),
              static_cast<long long>(today));
}

void printWeek(const NutritionMenu& menu) {
  for (const auto& day : menu.days.value_or(std::vector<NutritionDay>{})) {
    printDay(day);
    std::printf("\n");
  }
  std::printf("Mean per day: %.0f kcal\n", menu.kcalMedia.value_or(0));
}

}  // namespace nutrition::cli
