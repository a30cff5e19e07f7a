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
#include <cstring>
#include <string>
#include <string_view>

#include "base/Result.h"
#include "json/Utf8.h"

namespace nutrition::json {

enum class JsonType : std::uint8_t { object, array, string, number, boolean, null, none };

class Cursor {
 public:
  static constexpr int kMaxDepth = 256;

  explicit Cursor(std::string_view text)
      : begin_(text.data()), p_(text.data()), end_(text.data() + text.size()) {}

  // The type of the next value; `none` at the end of the text or before anything else.
  JsonType peek() {
    if (!ok()) return JsonType::none;
    skipSpace();
    return p_ == end_ ? JsonType::none : typeOf(*p_);
  }
  // The first character of the next value; '\0' at the end of the text or after a failure.
  char next() {
    if (!ok()) return '\0';
    skipSpace();
    return p_ == end_ ? '\0' : *p_;
  }
  // Consumes a null when one comes next.
  bool skipNull() { return next() == 'n' && scanLiteral("null"); }

  bool readString(std::string& out) {
    // Most strings hold no escape: one scan, stepping over well-formed multi-byte characters,
    // and one copy. Anything else, failures included, takes the slow path from the start.
    if (next() == '"') {
      const char* stop = findSpecialByte(p_ + 1, end_);
      while (stop != end_ && static_cast<unsigned char>(*stop) >= 0x80) {
        const std::size_t length = multiByteLength(stop);
        if (length == 0) break;
        stop = findSpecialByte(stop + length, end_);
      }
      if (stop != end_ && *stop == '"') {
        out.assign(p_ + 1, stop);
        p_ = stop + 1;
        return true;
      }
    }
    return readStringSlow(out);
  }
  // A string without copying when it holds no escape; the view lasts until the next read.
  bool readString(std::string_view& out);
  // A JSON integer (no fraction, no exponent) within the range of int64.
  bool readInt64(std::int64_t& out) { return readShortInteger(out) || readInt64Slow(out); }
  // Any JSON number, to the nearest double.
  bool readDouble(double& out);
  bool readBool(bool& out);
  // Checks and passes over the next value, whatever its type.
  bool skipValue();

  bool beginObject() { return peek() == JsonType::object ? enter() : failBegin("an object"); }
  // Moves to the next member: true with its key, false after the closing brace or on failure.
  bool nextKey(bool first, std::string_view& key) { return nextKey(first, key, keyScratch_); }
  // The same, trying `expected` (a key without escapes) first: when the text's key is exactly
  // it and follows without white space, `key` becomes `expected` itself, with no scanning.
  bool nextKey(bool first, std::string_view& key, std::string_view expected) {
    const char* p = p_;
    if (!first && p != end_ && *p == ',') ++p;
    const std::size_t length = expected.size();
    if ((first || p != p_) && std::size_t(end_ - p) > length + 2 && *p == '"' &&
        p[length + 1] == '"' && p[length + 2] == ':' && sameBytes(p + 1, expected.data(), length) &&
        ok()) {
      key = expected;
      p_ = p + length + 3;
      return true;
    }
    return nextKey(first, key, keyScratch_);
  }
  bool beginArray() { return peek() == JsonType::array ? enter() : failBegin("an array"); }
  // Moves to the next element: true when one follows, false after the closing bracket or on
  // failure.
  bool nextElement(bool first) {
    if (!ok()) return false;
    skipSpace();
    if (p_ != end_) {
      if (*p_ == ']') {
        ++p_;
        --depth_;
        return false;
      }
      if (first) return true;
      if (*p_ == ',') {
        ++p_;
        return true;
      }
    }
    return fail(Failure::syntax, p_ == end_ ? "unterminated array" : "expected ',' or ']'");
  }

  // Nothing but white space may follow the root value.
  bool finish();

  [[nodiscard]] bool ok() const { return failure_ == Failure::none; }

