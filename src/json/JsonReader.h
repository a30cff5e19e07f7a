#pragma once
// Reads any record that lists its jsonFields() from simdjson On-Demand values. Include this
// only from decoding sources: it brings in simdjson.
//
// Rules: a missing key or null leaves an optional field absent; a value of the wrong JSON type
// fails the record and everything holding it; unknown keys are skipped; a required field
// must be present and not null. Values are copied out, so nothing points into the parser.

#include <simdjson.h>

#include <bitset>
#include <cstdint>
#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <tuple>
#include <type_traits>
#include <vector>

#include "base/Date.h"
#include "base/RawEnum.h"
#include "base/Result.h"
#include "json/JsonFields.h"

namespace nutrition::json {

namespace od = simdjson::ondemand;

// Where and why reading stopped; the path is built while unwinding ("Days[2].Kcal").
struct ReadFailure {
  simdjson::error_code code = simdjson::SUCCESS;
  std::string path;
  std::string detail;
};

using ReadStatus = bool;  // true when the value was read

inline ReadStatus fail(ReadFailure& failure, simdjson::error_code code, std::string detail = {}) {
  failure.code = code;
  failure.detail = std::move(detail);
  return false;
}

// Adds an outer segment ("Days" or "[2]") in front of the path read so far.
inline void prependPath(ReadFailure& failure, const std::string& segment) {
  if (failure.path.empty() || failure.path.front() == '[') {
    failure.path.insert(0, segment);
  } else {
    failure.path.insert(0, segment + ".");
  }
}

inline ReadStatus check(ReadFailure& failure, simdjson::error_code code) {
  return code == simdjson::SUCCESS || fail(failure, code);
}

inline ReadStatus read(od::value& value, std::string& out, ReadFailure& failure) {
  std::string_view text;
  if (!check(failure, value.get_string().get(text))) return false;
  out.assign(text);
  return true;
}

inline ReadStatus read(od::value& value, std::int64_t& out, ReadFailure& failure) {
  return check(failure, value.get_int64().get(out));
}

inline ReadStatus read(od::value& value, double& out, ReadFailure& failure) {
  return check(failure, value.get_double().get(out));
}

inline ReadStatus read(od::value& value, bool& out, ReadFailure& failure) {
  return check(failure, value.get_bool().get(out));
}

inline ReadStatus read(od::value& value, Date& out, ReadFailure& failure) {
  std::string_view text;
  if (!check(failure, value.get_string().get(text))) return false;
  const auto date = parseIso8601(text);
  if (!date) return fail(failure, simdjson::INCORRECT_TYPE, "not an ISO 8601 date-time");
  out = *date;
  return true;
}

template <RawEnum E>
ReadStatus read(od::value& value, E& out, ReadFailure& failure) {
  RawType<E> raw{};
  if constexpr (std::is_integral_v<RawType<E>>) {
    if (!check(failure, value.get_int64().get(raw))) return false;
  } else {
    if (!check(failure, value.get_string().get(raw))) return false;
  }
  const auto parsed = fromRawValue<E>(raw);
  if (!parsed) return fail(failure, simdjson::INCORRECT_TYPE, "not a known case");
  out = *parsed;
  return true;
}

template <class T>
ReadStatus read(od::value& value, std::vector<T>& out, ReadFailure& failure);

template <JsonRecord T>
ReadStatus read(od::value& value, T& out, ReadFailure& failure);

template <class T>
ReadStatus read(od::value& value, std::map<std::string, T, std::less<>>& out,
                ReadFailure& failure) {
  od::object object;
  if (!check(failure, value.get_object().get(object))) return false;
  out.clear();
  for (auto entry : object) {
    od::field member;
    if (!check(failure, std::move(entry).get(member))) return false;
    std::string_view key;
    if (!check(failure, member.unescaped_key().get(key))) return false;
    std::string name(key);
    T decoded{};
    if (!read(member.value(), decoded, failure)) {
      prependPath(failure, name);
      return false;
    }
    out.insert_or_assign(std::move(name), std::move(decoded));
  }
  return true;
}

template <class T>
ReadStatus read(od::value& value, std::vector<T>& out, ReadFailure& failure) {
  od::array array;
  if (!check(failure, value.get_array().get(array))) return false;
  out.clear();
  for (auto element : array) {
    od::value item;
    if (!check(failure, std::move(element).get(item))) return false;
    T decoded{};
    if (!read(item, decoded, failure)) {
      prependPath(failure, "[" + std::to_string(out.size()) + "]");
      return false;
    }
    out.push_back(std::move(decoded));
  }
  return true;
}

// Reads one member: null clears an optional; anything else must have the member's type.
template <class Member>
ReadStatus readMember(od::value& value, Member& member, ReadFailure& failure) {
  if constexpr (requires { member.reset(); }) {
    bool isNull = false;
    if (!check(failure, value.is_null().get(isNull))) return false;
    if (isNull) {
      member.reset();
      return true;
    }
    typename Member::value_type decoded{};
    if (!read(value, decoded, failure)) return false;
    member = std::move(decoded);
    return true;
  } else {
    return read(value, member, failure);
  }
}

template <JsonRecord T>
ReadStatus read(od::value& value, T& out, ReadFailure& failure) {
  constexpr auto fields = T::jsonFields();
  constexpr std::size_t kCount = std::tuple_size_v<decltype(fields)>;
  od::object object;
  if (!check(failure, value.get_object().get(object))) return false;

  // A record starts with every listed field absent: defaults never stand in for a missing key.
  const auto clear = [&](const auto& field) {
    auto& member = out.*field.member;
    if constexpr (requires { member.reset(); }) member.reset();
  };
  std::apply([&](const auto&... field) { (clear(field), ...); }, fields);

  std::bitset<kCount> seen;
  for (auto entry : object) {
    od::field member;
    if (!check(failure, std::move(entry).get(member))) return false;
    std::string_view key;
    if (!check(failure, member.unescaped_key().get(key))) return false;
    bool ok = true;
    bool matched = false;
    std::size_t index = 0;
    const auto readIfKey = [&](const auto& field) {
      if (!matched && field.key == key) {
        matched = true;
        seen.set(index);
        ok = readMember(member.value(), out.*field.member, failure);
      }
      ++index;
    };
    std::apply([&](const auto&... field) { (readIfKey(field), ...); }, fields);
    if (!ok) {
      prependPath(failure, std::string(key));
      return false;
    }
  }

  std::string_view missing;
  std::size_t index = 0;
  const auto checkRequired = [&](const auto& field) {
    if (field.required && !seen.test(index) && missing.empty()) missing = field.key;
    ++index;
  };
  std::apply([&](const auto&... field) { (checkRequired(field), ...); }, fields);
  if (!missing.empty()) {
    return fail(failure, simdjson::NO_SUCH_FIELD, "required key " + std::string(missing));
  }
  return true;
}

// Parses a whole document and reads its root into T; trailing content fails.
template <class T>
Result<T> decodeDocument(std::string_view json) {
  thread_local od::parser parser;
  const simdjson::padded_string padded(json);
  od::document document;
  ReadFailure failure;
  T decoded{};
  od::value root;
  if (check(failure, parser.iterate(padded).get(document)) &&
      check(failure, document.get_value().get(root)) && read(root, decoded, failure)) {
    if (document.current_location().error() == simdjson::SUCCESS) {
      fail(failure, simdjson::TRAILING_CONTENT);
    } else {
      return decoded;
    }
  }
  std::string message = simdjson::error_message(failure.code);
  if (!failure.path.empty()) message += " at " + failure.path;
  if (!failure.detail.empty()) message += " (" + failure.detail + ")";
  return Error{ErrorCode::decoding, std::move(message)};
}

}  // namespace nutrition::json
