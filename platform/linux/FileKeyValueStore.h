#pragma once
// Key-value stores that survive the process on Linux: one JSON file per suite in a directory.
// A store reads its file once and rewrites it whole on every change, through a temporary file
// renamed over the old one, so a killed process leaves either the old or the new contents.
// An unreadable or corrupt file reads as an empty store.

#include <filesystem>
#include <map>
#include <memory>
#include <mutex>
#include <string>

#include "platform/KeyValueStore.h"

namespace nutrition {

class FileKeyValueStore final : public KeyValueStore {
 public:
  explicit FileKeyValueStore(std::filesystem::path file);

  std::optional<StoredValue> value(std::string_view key) const override;
  void set(std::string_view key, StoredValue value) override;
  void remove(std::string_view key) override;

 private:
  void save() const;

  std::filesystem::path file_;
  mutable std::mutex mutex_;
  std::map<std::string, StoredValue, std::less<>> values_;
};

class FileKeyValueStores final : public KeyValueStores {
 public:
  explicit FileKeyValueStores(std::filesystem::path directory);

  std::shared_ptr<KeyValueStore> standard() override;
  std::shared_ptr<KeyValueStore> suite(std::string_view name) override;

 private:
  std::shared_ptr<KeyValueStore> open(const std::string& fileName);

  std::filesystem::path directory_;
  std::mutex mutex_;
  std::map<std::string, std::shared_ptr<KeyValueStore>, std::less<>> stores_;
};

}  // namespace nutrition
