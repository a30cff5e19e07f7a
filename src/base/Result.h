#pragma once
// A value or the reason there is none. Used inside the core so that transport, HTTP, decoding
// and encoding failures stay apart in logs and tests; public operations turn an error into an
// absent result as the module's contract asks.

#include <string>
#include <utility>
#include <variant>

namespace nutrition {

enum class ErrorCode {
  transport,  // the request never got an answer
  http,       // the answer was not usable at the HTTP level
  decoding,   // the body is not the JSON the record expects
  encoding,   // a value cannot be written as JSON (a non-finite number)
  invalidInput,
};

struct Error {
  ErrorCode code;
  std::string message;

  bool operator==(const Error&) const = default;
};

template <class T>
class [[nodiscard]] Result {
 public:
  Result(T value) : state_(std::move(value)) {}      // NOLINT(google-explicit-constructor)
  Result(Error error) : state_(std::move(error)) {}  // NOLINT(google-explicit-constructor)

  [[nodiscard]] bool ok() const { return std::holds_alternative<T>(state_); }
  explicit operator bool() const { return ok(); }

  [[nodiscard]] const T& value() const& { return std::get<T>(state_); }
  T& value() & { return std::get<T>(state_); }
  T&& value() && { return std::get<T>(std::move(state_)); }
  const T& operator*() const& { return value(); }
  T& operator*() & { return value(); }
  const T* operator->() const { return &value(); }
  T* operator->() { return &value(); }

  [[nodiscard]] const Error& error() const { return std::get<Error>(state_); }

 private:
  std::variant<T, Error> state_;
};

}  // namespace nutrition
