#pragma once
// Reads any record that lists its jsonFields() (see JsonFields.h), and lists, string-keyed
// maps and plain values of them, from one JSON text through the validating Cursor.
//
// Rules: a missing key or null leaves an optional field absent; a value of the wrong JSON type
// fails the record and everything holding it; unknown keys are checked and skipped; a required
// field must be present and not null; integers are JSON integers within int64; enumerations
// read their raw values and an unknown one fails. Values are copied out, so nothing points
// into the text once decodeDocument returns.

#include <array>
#include <cstdint>
#include <cstring>
#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <tuple>
#include <type_traits>
#include <utility>
#include <vector>

#include "base/Date.h"
#include "base/RawEnum.h"
#include "base/Result.h"
#include "json/JsonCursor.h"
#include "json/JsonDecode.h"
#include "json/JsonFields.h"

namespace nutrition::json {

inline bool read(Cursor& in, std::string& out) {
  return in.readString(out);
}
inline bool read(Cursor& in, std::int64_t& out) {
  return in.readInt64(out);
}
inline bool read(Cursor& in, double& out) {
  return in.readDouble(out);
}
inline bool read(Cursor& in, bool& out) {
  return in.readBool(out);
}
bool read(Cursor& in, Date& out);

template <RawEnum E>
bool read(Cursor& in, E& out) {
  using Raw = RawType<E>;
  std::optional<E> parsed;
  if constexpr (std::is_integral_v<Raw>) {
    std::int64_t raw = 0;
    if (!in.readInt64(raw)) return false;
    if (std::in_range<Raw>(raw)) parsed = fromRawValue<E>(Raw(raw));
  } else {
    std::string_view raw;
    if (!in.readString(raw)) return false;
    parsed = fromRawValue<E>(Raw(raw));
  }
  if (!parsed) return in.failValue("not a known case");
  out = *parsed;
  return true;
}

template <class T>
bool read(Cursor& in, std::vector<T>& out);
template <class T>
bool read(Cursor& in, std::map<std::string, T, std::less<>>& out);
template <JsonRecord T>
bool read(Cursor& in, T& out);

template <class T>
bool read(Cursor& in, std::vector<T>& out) {
  if (!in.beginArray()) return false;
  out.clear();
  for (bool first = true; in.nextElement(first); first = false) {
    if (!read(in, out.emplace_back())) {
      in.prependIndex(out.size() - 1);
      return false;
    }
  }
  return in.ok();
}

template <class T>
bool read(Cursor& in, std::map<std::string, T, std::less<>>& out) {
  if (!in.beginObject()) return false;
  out.clear();
  std::string_view key;
  for (bool first = true; in.nextKey(first, key); first = false) {
    // A repeated key keeps its last value, as it does in a record.
    const auto entry = out.insert_or_assign(std::string(key), T{}).first;
    if (!read(in, entry->second)) {
      in.prependKey(entry->first);
      return false;
    }
  }
  return in.ok();
}

// Reads a member: null clears an optional (or fails a required one); anything else must have
// the member's type.
template <bool kRequired, class Member>
bool readMember(Cursor& in, Member& member) {
  if constexpr (requires { member.reset(); }) {
    if (in.skipNull()) {
      member.reset();
      return !kRequired || in.failValue("required, not null");
    }
    return in.ok() && read(in, member.emplace());
  } else {
    return read(in, member);
  }
}

// A record's keys and one reading function per field, built once from its jsonFields().
template <JsonRecord T>
struct RecordReader {
  static constexpr auto kFields = T::jsonFields();
  static constexpr std::size_t kCount = std::tuple_size_v<decltype(kFields)>;
  static constexpr std::size_t kNotFound = kCount;
  using ReadField = bool (*)(Cursor&, T&);

  template <std::size_t I>
  static bool readField(Cursor& in, T& out) {
    constexpr auto field = std::get<I>(kFields);
    return readMember<field.required>(in, out.*field.member);
  }

  static constexpr auto kKeys = []<std::size_t... I>(std::index_sequence<I...>) {
    return std::array<std::string_view, kCount>{std::get<I>(kFields).key...};
  }
  (std::make_index_sequence<kCount>{});
  static constexpr auto kReaders = []<std::size_t... I>(std::index_sequence<I...>) {
    return std::array<ReadField, kCount>{&readField<I>...};
  }
  (std::make_index_sequence<kCount>{});
  static constexpr auto kRequired = []<std::size_t... I>(std::index_sequence<I...>) {
    return std::array<bool, kCount>{std::get<I>(kFields).required...};
  }
  (std::make_index_sequence<kCount>{});

  // Keys usually come in table order, so the search starts after the last key found.
  static std::size_t find(std::string_view key, std::size_t hint) {
    for (std::size_t n = 0, i = hint; n < kCount; ++n, i = (i + 1 == kCount ? 0 : i + 1)) {
      const std::string_view candidate = kKeys[i];
      if (candidate.size() == key.size() &&
          std::memcmp(candidate.data(), key.data(), key.size()) == 0) {
        return i;
      }
    }
    return kNotFound;
  }

  static void clearOptionals(T& out) {
    const auto clear = [&](const auto& field) {
      auto& member = out.*field.member;
      if constexpr (requires { member.reset(); }) member.reset();
    };
    std::apply([&](const auto&... field) { (clear(field), ...); }, kFields);
  }
};

template <JsonRecord T>
bool read(Cursor& in, T& out) {
  using Reader = RecordReader<T>;
  if (!in.beginObject()) return false;
  // A record starts with every listed field absent: defaults never stand in for a missing key.
  Reader::clearOptionals(out);
  std::array<bool, Reader::kCount> seen{};
  std::size_t hint = 0;
  std::string_view key;
  for (bool first = true; in.nextKey(first, key); first = false) {
    const std::size_t index = Reader::find(key, hint);
    if (index == Reader::kNotFound) {
      if (!in.skipValue()) {
        in.prependKey(key);
        return false;
      }
      continue;
    }
    if (!Reader::kReaders[index](in, out)) {
      in.prependKey(Reader::kKeys[index]);
      return false;
    }
    seen[index] = true;
    hint = index + 1 == Reader::kCount ? 0 : index + 1;
  }
  if (!in.ok()) return false;
  for (std::size_t i = 0; i < Reader::kCount; ++i) {
    if (Reader::kRequired[i] && !seen[i]) {
      return in.failValue("required key " + std::string(Reader::kKeys[i]) + " missing");
    }
  }
  return true;
}

// Parses a whole text and reads its root into T; anything after the root value fails.
template <class T>
Result<T> decodeDocument(std::string_view text) {
  Cursor in(text);
  T decoded{};
  if (read(in, decoded) && in.finish()) return decoded;
  return in.error();
}

}  // namespace nutrition::json

// Instantiates decodeDocument for a type and for a list of it; used at namespace scope by the
// sources that own the decoding of a family of records.
#define NUTRITION_JSON_DECODABLE(Type)                                                        \
  template ::nutrition::Result<Type> nutrition::json::decodeDocument<Type>(std::string_view); \
  template ::nutrition::Result<std::vector<Type>>                                             \
      nutrition::json::decodeDocument<std::vector<Type>>(std::string_view);
