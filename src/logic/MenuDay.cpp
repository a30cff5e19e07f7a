#include "logic/MenuDay.h"

#include "platform/Calendar.h"

namespace nutrition {

std::int64_t menuDayNumber(Date now, const Calendar& calendar) {
  const unsigned weekday = calendar.weekday(now);  // 1 = Sunday ... 7 = Saturday
  return weekday < 2 ? 7 : std::int64_t(weekday) - 1;
}

}  // namespace nutrition
