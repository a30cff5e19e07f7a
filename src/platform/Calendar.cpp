#include "platform/Calendar.h"

#include <cstdio>
#include <tuple>

namespace nutrition {
namespace {

using namespace std::chrono;

// Dates this far out cannot come from a real clock or a 4-digit ISO date; keeping instants
// within them keeps the civil-date conversion in range (about years -29000 to 29000).
constexpr std::int64_t kMaxSeconds = std::int64_t{900'000'000'000};

Date clampInstant(Date instant) {
  const auto count = instant.time_since_epoch().count();
  if (count > kMaxSeconds) return Date{seconds{kMaxSeconds}};
  if (count < -kMaxSeconds) return Date{seconds{-kMaxSeconds}};
  return instant;
}

auto timeOfDay(const LocalDateTime& t) {
  return std::tuple{t.hour, t.minute, t.second};
}
auto dayAndTime(const LocalDateTime& t) {
  return std::tuple{t.month, t.day, t.hour, t.minute, t.second};
}

sys_days civilDay(const LocalDateTime& t) {
  return sys_days{std::chrono::year{t.year} / std::chrono::month{t.month} /
                  std::chrono::day{t.day}};
}

}  // namespace

LocalDateTime Calendar::components(Date instant) const {
  instant = clampInstant(instant);
  const auto local = instant + utcOffset(instant);
  const sys_days dayPoint = floor<days>(local);
  const year_month_day ymd{dayPoint};
  const hh_mm_ss time{local - dayPoint};
  LocalDateTime result;
  result.year = int(ymd.year());
  result.month = unsigned(ymd.month());
  result.day = unsigned(ymd.day());
  result.hour = int(time.hours().count());
  result.minute = int(time.minutes().count());
  result.second = int(time.seconds().count());
  result.weekday = std::chrono::weekday{dayPoint}.c_encoding() + 1;
  return result;
}

std::int64_t Calendar::yearsBetween(Date from, Date to) const {
  if (to < from) return -yearsBetween(to, from);
  const LocalDateTime start = components(from);
  const LocalDateTime end = components(to);
  std::int64_t years = end.year - start.year;
  if (dayAndTime(end) < dayAndTime(start)) --years;
  return years;
}

std::int64_t Calendar::daysBetween(Date from, Date to) const {
  if (to < from) return -daysBetween(to, from);
  const LocalDateTime start = components(from);
  const LocalDateTime end = components(to);
  std::int64_t count = (civilDay(end) - civilDay(start)).count();
  if (timeOfDay(end) < timeOfDay(start)) --count;
  return count;
}

std::string Calendar::format(Date instant, std::string_view pattern) const {
  const LocalDateTime t = components(instant);
  std::string out;
  char buffer[16];
  for (std::size_t i = 0; i < pattern.size();) {
    const std::string_view rest = pattern.substr(i);
    const auto emit = [&](const char* spec, int value, std::size_t length) {
      std::snprintf(buffer, sizeof buffer, spec, value);
      out += buffer;
      i += length;
    };
    if (rest.starts_with("yyyy")) {
      emit("%04d", t.year, 4);
    } else if (rest.starts_with("MM")) {
      emit("%02d", int(t.month), 2);
    } else if (rest.starts_with("dd")) {
      emit("%02d", int(t.day), 2);
    } else if (rest.starts_with("HH")) {
      emit("%02d", t.hour, 2);
    } else if (rest.starts_with("mm")) {
      emit("%02d", t.minute, 2);
    } else if (rest.starts_with("ss")) {
      emit("%02d", t.second, 2);
    } else {
      out += pattern[i++];
    }
  }
  return out;
}

}  // namespace nutrition
