#pragma once
// A timer on the main queue: fires once or repeatedly every `interval` until its handle is
// invalidated or destroyed, so a view that owns its timer stops it by going away.
//
//   timer_ = Timer::scheduled(queue, std::chrono::seconds(1), true, [this] { reloadUI(); });

#include <chrono>
#include <functional>
#include <memory>

#include "platform/MainQueue.h"

namespace nutrition {

class Timer {
 public:
  static Timer scheduled(const std::weak_ptr<MainQueue>& queue, std::chrono::milliseconds interval,
                         bool repeats, std::function<void()> block);

  Timer() = default;
  Timer(Timer&&) noexcept = default;
  Timer& operator=(Timer&& other) noexcept {
    if (this != &other) {
      invalidate();
      state_ = std::move(other.state_);
    }
    return *this;
  }
  Timer(const Timer&) = delete;
  Timer& operator=(const Timer&) = delete;
  ~Timer() { invalidate(); }

  void invalidate();
  [[nodiscard]] bool isValid() const;

 private:
  struct State;
  static void arm(const std::shared_ptr<State>& state);
  std::shared_ptr<State> state_;
};

}  // namespace nutrition
