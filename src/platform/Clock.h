#pragma once
// The source of "now". Production reads the system clock; tests pin or step it.

#include <chrono>

#include "base/Date.h"

namespace nutrition {

class Clock {
 public:
  using TimePoint = std::chrono::system_clock::time_point;

  virtual ~Clock() = default;
  [[nodiscard]] virtual TimePoint now() const = 0;
};

class SystemClock final : public Clock {
 public:
  [[nodiscard]] TimePoint now() const override { return std::chrono::system_clock::now(); }
};

// Now in whole seconds, as the records and the calendar count.
inline Date currentDate(const Clock& clock) {
  return std::chrono::floor<std::chrono::seconds>(clock.now());
}

// Now as fractional seconds since 1970, as the stores keep instants ("hold_menu_timer",
// "ayuno_timer").
inline double secondsSince1970(const Clock& clock) {
  return std::chrono::duration<double>(clock.now().time_since_epoch()).count();
}

}  // namespace nutrition
