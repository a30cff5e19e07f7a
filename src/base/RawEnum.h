#pragma once
// Enumerations whose cases stand for fixed raw values (a JSON string or integer). Each one
// specialises RawValues with its table; the helpers below read it both ways, so an unknown
// raw value yields no case, as the backend contract requires.

#include <optional>
#include <utility>

namespace nutrition {

template <class E>
struct RawValues;  // static constexpr std::array<std::pair<E, Raw>, N> table

template <class E>
concept RawEnum = requires {
  RawValues<E>::table;
};

template <RawEnum E>
using RawType = typename decltype(RawValues<E>::table)::value_type::second_type;

template <RawEnum E>
constexpr RawType<E> rawValue(E value) {
  for (const auto& [entry, raw] : RawValues<E>::table) {
    if (entry == value) return raw;
  }
  return RawValues<E>::table.front().second;  // unreachable for a declared case
}

template <RawEnum E>
constexpr std::optional<E> fromRawValue(const RawType<E>& raw) {
  for (const auto& [entry, value] : RawValues<E>::table) {
    if (value == raw) return entry;
  }
  return std::nullopt;
}

}  // namespace nutrition
