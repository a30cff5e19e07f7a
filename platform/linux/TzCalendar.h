#pragma once
// The device calendar on Linux: a time zone of the system's tz database, read through date/tz.
// With no name it follows the system's current zone (TZ, then /etc/localtime).

#include <string>

#include "platform/Calendar.h"

namespace date {
class time_zone;
}

namespace nutrition {

class TzCalendar final : public Calendar {
 public:
  // The current zone; UTC when the system names none.
  TzCalendar();
  // A named zone ("Pacific/Auckland"); UTC when the name is unknown.
  explicit TzCalendar(const std::string& zoneName);

  std::string timeZoneIdentifier() const override;
  std::chrono::seconds utcOffset(Date instant) const override;

 private:
  const date::time_zone* zone_ = nullptr;
};

}  // namespace nutrition
