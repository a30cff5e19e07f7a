#pragma once
// Lets work queued for later find out whether its owner still exists. A service holds a
// Lifetime member; a task it posts to the main queue captures `watch()` and does nothing once
// the service is gone (the composition root can be discarded while answers are in flight).
// Owners are created and destroyed on the main thread, where their tasks run, so checking
// `alive()` there is enough.
//
//   queue->post([this, alive = lifetime_.watch()] { if (alive.expired()) return; ... });

#include <memory>

namespace nutrition {

class Lifetime {
 public:
  Lifetime() = default;
  // Owners are not copied: tasks already posted watch one owner only.
  Lifetime(const Lifetime&) = delete;
  Lifetime& operator=(const Lifetime&) = delete;

  [[nodiscard]] std::weak_ptr<const void> watch() const { return token_; }

 private:
  std::shared_ptr<const void> token_ = std::make_shared<char>(0);
};

}  // namespace nutrition
