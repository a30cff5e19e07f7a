#include "logic/MenuDay.h"

#include <algorithm>

#include "platform/Calendar.h"

namespace nutrition {

std::int64_t menuDayNumber(unsigned weekday) {
  return weekday < 2 ? 7 : std::int64_t(weekday) - 1;
}

std::int64_t menuDayNumber(Date now, const Calendar& calendar) {
  return menuDayNumber(calendar.weekday(now));
}

std::vector<NutritionIntake> sortedIntakes(const NutritionDay& day) {
  std::vector<NutritionIntake> intakes = day.intakes.value_or(std::vector<NutritionIntake>{});
  std::stable_sort(intakes.begin(), intakes.end(),
                   [](const NutritionIntake& left, const NutritionIntake& right) {
                     return left.intakeId.value_or(0) < right.intakeId.value_or(0);
                   });
  return intakes;
}

}  // namespace nutrition
