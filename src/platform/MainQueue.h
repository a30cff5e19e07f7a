#pragma once
// The host's main (UI) thread as a queue. NutritionKit's state is touched only from tasks run
// here; network callbacks post to it before reading or writing anything shared.

#include <chrono>
#include <condition_variable>
#include <cstddef>
#include <functional>
#include <map>
#include <memory>
#include <mutex>

#include "platform/Clock.h"

namespace nutrition {

class MainQueue {
 public:
  using Task = std::function<void()>;

  virtual ~MainQueue() = default;
  // Runs `task` later on the main thread, after the tasks already posted. Callable from any
  // thread.
  virtual void post(Task task) = 0;
  // Runs `task` on the main thread once `delay` has passed.
  virtual void postDelayed(std::chrono::milliseconds delay, Task task) = 0;
};

// Posts to `queue` while it exists. Callbacks hold the queue weakly: a queue never owns, through
// a task it holds, a reference to itself, and answers that arrive after their platform is gone
// are dropped.
inline void postIfAlive(const std::weak_ptr<MainQueue>& queue, MainQueue::Task task) {
  if (auto alive = queue.lock()) alive->post(std::move(task));
}

// As above, and the task runs only if `owner` (a Lifetime's watch) still exists by then.
inline void postIfAlive(const std::weak_ptr<MainQueue>& queue, std::weak_ptr<const void> owner,
                        MainQueue::Task task) {
  postIfAlive(queue, [owner = std::move(owner), task = std::move(task)] {
    if (!owner.expired()) task();
  });
}

// A main queue that runs only when asked: tests drain it, and the Linux event loop runs it.
// Delayed tasks are due on the time of a clock it is given, so a test that advances a fake
// clock fast-forwards timers without sleeping.
class ManualMainQueue : public MainQueue {
 public:
  // Uses `clock` for delayed tasks; the system clock when null.
  explicit ManualMainQueue(std::shared_ptr<const Clock> clock = nullptr);

  void post(Task task) override;
  void postDelayed(std::chrono::milliseconds delay, Task task) override;

  // Runs every task that is due, including those posted while running; returns how many ran.
  std::size_t runUntilIdle();
  // Tasks posted and not yet run, due or not.
  std::size_t pendingCount() const;
  // Waits until a task is due or `timeout` passes (real time), then runs what is due.
  // Returns false on timeout with nothing run.
  bool waitAndRun(std::chrono::milliseconds timeout);

 private:
  using Key = std::pair<Clock::TimePoint, std::size_t>;  // due time, then order of posting
  bool popDue(Task& task);
  Clock::TimePoint now() const;

  std::shared_ptr<const Clock> clock_;
  mutable std::mutex mutex_;
  std::condition_variable posted_;
  std::map<Key, Task> tasks_;
  std::size_t sequence_ = 0;
};

}  // namespace nutrition
