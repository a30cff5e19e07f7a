#pragma once
// A dynamically typed answer of the questionnaire: nothing, an integer, a text, a date, or a
// list of optional integers (the scores of ticked rows). Readers ask for the type they expect
// and get nothing for any other; a list reads as a list of integers only when every entry is
// present.

#include <cstdint>
#include <optional>
#include <string>
#include <variant>
#include <vector>

#include "base/Date.h"

namespace nutrition {

class AnyValue {
 public:
  using List = std::vector<std::optional<std::int64_t>>;

  AnyValue() = default;                                      // nothing
  AnyValue(std::int64_t value) : value_(value) {}            // NOLINT(google-explicit-constructor)
  AnyValue(int value) : value_(std::int64_t{value}) {}       // NOLINT(google-explicit-constructor)
  AnyValue(std::string value) : value_(std::move(value)) {}  // NOLINT(google-explicit-constructor)
  AnyValue(const char* value)
      : value_(std::string(value)) {}                 // NOLINT(google-explicit-constructor)
  AnyValue(Date value) : value_(value) {}             // NOLINT(google-explicit-constructor)
  AnyValue(List value) : value_(std::move(value)) {}  // NOLINT(google-explicit-constructor)
  AnyValue(const std::vector<std::int64_t>& values)   // NOLINT(google-explicit-constructor)
      : value_(List(values.begin(), values.end())) {}

  [[nodiscard]] bool hasValue() const { return !std::holds_alternative<std::monostate>(value_); }
  [[nodiscard]] std::optional<std::int64_t> integer() const;
  [[nodiscard]] std::optional<std::string> text() const;
  [[nodiscard]] std::optional<Date> date() const;
  [[nodiscard]] std::optional<std::vector<std::int64_t>> integerList() const;

  bool operator==(const AnyValue&) const = default;

 private:
  std::variant<std::monostate, std::int64_t, std::string, Date, List> value_;
};

}  // namespace nutrition
