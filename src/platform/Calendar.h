#pragma once
// The device's calendar: the Gregorian calendar in the device's time zone. A platform supplies
// only the zone (its name and its UTC offset at an instant); everything a calendar answers is
// worked out here from local wall-clock time, so every platform counts alike.
//
// Differences are counted in whole calendar units, as a calendar does: from 10:00 on the 1st to
// 09:00 on the 3rd is one day, and a member born on 1985-04-12 turns 40 on 2025-04-12 local
// time, whatever the number of seconds in between.

#include <chrono>
#include <cstdint>
#include <string>
#include <string_view>

#include "base/Date.h"

namespace nutrition {

struct LocalDateTime {
  int year = 1970;
  unsigned month = 1;  // 1 to 12
  unsigned day = 1;    // 1 to 31
  int hour = 0;
  int minute = 0;
  int second = 0;
  unsigned weekday = 5;  // 1 = Sunday ... 7 = Saturday

  bool operator==(const LocalDateTime&) const = default;
};

class Calendar {
 public:
  virtual ~Calendar() = default;

  // The zone's identifier ("Europe/Madrid").
  [[nodiscard]] virtual std::string timeZoneIdentifier() const = 0;
  // Local time minus UTC at `instant`.
  [[nodiscard]] virtual std::chrono::seconds utcOffset(Date instant) const = 0;

  [[nodiscard]] LocalDateTime components(Date instant) const;
  // 1 = Sunday ... 7 = Saturday.
  [[nodiscard]] unsigned weekday(Date instant) const { return components(instant).weekday; }
  [[nodiscard]] int year(Date instant) const { return components(instant).year; }
  // Whole years and whole days from `from` to `to`; negative when `to` is earlier.
  [[nodiscard]] std::int64_t yearsBetween(Date from, Date to) const;
  [[nodiscard]] std::int64_t daysBetween(Date from, Date to) const;
  // Formats with the patterns "yyyy", "MM", "dd", "HH", "mm" and "ss"; other characters are
  // copied ("HH:mm", "dd/MM/yyyy").
  [[nodiscard]] std::string format(Date instant, std::string_view pattern) const;
};

// A zone with a constant offset: UTC by default, or a pinned zone in tests.
class FixedOffsetCalendar final : public Calendar {
 public:
  explicit FixedOffsetCalendar(std::chrono::seconds offset = std::chrono::seconds{0},
                               std::string identifier = "UTC")
      : offset_(offset), identifier_(std::move(identifier)) {}

  [[nodiscard]] std::string timeZoneIdentifier() const override { return identifier_; }
  [[nodiscard]] std::chrono::seconds utcOffset(Date) const override { return offset_; }

 private:
  std::chrono::seconds offset_;
  std::string identifier_;
};

}  // namespace nutrition
