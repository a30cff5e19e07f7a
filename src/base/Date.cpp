#include "base/Date.h"

#include <algorithm>

namespace nutrition {
namespace {

using namespace std::chrono;

constexpr Date kFirstWritable = sys_days{year{1} / January / 1};
constexpr Date kLastWritable =
    sys_days{year{9999} / December / 31} + hours{23} + minutes{59} + seconds{59};

void writeDigits(char* out, unsigned value, int width) {
  for (int i = width - 1; i >= 0; --i) {
    out[i] = char('0' + value % 10);
    value /= 10;
  }
}

// Reads exactly `width` decimal digits at `pos`.
std::optional<int> digits(std::string_view text, std::size_t pos, std::size_t width) {
  if (pos + width > text.size()) return std::nullopt;
  int value = 0;
  for (std::size_t i = pos; i < pos + width; ++i) {
    const char c = text[i];
    if (c < '0' || c > '9') return std::nullopt;
    value = value * 10 + (c - '0');
  }
  return value;
}

bool expect(std::string_view text, std::size_t pos, char c) {
  return pos < text.size() && text[pos] == c;
}

}  // namespace

std::optional<Date> parseIso8601(std::string_view text) {
  // 0123456789012345678
  // YYYY-MM-DDTHH:MM:SS
  const auto year = digits(text, 0, 4);
  const auto month = digits(text, 5, 2);
  const auto day = digits(text, 8, 2);
  const auto hour = digits(text, 11, 2);
  const auto minute = digits(text, 14, 2);
  const auto second = digits(text, 17, 2);
  if (!year || !month || !day || !hour || !minute || !second) return std::nullopt;
  if (!expect(text, 4, '-') || !expect(text, 7, '-') || !expect(text, 10, 'T') ||
      !expect(text, 13, ':') || !expect(text, 16, ':')) {
    return std::nullopt;
  }
  const year_month_day ymd{std::chrono::year{*year}, std::chrono::month{unsigned(*month)},
                           std::chrono::day{unsigned(*day)}};
  if (!ymd.ok() || *hour > 23 || *minute > 59 || *second > 59) return std::nullopt;

  std::string_view zone = text.substr(19);
  seconds offset{0};
  if (zone != "Z") {
    if (zone.size() != 6 && zone.size() != 5) return std::nullopt;
    const char sign = zone[0];
    if (sign != '+' && sign != '-') return std::nullopt;
    const bool withColon = zone.size() == 6;
    if (withColon && zone[3] != ':') return std::nullopt;
    const auto zoneHours = digits(zone, 1, 2);
    const auto zoneMinutes = digits(zone, withColon ? 4 : 3, 2);
    if (!zoneHours || !zoneMinutes || *zoneHours > 23 || *zoneMinutes > 59) return std::nullopt;
    offset = hours{*zoneHours} + minutes{*zoneMinutes};
    if (sign == '-') offset = -offset;
  }
  const sys_seconds local = sys_days{ymd} + hours{*hour} + minutes{*minute} + seconds{*second};
  const Date date = local - offset;
  if (!hasIso8601Form(date)) return std::nullopt;
  return date;
}

bool hasIso8601Form(Date date) {
  return date >= kFirstWritable && date <= kLastWritable;
}

void formatIso8601(Date date, char* out) {
  date = std::clamp(date, kFirstWritable, kLastWritable);
  const sys_days dayPoint = floor<days>(date);
  const year_month_day ymd{dayPoint};
  const hh_mm_ss time{date - dayPoint};
  // YYYY-MM-DDTHH:MM:SSZ
  writeDigits(out, unsigned(int(ymd.year())), 4);
  out[4] = '-';
  writeDigits(out + 5, unsigned(ymd.month()), 2);
  out[7] = '-';
  writeDigits(out + 8, unsigned(ymd.day()), 2);
  out[10] = 'T';
  writeDigits(out + 11, unsigned(time.hours().count()), 2);
  out[13] = ':';
  writeDigits(out + 14, unsigned(time.minutes().count()), 2);
  out[16] = ':';
  writeDigits(out + 17, unsigned(time.seconds().count()), 2);
  out[19] = 'Z';
}

std::string formatIso8601(Date date) {
  std::string text(kIso8601Length, '\0');
  formatIso8601(date, text.data());
  return text;
}

}  // namespace nutrition