  // Failures found by the caller: the value has the wrong type, or its content is not one the
  // caller accepts; `detail` says which.
  bool failType(std::string_view expected);
  bool failValue(std::string detail);
  // Adds the segment ("Kcal" or "[2]") in front of the failure's path, while unwinding.
  void prependKey(std::string_view key);
  void prependIndex(std::size_t index);

  // "wrong type at [0].Days[1].Kcal (expected an integer) at byte 57".
  [[nodiscard]] Error error() const;

 private:
  enum class Failure : std::uint8_t { none, syntax, type, range, depth, value };

  static JsonType typeOf(char c) {
    switch (c) {
      case '{':
        return JsonType::object;
      case '[':
        return JsonType::array;
      case '"':
        return JsonType::string;
      case 't':
      case 'f':
        return JsonType::boolean;
      case 'n':
        return JsonType::null;
      default:
        return c == '-' || (c >= '0' && c <= '9') ? JsonType::number : JsonType::none;
    }
  }
  void skipSpace() {
    while (p_ != end_ && static_cast<unsigned char>(*p_) <= ' ' &&
           (*p_ == ' ' || *p_ == '\n' || *p_ == '\r' || *p_ == '\t')) {
      ++p_;
    }
  }
  // The length of the well-formed multi-byte sequence at `p` (a byte from 0x80), or 0. Two-byte
  // sequences, the accented letters of most texts, are checked here.
  std::size_t multiByteLength(const char* p) const {
    const auto lead = static_cast<unsigned char>(p[0]);
    if (lead >= 0xC2 && lead <= 0xDF && end_ - p >= 2 &&
        (static_cast<unsigned char>(p[1]) & 0xC0) == 0x80) {
      return 2;
    }
    return utf8SequenceLength(std::string_view(p, std::size_t(end_ - p)), 0);
  }
  static bool sameBytes(const char* a, const char* b, std::size_t length) {
    for (; length >= 8; a += 8, b += 8, length -= 8) {
      std::uint64_t x, y;
      std::memcpy(&x, a, 8);
      std::memcpy(&y, b, 8);
      if (x != y) return false;
    }
    for (; length > 0; ++a, ++b, --length) {
      if (*a != *b) return false;
    }
    return true;
  }
  bool enter() {
    if (depth_ >= kMaxDepth) return fail(Failure::depth, "");
    ++depth_;
    ++p_;
    return true;
  }
  // Most integers have a few digits and end the number: read those in one pass, leaving
  // everything else (and every failure) to readInt64Slow.
  bool readShortInteger(std::int64_t& out) {
    const char c = next();
    if (c != '-' && (c < '0' || c > '9')) return false;
    const char* p = p_;
    const bool negative = *p == '-';
    if (negative) ++p;
    const char* digits = p;
    std::int64_t value = 0;
    while (p != end_ && *p >= '0' && *p <= '9' && p - digits < 18) {
      value = value * 10 + (*p - '0');
      ++p;
    }
    if (p == digits || (*digits == '0' && p - digits > 1)) return false;
    if (p != end_ && ((*p >= '0' && *p <= '9') || *p == '.' || *p == 'e' || *p == 'E')) {
      return false;
    }
    out = negative ? -value : value;
    p_ = p;
    return true;
  }
  bool readInt64Slow(std::int64_t& out);
  bool readStringSlow(std::string& out);
  bool failBegin(std::string_view expected);
  bool fail(Failure failure, std::string detail);
  // Reads the string at p_ (after its quote) into a view of the text or into `scratch`.
  bool scanString(std::string_view& out, std::string& scratch);
  bool nextKey(bool first, std::string_view& key, std::string& scratch);
  bool decodeEscapes(std::string& out);
  bool readEscape(std::string& out);
  bool scanNumber(const char*& start, bool& integral);
  bool scanLiteral(std::string_view literal) {
    if (std::size_t(end_ - p_) >= literal.size() &&
        std::string_view(p_, literal.size()) == literal) {
      p_ += literal.size();
      return true;
    }
    return fail(Failure::syntax, "unknown literal");
  }

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
