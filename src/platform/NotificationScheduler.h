#pragma once
// Local notifications: NutritionKit schedules at most one, the end of a fast. The host asks
// for permission to notify; the module never does.

#include <mutex>
#include <string>
#include <string_view>
#include <vector>

#include "platform/Calendar.h"

namespace nutrition {

struct NotificationRequest {
  std::string identifier;
  std::string body;  // no title; the default sound
  // Fires once when the device's local time matches these fields (year to second).
  LocalDateTime trigger;

  bool operator==(const NotificationRequest&) const = default;
};

class NotificationScheduler {
 public:
  virtual ~NotificationScheduler() = default;
  virtual void removePending(std::string_view identifier) = 0;
  virtual void add(NotificationRequest request) = 0;
  [[nodiscard]] virtual std::vector<NotificationRequest> pending() const = 0;
};

// Keeps the pending requests in memory and lists them: the portable default and the test
// double.
class InMemoryNotificationScheduler : public NotificationScheduler {
 public:
  void removePending(std::string_view identifier) override;
  void add(NotificationRequest request) override;
  std::vector<NotificationRequest> pending() const override;

 protected:
  mutable std::mutex mutex_;
  std::vector<NotificationRequest> pending_;
};

}  // namespace nutrition
