#pragma once
// The source of "now". Production reads the system clock; tests pin or step it.

#include <chrono>

namespace nutrition {

class Clock {
 public:
  using TimePoint = std::chrono::system_clock::time_point;

  virtual ~Clock() = default;
  virtual TimePoint now() const = 0;
};

class SystemClock final : public Clock {
 public:
  TimePoint now() const override { return std::chrono::system_clock::now(); }
};

}  // namespace nutrition
