#pragma once
// Dates exchanged with the backend: whole seconds since 1970 in UTC, written as ISO 8601
// internet date-time text ("1985-04-12T00:00:00Z").

#include <chrono>
#include <cstddef>
#include <optional>
#include <string>
#include <string_view>

namespace nutrition {

using Date = std::chrono::sys_seconds;

// Accepts "YYYY-MM-DDTHH:MM:SS" followed by "Z", "+HH:MM" or "+HHMM" (or "-"). Fractional
// seconds, a missing time or zone, out-of-range fields, and a moment that falls outside years
// 0001 to 9999 once in UTC (so that it could not be written back) are rejected.
std::optional<Date> parseIso8601(std::string_view text);

// Whether the date has a text form: its UTC year is 0001 to 9999.
bool hasIso8601Form(Date date);

constexpr std::size_t kIso8601Length = 20;  // "1985-04-12T00:00:00Z"

// Always UTC with a "Z" designator. Meant for dates with a text form; others come out with
// their year clamped to that range.
std::string formatIso8601(Date date);
// The same text into `out`, which holds kIso8601Length characters.
void formatIso8601(Date date, char* out);

}  // namespace nutrition
