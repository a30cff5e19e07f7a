#include "json/JsonCursor.h"

#include <bitset>
#include <limits>

#include "json/JsonNumber.h"
#include "json/Utf8.h"

namespace nutrition::json {
namespace {

bool isDigit(char c) {
  return c >= '0' && c <= '9';
}

int hexValue(char c) {
  if (c >= '0' && c <= '9') return c - '0';
  if (c >= 'a' && c <= 'f') return c - 'a' + 10;
  if (c >= 'A' && c <= 'F') return c - 'A' + 10;
  return -1;
}

}  // namespace

bool Cursor::fail(Failure failure, std::string detail) {
  if (failure_ != Failure::none) return false;
  failure_ = failure;
  detail_ = std::move(detail);
  failedAt_ = std::size_t(p_ - begin_);
  return false;
}

bool Cursor::failType(std::string_view expected) {
  return fail(Failure::type, "expected " + std::string(expected));
}

bool Cursor::failValue(std::string detail) {
  return fail(Failure::value, std::move(detail));
}

// Segments join with a dot unless the one after is an index: "Days[1].Kcal".
void Cursor::prependKey(std::string_view key) {
  std::string segment(key);
  if (!path_.empty() && path_.front() != '[') segment += '.';
  path_.insert(0, segment);
}

void Cursor::prependIndex(std::size_t index) {
  std::string segment = std::to_string(index);
  segment.insert(segment.begin(), '[');
  segment += ']';
  if (!path_.empty() && path_.front() != '[') segment += '.';
  path_.insert(0, segment);
}

Error Cursor::error() const {
  static constexpr const char* kWhat[] = {"no error",     "malformed JSON",    "wrong type",
                                          "out of range", "nested too deeply", "unexpected value"};
  std::string message = kWhat[static_cast<int>(failure_)];
  if (!path_.empty()) message += " at " + path_;
  if (!detail_.empty()) message += " (" + detail_ + ")";
  message += " at byte " + std::to_string(failedAt_);
  return Error{ErrorCode::decoding, std::move(message)};
}

// Expects a value of type `wanted` next; a value of another type fails as a wrong type, and
// anything that is not a value at all as malformed JSON.
#define NUTRITION_EXPECT(wanted, name)                                                             \
  do {                                                                                             \
    const JsonType found = peek();                                                                 \
    if (found != (wanted)) {                                                                       \
      return found == JsonType::none ? fail(Failure::syntax, "expected a value") : failType(name); \
    }                                                                                              \
  } while (false)

bool Cursor::readString(std::string_view& out) {
  NUTRITION_EXPECT(JsonType::string, "a string");
  ++p_;
  return scanString(out, scratch_);
}

bool Cursor::readStringSlow(std::string& out) {
  NUTRITION_EXPECT(JsonType::string, "a string");
  ++p_;
  std::string_view text;
  if (!scanString(text, out)) return false;
  if (text.data() != out.data()) out.assign(text);  // else it was unescaped into `out`
  return true;
}

bool Cursor::scanString(std::string_view& out, std::string& scratch) {
  const char* start = p_;
  for (;;) {
    p_ = findSpecialByte(p_, end_);
    if (p_ == end_) return fail(Failure::syntax, "unterminated string");
    const auto c = static_cast<unsigned char>(*p_);
    if (c == '"') {
      out = std::string_view(start, std::size_t(p_ - start));
      ++p_;
      return true;
    }
    if (c == '\\') {
      scratch.assign(start, p_);
      if (!decodeEscapes(scratch)) return false;
      out = scratch;
      return true;
    }
    if (c < 0x80) return fail(Failure::syntax, "control character in a string");
    const std::size_t length = utf8SequenceLength(std::string_view(p_, std::size_t(end_ - p_)), 0);
    if (length == 0) return fail(Failure::syntax, "malformed UTF-8");
    p_ += length;
  }
}

// Continues a string from its first backslash, appending the unescaped text to `out`.
bool Cursor::decodeEscapes(std::string& out) {
  for (;;) {
    const auto c = static_cast<unsigned char>(*p_);
    if (c == '"') {
      ++p_;
      return true;
    }
    if (c == '\\') {
      if (!readEscape(out)) return false;
    } else if (c >= 0x80) {
      const std::size_t length =
          utf8SequenceLength(std::string_view(p_, std::size_t(end_ - p_)), 0);
      if (length == 0) return fail(Failure::syntax, "malformed UTF-8");
      out.append(p_, length);
      p_ += length;
    } else {
      return fail(Failure::syntax, "control character in a string");
    }
    const char* run = p_;
    p_ = findSpecialByte(p_, end_);
    out.append(run, p_);
    if (p_ == end_) return fail(Failure::syntax, "unterminated string");
  }
}

bool Cursor::readEscape(std::string& out) {
  const auto readHex4 = [&](std::uint32_t& code) {
    if (end_ - p_ < 4) return false;
    code = 0;
    for (int i = 0; i < 4; ++i) {
      const int digit = hexValue(p_[i]);
      if (digit < 0) return false;
      code = code * 16 + std::uint32_t(digit);
    }
    p_ += 4;
    return true;
  };
  ++p_;  // the backslash
  if (p_ == end_) return fail(Failure::syntax, "unterminated string");
  const char c = *p_++;
  switch (c) {
    case '"':
    case '\\':
    case '/':
      out += c;
      return true;
    case 'b':
      out += '\b';
      return true;
    case 'f':
      out += '\f';
      return true;
    case 'n':
      out += '\n';
      return true;
    case 'r':
      out += '\r';
      return true;
    case 't':
      out += '\t';
      return true;
    case 'u':
      break;
    default:
      --p_;
      return fail(Failure::syntax, "unknown escape");
  }
  std::uint32_t code = 0;
  if (!readHex4(code)) return fail(Failure::syntax, "malformed \\u escape");
  if (code >= 0xDC00 && code <= 0xDFFF) return fail(Failure::syntax, "lone low surrogate");
  if (code >= 0xD800 && code <= 0xDBFF) {
    std::uint32_t low = 0;
    if (end_ - p_ < 2 || p_[0] != '\\' || p_[1] != 'u') {
      return fail(Failure::syntax, "lone high surrogate");
    }
    p_ += 2;
    if (!readHex4(low)) return fail(Failure::syntax, "malformed \\u escape");
    if (low < 0xDC00 || low > 0xDFFF) return fail(Failure::syntax, "lone high surrogate");
    code = 0x10000 + ((code - 0xD800) << 10) + (low - 0xDC00);
  }
  appendUtf8(out, code);
  return true;
}

bool Cursor::scanNumber(const char*& start, bool& integral) {
  start = p_;
  if (*p_ == '-') ++p_;
  if (p_ == end_ || !isDigit(*p_)) return fail(Failure::syntax, "malformed number");
  if (*p_ == '0') {
    ++p_;
    if (p_ != end_ && isDigit(*p_)) return fail(Failure::syntax, "leading zero");
  } else {
    while (p_ != end_ && isDigit(*p_))
      ++p_;
  }
  integral = true;
  if (p_ != end_ && *p_ == '.') {
    integral = false;
    ++p_;
    if (p_ == end_ || !isDigit(*p_)) return fail(Failure::syntax, "malformed number");
    while (p_ != end_ && isDigit(*p_))
      ++p_;
  }
  if (p_ != end_ && (*p_ == 'e' || *p_ == 'E')) {
    integral = false;
    ++p_;
    if (p_ != end_ && (*p_ == '+' || *p_ == '-')) ++p_;
    if (p_ == end_ || !isDigit(*p_)) return fail(Failure::syntax, "malformed number");
    while (p_ != end_ && isDigit(*p_))
      ++p_;
  }
  return true;
}

bool Cursor::readInt64Slow(std::int64_t& out) {
  NUTRITION_EXPECT(JsonType::number, "an integer");
  const char* start = nullptr;
  bool integral = false;
  if (!scanNumber(start, integral)) return false;
  if (!integral) {
    p_ = start;
    return failType("an integer");
  }
  const bool negative = *start == '-';
  const char* digits = start + (negative ? 1 : 0);
  if (p_ - digits > 19) {
    p_ = start;
    return fail(Failure::range, "beyond 64-bit integers");
  }
  std::uint64_t magnitude = 0;
  for (const char* d = digits; d != p_; ++d)
    magnitude = magnitude * 10 + std::uint64_t(*d - '0');
  constexpr auto kMax = std::uint64_t(std::numeric_limits<std::int64_t>::max());
  if (magnitude > kMax + (negative ? 1 : 0)) {
    p_ = start;
    return fail(Failure::range, "beyond 64-bit integers");
  }
  out = negative ? std::int64_t(0 - magnitude) : std::int64_t(magnitude);
  return true;
}

bool Cursor::readDouble(double& out) {
  NUTRITION_EXPECT(JsonType::number, "a number");
  const char* start = nullptr;
  bool integral = false;
  if (!scanNumber(start, integral)) return false;
  if (!parseDouble(std::string_view(start, std::size_t(p_ - start)), out)) {
    p_ = start;
    return fail(Failure::range, "beyond double");
  }
  return true;
}

bool Cursor::readBool(bool& out) {
  NUTRITION_EXPECT(JsonType::boolean, "true or false");
  out = *p_ == 't';
  return scanLiteral(out ? "true" : "false");
}

#undef NUTRITION_EXPECT

// Skipping reads its keys into the value scratch so that the key of the member being skipped
// stays intact for the failure path.
bool Cursor::nextKey(bool first, std::string_view& key, std::string& scratch) {
  if (!ok()) return false;
  skipSpace();
  if (p_ == end_) return fail(Failure::syntax, "unterminated object");
  if (*p_ == '}') {
    ++p_;
    --depth_;
    return false;
  }
  if (!first) {
    if (*p_ != ',') return fail(Failure::syntax, "expected ',' or '}'");
    ++p_;
    skipSpace();
  }
  if (p_ == end_ || *p_ != '"') return fail(Failure::syntax, "expected a key");
  ++p_;
  if (!scanString(key, scratch)) return false;
  skipSpace();
  if (p_ == end_ || *p_ != ':') return fail(Failure::syntax, "expected ':'");
  ++p_;
  return true;
}

bool Cursor::failBegin(std::string_view expected) {
  return peek() == JsonType::none ? fail(Failure::syntax, "expected a value") : failType(expected);
}

bool Cursor::skipValue() {
  // Containers opened by this skip: a set bit is an object.
  std::bitset<kMaxDepth> isObject;
  const int base = depth_;
  std::string_view ignored;
  for (;;) {
    // A value.
    switch (peek()) {
      case JsonType::object:
        if (!enter()) return false;
        isObject.set(std::size_t(depth_ - base - 1));
        if (!nextKey(true, ignored, scratch_)) {
          if (!ok()) return false;
          break;  // {}
        }
        continue;
      case JsonType::array:
        if (!enter()) return false;
        isObject.reset(std::size_t(depth_ - base - 1));
        if (!nextElement(true)) {
          if (!ok()) return false;
          break;  // []
        }
        continue;
      case JsonType::string:
        ++p_;
        if (!scanString(ignored, scratch_)) return false;
        break;
      case JsonType::number: {
        const char* start = nullptr;
        bool integral = false;
        if (!scanNumber(start, integral)) return false;
        break;
      }
      case JsonType::boolean:
        if (!scanLiteral(*p_ == 't' ? "true" : "false")) return false;
        break;
      case JsonType::null:
        if (!scanLiteral("null")) return false;
        break;
      case JsonType::none:
        return fail(Failure::syntax, "expected a value");
    }
    // After a value: the next member or element, or the close of its container.
    for (;;) {
      if (depth_ == base) return true;
      const bool inObject = isObject.test(std::size_t(depth_ - base - 1));
      const bool more = inObject ? nextKey(false, ignored, scratch_) : nextElement(false);
      if (more) break;
      if (!ok()) return false;
    }
  }
}

bool Cursor::finish() {
  if (!ok()) return false;
  skipSpace();
  if (p_ != end_) return fail(Failure::syntax, "content after the value");
  return true;
}

}  // namespace nutrition::json
