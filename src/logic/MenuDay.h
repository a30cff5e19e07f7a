#pragma once
// Which day of the weekly menu is today: days are numbered 1 = Monday to 7 = Sunday, from the
// week day of the current date in the device's calendar.

#include <cstdint>
#include <vector>

#include "base/Date.h"
#include "model/NutritionDay.h"

namespace nutrition {

class Calendar;

std::int64_t menuDayNumber(Date now, const Calendar& calendar);
// The same from a calendar weekday, 1 = Sunday ... 7 = Saturday.
std::int64_t menuDayNumber(unsigned weekday);

// The day's intakes in the order the menu screens show them: by `intakeId`, an absent one
// counting 0, intakes with equal ids in the order they came.
std::vector<NutritionIntake> sortedIntakes(const NutritionDay& day);

}  // namespace nutrition
