#include "views/NotificationCenter.h"

#include <vector>

namespace nutrition {

struct NotificationCenter::Observation::Observers {
  std::map<std::uint64_t, std::pair<std::string, std::function<void()>>> entries;
  std::uint64_t next = 1;
};

NotificationCenter::Observation& NotificationCenter::Observation::operator=(
    Observation&& other) noexcept {
  if (this != &other) {
    cancel();
    observers_ = std::move(other.observers_);
    id_ = std::exchange(other.id_, 0);
  }
  return *this;
}

void NotificationCenter::Observation::cancel() {
  if (auto observers = observers_.lock()) observers->entries.erase(id_);
  observers_.reset();
  id_ = 0;
}

NotificationCenter::NotificationCenter() : observers_(std::make_shared<Observation::Observers>()) {}

NotificationCenter::Observation NotificationCenter::addObserver(std::string name,
                                                                std::function<void()> callback) {
  const std::uint64_t id = observers_->next++;
  observers_->entries.emplace(id, std::make_pair(std::move(name), std::move(callback)));
  return Observation(observers_, id);
}

void NotificationCenter::post(const std::string& name) {
  // An observer may add or cancel observations while it runs; call those present now that
  // are still there when their turn comes.
  std::vector<std::uint64_t> ids;
  for (const auto& [id, entry] : observers_->entries) {
    if (entry.first == name) ids.push_back(id);
  }
  auto keep = observers_;
  for (std::uint64_t id : ids) {
    auto found = keep->entries.find(id);
    if (found == keep->entries.end()) continue;
    auto callback = found->second.second;
    callback();
  }
}

std::size_t NotificationCenter::observerCount(const std::string& name) const {
  std::size_t count = 0;
  for (const auto& [id, entry] : observers_->entries)
    count += entry.first == name ? 1 : 0;
  return count;
}

}  // namespace nutrition
