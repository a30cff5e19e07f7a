#pragma once
// The small key-value stores NutritionKit keeps between launches: the standard store and named
// suites ("nutritionSDK", "NutritionPreferences"). A value is a number, a text or a list of
// texts; reading a key as another type than the one stored answers nothing, as a missing key
// does.

#include <map>
#include <memory>
#include <mutex>
#include <optional>
#include <string>
#include <string_view>
#include <variant>
#include <vector>

namespace nutrition {

using StoredValue = std::variant<double, std::string, std::vector<std::string>>;

class KeyValueStore {
 public:
  virtual ~KeyValueStore() = default;

  [[nodiscard]] virtual std::optional<StoredValue> value(std::string_view key) const = 0;
  virtual void set(std::string_view key, StoredValue value) = 0;
  virtual void remove(std::string_view key) = 0;

  [[nodiscard]] std::optional<double> getDouble(std::string_view key) const {
    return get<double>(key);
  }
  [[nodiscard]] std::optional<std::string> getString(std::string_view key) const {
    return get<std::string>(key);
  }
  [[nodiscard]] std::optional<std::vector<std::string>> getStringList(std::string_view key) const {
    return get<std::vector<std::string>>(key);
  }

 private:
  template <class T>
  [[nodiscard]] [[nodiscard]] [[nodiscard]] std::optional<T> get(std::string_view key) const {
    auto stored = value(key);
    if (!stored || !std::holds_alternative<T>(*stored)) return std::nullopt;
    return std::get<T>(std::move(*stored));
  }
};

// Hands out the standard store and the named suites; asking twice for a suite gives the same
// store.
class KeyValueStores {
 public:
  virtual ~KeyValueStores() = default;
  virtual std::shared_ptr<KeyValueStore> standard() = 0;
  virtual std::shared_ptr<KeyValueStore> suite(std::string_view name) = 0;
};

// Stores that live as long as the process: the portable default and the test double.
class InMemoryKeyValueStore final : public KeyValueStore {
 public:
  std::optional<StoredValue> value(std::string_view key) const override;
  void set(std::string_view key, StoredValue value) override;
  void remove(std::string_view key) override;

 private:
  mutable std::mutex mutex_;
  std::map<std::string, StoredValue, std::less<>> values_;
};

class InMemoryKeyValueStores final : public KeyValueStores {
 public:
  std::shared_ptr<KeyValueStore> standard() override;
  std::shared_ptr<KeyValueStore> suite(std::string_view name) override;

 private:
  std::mutex mutex_;
  std::map<std::string, std::shared_ptr<KeyValueStore>, std::less<>> suites_;
};

}  // namespace nutrition
