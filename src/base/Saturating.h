#pragma once
// Arithmetic on values that come from outside (the network, the stores, the clock) must not
// trap or wrap: these helpers clamp to the representable range instead.

#include <cmath>
#include <cstdint>
#include <limits>

namespace nutrition {

inline std::int64_t saturatingAdd(std::int64_t a, std::int64_t b) {
  std::int64_t sum = 0;
  if (!__builtin_add_overflow(a, b, &sum)) return sum;
  return b > 0 ? std::numeric_limits<std::int64_t>::max()
               : std::numeric_limits<std::int64_t>::min();
}

// Truncates toward zero; NaN gives 0 and out-of-range values give the nearest bound.
inline std::int64_t saturatingToInt64(double value) {
  if (std::isnan(value)) return 0;
  // 2^63 is exactly representable; every double below it converts without overflow.
  constexpr double kLimit = 9223372036854775808.0;
  if (value >= kLimit) return std::numeric_limits<std::int64_t>::max();
  if (value < -kLimit) return std::numeric_limits<std::int64_t>::min();
  return static_cast<std::int64_t>(value);
}

}  // namespace nutrition
