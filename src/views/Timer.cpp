#include "views/Timer.h"

namespace nutrition {

struct Timer::State {
  std::weak_ptr<MainQueue> queue;
  std::chrono::milliseconds interval{0};
  bool repeats = false;
  bool valid = true;
  std::function<void()> block;
};

Timer Timer::scheduled(const std::weak_ptr<MainQueue>& queue, std::chrono::milliseconds interval,
                       bool repeats, std::function<void()> block) {
  Timer timer;
  timer.state_ = std::make_shared<State>();
  timer.state_->queue = queue;
  timer.state_->interval = interval;
  timer.state_->repeats = repeats;
  timer.state_->block = std::move(block);
  arm(timer.state_);
  return timer;
}

void Timer::arm(const std::shared_ptr<State>& state) {
  auto queue = state->queue.lock();
  if (!queue) {
    state->valid = false;
    return;
  }
  // The queue holds the state only weakly through this task's owner: an invalidated timer's
  // pending task finds it invalid and ends the chain.
  queue->postDelayed(state->interval, [weak = std::weak_ptr<State>(state)] {
    auto alive = weak.lock();
    if (!alive || !alive->valid) return;
    if (!alive->repeats) alive->valid = false;
    auto block = alive->block;
    block();
    if (alive->valid && alive->repeats) arm(alive);
  });
}

void Timer::invalidate() {
  if (state_) state_->valid = false;
}

bool Timer::isValid() const {
  return state_ && state_->valid;
}

}  // namespace nutrition
