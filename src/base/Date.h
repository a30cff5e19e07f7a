#pragma once
// Dates exchanged with the backend: whole seconds since 1970 in UTC, written as ISO 8601
// internet date-time text ("1985-04-12T00:00:00Z").

#include <chrono>
#include <optional>
#include <string>
#include <string_view>

namespace nutrition {

using Date = std::chrono::sys_seconds;

// Accepts "YYYY-MM-DDTHH:MM:SS" followed by "Z", "+HH:MM" or "+HHMM" (or "-"). Fractional
// seconds, a missing time or zone, and out-of-range fields are rejected.
std::optional<Date> parseIso8601(std::string_view text);

// Always UTC with a "Z" designator.
std::string formatIso8601(Date date);

}  // namespace nutrition
