#include "platform/MainQueue.h"

namespace nutrition {

ManualMainQueue::ManualMainQueue(std::shared_ptr<const Clock> clock)
    : clock_(clock ? std::move(clock) : std::make_shared<SystemClock>()) {}

Clock::TimePoint ManualMainQueue::now() const {
  return clock_->now();
}

void ManualMainQueue::post(Task task) {
  {
    std::lock_guard lock(mutex_);
    // Immediate tasks are due at the beginning of time so they keep their posting order ahead
    // of any delayed task.
    tasks_.emplace(Key{Clock::TimePoint::min(), sequence_++}, std::move(task));
  }
  posted_.notify_all();
}

void ManualMainQueue::postDelayed(std::chrono::milliseconds delay, Task task) {
  {
    std::lock_guard lock(mutex_);
    const auto due = now() + std::chrono::duration_cast<Clock::TimePoint::duration>(delay);
    tasks_.emplace(Key{due, sequence_++}, std::move(task));
  }
  posted_.notify_all();
}

bool ManualMainQueue::popDue(Task& task) {
  std::lock_guard lock(mutex_);
  if (tasks_.empty()) return false;
  const auto first = tasks_.begin();
  if (first->first.first > now()) return false;
  task = std::move(first->second);
  tasks_.erase(first);
  return true;
}

std::size_t ManualMainQueue::runUntilIdle() {
  std::size_t count = 0;
  Task task;
  while (popDue(task)) {
    task();
    ++count;
  }
  return count;
}

std::size_t ManualMainQueue::pendingCount() const {
  std::lock_guard lock(mutex_);
  return tasks_.size();
}

bool ManualMainQueue::waitAndRun(std::chrono::milliseconds timeout) {
  using Steady = std::chrono::steady_clock;
  const auto deadline = Steady::now() + timeout;
  {
    std::unique_lock lock(mutex_);
    while (tasks_.empty() || tasks_.begin()->first.first > now()) {
      if (Steady::now() >= deadline) return false;
      auto until = deadline;
      if (!tasks_.empty()) {
        const auto untilDue = tasks_.begin()->first.first - now();
        until = std::min(deadline,
                         Steady::now() + std::chrono::duration_cast<Steady::duration>(untilDue));
      }
      posted_.wait_until(lock, until);
    }
  }
  return runUntilIdle() > 0;
}

}  // namespace nutrition
