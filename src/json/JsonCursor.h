#pragma once
// A forward-only, validating reader over one JSON text. It reads values of the type the caller
// expects and checks everything it passes over, skipped values included: comments, trailing
// commas, bad escapes, leading zeros, NaN, lone surrogates, malformed UTF-8, raw control
// characters and anything after the root value all fail. Nesting deeper than kMaxDepth fails
// instead of exhausting the stack. The cursor keeps nothing after it is gone and allocates only
// for what it hands out.
//
//   Cursor in(text);
//   if (!in.beginObject()) ...;
//   std::string_view key;
//   for (bool first = true; in.nextKey(first, key); first = false) {
//     if (key == "Weight") { if (!in.readInt64(weight)) ...; } else if (!in.skipValue()) ...;
//   }
//   if (!in.ok() || !in.finish()) ...;   // in.error() says what and where
//
// Every reading call returns false when it failed; the first failure sticks and later calls
// fail at once. Object and array loops end with false too, so check ok() after them.

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

#include "base/Result.h"

namespace nutrition::json {

enum class JsonType : std::uint8_t { object, array, string, number, boolean, null, none };

class Cursor {
 public:
  static constexpr int kMaxDepth = 256;

  explicit Cursor(std::string_view text)
      : begin_(text.data()), p_(text.data()), end_(text.data() + text.size()) {}

  // The type of the next value; `none` at the end of the text or before anything else.
  JsonType peek();
  // Consumes a null when one comes next.
  bool skipNull();

  bool readString(std::string& out);
  // A string without copying when it holds no escape; the view lasts until the next read.
  bool readString(std::string_view& out);
  // A JSON integer (no fraction, no exponent) within the range of int64.
  bool readInt64(std::int64_t& out);
  // Any JSON number, to the nearest double.
  bool readDouble(double& out);
  bool readBool(bool& out);
  // Checks and passes over the next value, whatever its type.
  bool skipValue();

  bool beginObject();
  // Moves to the next member: true with its key, false after the closing brace or on failure.
  bool nextKey(bool first, std::string_view& key);
  bool beginArray();
  // Moves to the next element: true when one follows, false after the closing bracket or on
  // failure.
  bool nextElement(bool first);

  // Nothing but white space may follow the root value.
  bool finish();

  bool ok() const { return failure_ == Failure::none; }

  // Failures found by the caller: the value has the wrong type, or its content is not one the
  // caller accepts; `detail` says which.
  bool failType(std::string_view expected);
  bool failValue(std::string detail);
  // Adds the segment ("Kcal" or "[2]") in front of the failure's path, while unwinding.
  void prependKey(std::string_view key);
  void prependIndex(std::size_t index);

  // "wrong type at [0].Days[1].Kcal (expected an integer) at byte 57".
  Error error() const;

 private:
  enum class Failure : std::uint8_t { none, syntax, type, range, depth, value };

  bool fail(Failure failure, std::string detail);
  void skipSpace() {
    while (p_ != end_ && (*p_ == ' ' || *p_ == '\n' || *p_ == '\r' || *p_ == '\t'))
      ++p_;
  }
  // Reads the string at p_ (after its quote) into a view of the text or into `scratch`.
  bool scanString(std::string_view& out, std::string& scratch);
  bool nextKey(bool first, std::string_view& key, std::string& scratch);
  bool decodeEscapes(std::string& out);
  bool readEscape(std::string& out);
  bool scanNumber(const char*& start, bool& integral);
  bool scanLiteral(std::string_view literal);
  bool enter();

  const char* begin_;
  const char* p_;
  const char* end_;
  int depth_ = 0;
  Failure failure_ = Failure::none;
  std::string detail_;
  std::string path_;
  std::size_t failedAt_ = 0;
  std::string scratch_;
  std::string keyScratch_;
};

}  // namespace nutrition::json
