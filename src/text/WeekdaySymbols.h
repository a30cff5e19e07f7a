#pragma once
// The calendar's short weekday names in a table language, as a phone's calendar gives them:
// index 0 is Sunday. A language without its own names reads English.

#include <array>
#include <string_view>

namespace nutrition {

std::array<std::string_view, 7> shortWeekdaySymbols(std::string_view language);

}  // namespace nutrition
