#pragma once
// Writes any record that lists its jsonFields() (see JsonFields.h): keys in list order, absent
// optional fields left out, dates as ISO 8601, enumerations as their raw values.

#include <cstdint>
#include <optional>
#include <string>
#include <tuple>
#include <type_traits>
#include <vector>

#include "base/Date.h"
#include "base/RawEnum.h"
#include "base/Result.h"
#include "json/JsonFields.h"
#include "json/JsonWriter.h"

namespace nutrition::json {

inline void write(JsonWriter& out, const std::string& value) {
  out.string(value);
}
inline void write(JsonWriter& out, std::int64_t value) {
  out.integer(value);
}
inline void write(JsonWriter& out, double value) {
  out.number(value);
}
inline void write(JsonWriter& out, bool value) {
  out.boolean(value);
}
inline void write(JsonWriter& out, Date value) {
  out.date(value);
}

template <RawEnum E>
void write(JsonWriter& out, E value) {
  const auto raw = rawValue(value);
  if constexpr (std::is_integral_v<decltype(raw)>) {
    out.integer(raw);
  } else {
    out.string(raw);
  }
}

template <class T>
void write(JsonWriter& out, const std::vector<T>& values);

template <JsonRecord T>
void write(JsonWriter& out, const T& record);

template <class T>
void write(JsonWriter& out, const std::vector<T>& values) {
  out.beginArray();
  for (const auto& value : values)
    write(out, value);
  out.endArray();
}

template <class Record, class Member>
void writeField(JsonWriter& out, const Record& record, const Field<Record, Member>& field) {
  const Member& value = record.*field.member;
  if constexpr (requires { value.has_value(); }) {
    if (!value) return;
    out.key(field.key);
    write(out, *value);
  } else {
    out.key(field.key);
    write(out, value);
  }
}

template <JsonRecord T>
void write(JsonWriter& out, const T& record) {
  out.beginObject();
  std::apply([&](const auto&... fields) { (writeField(out, record, fields), ...); },
             T::jsonFields());
  out.endObject();
}

// The JSON text of a record or a list of records; fails only on a non-finite number or a date
// outside years 0001 to 9999.
template <class T>
Result<std::string> encodeJson(const T& value) {
  JsonWriter out;
  write(out, value);
  if (out.failed()) return Error{ErrorCode::encoding, std::string(out.failure())};
  return out.take();
}

}  // namespace nutrition::json
