#pragma once
// Which day of the weekly menu is today: days are numbered 1 = Monday to 7 = Sunday, from the
// week day of the current date in the device's calendar.

#include <cstdint>

#include "base/Date.h"

namespace nutrition {

class Calendar;

std::int64_t menuDayNumber(Date now, const Calendar& calendar);

}  // namespace nutrition
