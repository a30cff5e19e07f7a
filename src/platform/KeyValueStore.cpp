#include "platform/KeyValueStore.h"

namespace nutrition {

std::optional<StoredValue> InMemoryKeyValueStore::value(std::string_view key) const {
  std::lock_guard lock(mutex_);
  const auto found = values_.find(key);
  if (found == values_.end()) return std::nullopt;
  return found->second;
}

void InMemoryKeyValueStore::set(std::string_view key, StoredValue value) {
  std::lock_guard lock(mutex_);
  values_.insert_or_assign(std::string(key), std::move(value));
}

void InMemoryKeyValueStore::remove(std::string_view key) {
  std::lock_guard lock(mutex_);
  if (const auto found = values_.find(key); found != values_.end()) values_.erase(found);
}

std::shared_ptr<KeyValueStore> InMemoryKeyValueStores::standard() {
  return suite("");
}

std::shared_ptr<KeyValueStore> InMemoryKeyValueStores::suite(std::string_view name) {
  std::lock_guard lock(mutex_);
  auto& store = suites_[std::string(name)];
  if (!store) store = std::make_shared<InMemoryKeyValueStore>();
  return store;
}

}  // namespace nutrition
