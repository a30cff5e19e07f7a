#pragma once
// Reads any record that lists its jsonFields() (see JsonFields.h), and lists, string-keyed
// maps and plain values of them, from one JSON text through the validating Cursor.
//
// Rules: a missing key or null leaves an optional field absent; a value of the wrong JSON type
// fails the record and everything holding it; unknown keys are checked and skipped; a required
// field must be present and not null; integers are JSON integers within int64; enumerations
// read their raw values and an unknown one fails. Values are copied out, so nothing points
// into the text once decodeDocument returns.

#include <algorithm>
#include <array>
#include <cstdint>
#include <iterator>
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
#include "json/JsonReadContext.h"

namespace nutrition::json {

inline bool read(ReadContext& in, std::string& out) {
  return in.readString(out);
}
inline bool read(ReadContext& in, std::int64_t& out) {
  return in.readInt64(out);
}
inline bool read(ReadContext& in, double& out) {
  return in.readDouble(out);
}
inline bool read(ReadContext& in, bool& out) {
  return in.readBool(out);
}
bool read(ReadContext& in, Date& out);

template <RawEnum E>
bool read(ReadContext& in, E& out) {
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
bool read(ReadContext& in, std::vector<T>& out);
template <class T>
bool read(ReadContext& in, std::map<std::string, T, std::less<>>& out);
template <JsonRecord T>
bool read(ReadContext& in, T& out);

template <class T>
bool read(ReadContext& in, std::vector<T>& out) {
  if (!in.beginArray()) return false;
  std::vector<T>& scratch = in.scratch<T>();
  const std::size_t base = scratch.size();
  bool ok = true;
  for (bool first = true; in.nextElement(first); first = false) {
    const std::size_t index = scratch.size() - base;
    bool elementRead = false;
    if constexpr (std::is_arithmetic_v<T> || std::is_same_v<T, std::string>) {
      elementRead = read(in, scratch.emplace_back());
    } else {
      // A record is read into a local first: it may hold arrays that use the same scratch
      // list, and growing it would move the record being read.
      T element{};
      elementRead = read(in, element);
      if (elementRead) scratch.push_back(std::move(element));
    }
    if (!elementRead) {
      in.prependIndex(index);
      ok = false;
      break;
    }
  }
  ok = ok && in.ok();
  if (ok) {
    out.clear();
    out.reserve(scratch.size() - base);
    std::move(scratch.begin() + std::ptrdiff_t(base), scratch.end(), std::back_inserter(out));
  }
  scratch.erase(scratch.begin() + std::ptrdiff_t(base), scratch.end());
  return ok;
}

template <class T>
bool read(ReadContext& in, std::map<std::string, T, std::less<>>& out) {
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

// A key that reads the same escaped or not.
constexpr bool isPlainKey(std::string_view key) {
  for (const char c : key) {
    if (c == '"' || c == '\\' || static_cast<unsigned char>(c) < 0x20 ||
        static_cast<unsigned char>(c) >= 0x80) {
      return false;
    }
  }
  return true;
}

// Keys are short: a plain loop beats a call to memcmp.
inline bool sameText(std::string_view a, std::string_view b) {
  if (a.size() != b.size()) return false;
  for (std::size_t i = 0; i < a.size(); ++i) {
    if (a[i] != b[i]) return false;
  }
  return true;
}

// Reads a member: null clears an optional (or fails a required one); anything else must have
// the member's type.
template <bool kRequired, class Member>
bool readMember(ReadContext& in, Member& member) {
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
  using ReadField = bool (*)(ReadContext&, T&);

  template <std::size_t I>
  static bool readField(ReadContext& in, T& out) {
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

  // Keys usually come in table order: the key after the last one found is tried first, and
  // the search starts there.
  static constexpr std::string_view expected(std::size_t hint) {
    if constexpr (kCount == 0) {
      return {};
    } else {
      return kKeys[hint];
    }
  }
  static_assert(std::apply([](const auto&... field) { return (isPlainKey(field.key) && ...); },
                           kFields),
                "keys are matched against the text as they are: no escapes, ASCII only");

  static std::size_t find(std::string_view key, std::size_t hint) {
    for (std::size_t n = 0, i = hint; n < kCount; ++n, i = (i + 1 == kCount ? 0 : i + 1)) {
      if (sameText(kKeys[i], key)) return i;
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
bool read(ReadContext& in, T& out) {
  using Reader = RecordReader<T>;
  if (!in.beginObject()) return false;
  // A record starts with every listed field absent: defaults never stand in for a missing key.
  Reader::clearOptionals(out);
  std::array<bool, Reader::kCount> seen{};
  std::size_t hint = 0;
  std::string_view key;
  for (bool first = true; in.nextKey(first, key, Reader::expected(hint)); first = false) {
    const std::size_t index =
        key.data() == Reader::expected(hint).data() ? hint : Reader::find(key, hint);
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
  ReadContext in(text);
  T decoded{};
  if (read(in, decoded) && in.finish()) return decoded;
  return in.error();
}

}  // namespace nutrition::json

// Instantiates decodeDocument for a type and for a list of it; used at namespace scope by the
// sources that own the decoding of a family of records. (A type in a template argument cannot
// be parenthesised.)
// NOLINTBEGIN(bugprone-macro-parentheses)
#define NUTRITION_JSON_DECODABLE(Type)                                                        \
  template ::nutrition::Result<Type> nutrition::json::decodeDocument<Type>(std::string_view); \
  template ::nutrition::Result<std::vector<Type>>                                             \
      nutrition::json::decodeDocument<std::vector<Type>>(std::string_view);
// NOLINTEND(bugprone-macro-parentheses)
