#pragma once
// Local notifications on Linux: the pending requests are listed, not shown, and kept in a JSON
// file so that a later run of the command line still sees what an earlier one scheduled.

#include <filesystem>

#include "platform/NotificationScheduler.h"

namespace nutrition {

class FileNotificationScheduler final : public InMemoryNotificationScheduler {
 public:
  explicit FileNotificationScheduler(std::filesystem::path file);

  void removePending(std::string_view identifier) override;
  void add(NotificationRequest request) override;

 private:
  void save() const;

  std::filesystem::path file_;
};

}  // namespace nutrition
