#include "platform/NotificationScheduler.h"

#include <algorithm>

namespace nutrition {

void InMemoryNotificationScheduler::removePending(std::string_view identifier) {
  std::lock_guard lock(mutex_);
  std::erase_if(pending_, [&](const NotificationRequest& r) { return r.identifier == identifier; });
}

void InMemoryNotificationScheduler::add(NotificationRequest request) {
  std::lock_guard lock(mutex_);
  // A new request replaces a pending one with the same identifier, as the system's does.
  std::erase_if(pending_,
                [&](const NotificationRequest& r) { return r.identifier == request.identifier; });
  pending_.push_back(std::move(request));
}

std::vector<NotificationRequest> InMemoryNotificationScheduler::pending() const {
  std::lock_guard lock(mutex_);
  return pending_;
}

}  // namespace nutrition
