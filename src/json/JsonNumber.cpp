#include "json/JsonNumber.h"

#include <charconv>
#include <clocale>
#include <cmath>
#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <string>

namespace nutrition::json {
namespace {

// Powers of ten a double holds exactly.
constexpr double kExactPowers[] = {1e0,  1e1,  1e2,  1e3,  1e4,  1e5,  1e6,  1e7,
                                   1e8,  1e9,  1e10, 1e11, 1e12, 1e13, 1e14, 1e15,
                                   1e16, 1e17, 1e18, 1e19, 1e20, 1e21, 1e22};

// Most numbers in our bodies have few digits and a small exponent: then the mantissa and the
// power of ten are both exact doubles and one multiplication or division rounds correctly.
bool parseSimple(std::string_view text, double& out) {
  std::size_t i = 0;
  const bool negative = text[0] == '-';
  if (negative) ++i;
  std::uint64_t mantissa = 0;
  int digits = 0;
  int exponent = 0;
  for (; i < text.size() && text[i] >= '0' && text[i] <= '9'; ++i) {
    mantissa = mantissa * 10 + std::uint64_t(text[i] - '0');
    if (mantissa != 0) ++digits;
  }
  if (i < text.size() && text[i] == '.') {
    for (++i; i < text.size() && text[i] >= '0' && text[i] <= '9'; ++i) {
      mantissa = mantissa * 10 + std::uint64_t(text[i] - '0');
      if (mantissa != 0) ++digits;
      --exponent;
    }
  }
  if (digits > 15) return false;  // 15 digits always fit 2^53
  if (i < text.size()) {          // 'e' or 'E'
    ++i;
    const bool negativeExponent = text[i] == '-';
    if (text[i] == '-' || text[i] == '+') ++i;
    int written = 0;
    for (; i < text.size(); ++i) {
      if (written > 1000) return false;
      written = written * 10 + (text[i] - '0');
    }
    exponent += negativeExponent ? -written : written;
  }
  if (exponent < -22 || exponent > 22) return false;
  double value = double(mantissa);
  value = exponent < 0 ? value / kExactPowers[-exponent] : value * kExactPowers[exponent];
  out = negative ? -value : value;
  return true;
}

}  // namespace

namespace detail {

bool parseDoubleWithStrtod(std::string_view text, double& out) {
  char small[64];
  std::string large;
  char* copy = small;
  if (text.size() >= sizeof small) {
    large.assign(text);
    copy = large.data();
  } else {
    std::memcpy(small, text.data(), text.size());
    small[text.size()] = '\0';
  }
  const char point = *std::localeconv()->decimal_point;
  if (char* dot = std::strchr(copy, '.')) *dot = point;
  const double value = std::strtod(copy, nullptr);
  if (!std::isfinite(value)) return false;
  out = value;
  return true;
}

}  // namespace detail

bool parseDouble(std::string_view text, double& out) {
  if (parseSimple(text, out)) return true;
#if defined(__cpp_lib_to_chars) && __cpp_lib_to_chars >= 201611L
  const auto result = std::from_chars(text.data(), text.data() + text.size(), out);
  if (result.ec == std::errc{}) return true;
#endif
  // Out of range for from_chars (or no from_chars): strtod tells an overflow, which fails,
  // from an underflow, which rounds to zero or a subnormal.
  return detail::parseDoubleWithStrtod(text, out);
}

}  // namespace nutrition::json
