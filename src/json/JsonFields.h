#pragma once
// How a record names its JSON keys. Each record lists its fields once, in the order of its key
// table, through a static `jsonFields()`:
//
//   static constexpr auto jsonFields() {
//     return std::tuple{json::field("DishId", &NutritionDish::dishID), ...};
//   }
//
// The same list drives decoding (any key order; unknown keys ignored; a missing key or null
// leaves an optional field absent) and encoding (keys in list order; absent fields left out).
// A `required` field is a plain member: missing or null fails the record.

#include <string_view>
#include <tuple>

namespace nutrition::json {

template <class Record, class Member>
struct Field {
  std::string_view key;
  Member Record::*member;
  bool required;
};

template <class Record, class Member>
constexpr Field<Record, Member> field(std::string_view key, Member Record::*member) {
  return {key, member, false};
}

template <class Record, class Member>
constexpr Field<Record, Member> required(std::string_view key, Member Record::*member) {
  return {key, member, true};
}

template <class T>
concept JsonRecord = requires {
  T::jsonFields();
};

}  // namespace nutrition::json
