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
  // A copy is a new owner with a lifetime of its own.
  Lifetime(const Lifetime&) : Lifetime() {}
  Lifetime& operator=(const Lifetime&) { return *this; }

  std::weak_ptr<const void> watch() const { return token_; }

 private:
  std::shared_ptr<const void> token_ = std::make_shared<char>(0);
};

}  // namespace nutrition
