#include "logic/AnyValue.h"

namespace nutrition {

std::optional<std::int64_t> AnyValue::integer() const {
  if (const auto* value = std::get_if<std::int64_t>(&value_)) return *value;
  return std::nullopt;
}

std::optional<std::string> AnyValue::text() const {
  if (const auto* value = std::get_if<std::string>(&value_)) return *value;
  return std::nullopt;
}

std::optional<Date> AnyValue::date() const {
  if (const auto* value = std::get_if<Date>(&value_)) return *value;
  return std::nullopt;
}

std::optional<std::vector<std::int64_t>> AnyValue::integerList() const {
  const auto* list = std::get_if<List>(&value_);
  if (!list) return std::nullopt;
  std::vector<std::int64_t> values;
  values.reserve(list->size());
  for (const auto& entry : *list) {
    if (!entry) return std::nullopt;
    values.push_back(*entry);
  }
  return values;
}

}  // namespace nutrition
