#pragma once
// Exact, locale-independent conversion of JSON number text to double. The text must already
// follow the JSON number grammar (the cursor checks it). Where the standard library lacks
// floating-point std::from_chars (older Apple libc++), a correctly rounded strtod reads a copy
// whose '.' is turned into the locale's decimal point.

#include <string_view>

namespace nutrition::json {

// False when the number is too large for a double; a number too small becomes 0 or subnormal.
bool parseDouble(std::string_view text, double& out);

namespace detail {
// The path used without floating-point from_chars; public so that every build can test it.
bool parseDoubleWithStrtod(std::string_view text, double& out);
}  // namespace detail

}  // namespace nutrition::json
