#include "json/JsonWriter.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <clocale>
#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <cstring>

#include "json/Utf8.h"

namespace nutrition::json {
namespace {

constexpr char kReplacementCharacter[] = "\xEF\xBF\xBD";

// What each ASCII byte becomes inside a string: 0 copies it, 'u' writes \u00XX, any other
// letter writes that letter after a backslash.
constexpr auto kEscapes = [] {
  std::array<char, 128> table{};
  for (int c = 0; c < 0x20; ++c)
    table[std::size_t(c)] = 'u';
  table['"'] = '"';
  table['\\'] = '\\';
  table['\n'] = 'n';
  table['\r'] = 'r';
  table['\t'] = 't';
  table['\b'] = 'b';
  table['\f'] = 'f';
  return table;
}();

}  // namespace

std::string formatNumber(double value) {
#if defined(__cpp_lib_to_chars) && __cpp_lib_to_chars >= 201611L
  char buffer[32];
  const auto result = std::to_chars(buffer, buffer + sizeof buffer, value);
  return std::string(buffer, result.ptr);
#else
  // Floating-point to_chars is missing on older Apple systems: find the shortest %g form that
  // reads back exactly, then turn the locale's decimal point into '.'.
  char buffer[40];
  for (int precision = 1; precision <= 17; ++precision) {
    std::snprintf(buffer, sizeof buffer, "%.*g", precision, value);
    if (std::strtod(buffer, nullptr) == value) break;
  }
  std::string text = buffer;
  const char point = *std::localeconv()->decimal_point;
  for (char& c : text) {
    if (c == point) c = '.';
  }
  return text;
#endif
}

JsonWriter::JsonWriter(std::size_t expectedSize) {
  out_.resize(expectedSize);
}

void JsonWriter::grow(std::size_t count) {
  out_.resize(std::max(out_.size() * 2, size_ + count));
}

std::string JsonWriter::take() {
  out_.resize(size_);
  size_ = 0;
  needsComma_ = false;
  return std::move(out_);
}

void JsonWriter::writeRaw(std::string_view text) {
  char* at = reserve(text.size() + 1);
  separate(at);
  std::memcpy(at, text.data(), text.size());
  size_ = std::size_t(at + text.size() - out_.data());
  needsComma_ = true;
}

void JsonWriter::open(char bracket) {
  char* at = reserve(2);
  separate(at);
  *at++ = bracket;
  size_ = std::size_t(at - out_.data());
  needsComma_ = false;
}

void JsonWriter::close(char bracket) {
  char* at = reserve(1);
  *at++ = bracket;
  size_ = std::size_t(at - out_.data());
  needsComma_ = true;
}

void JsonWriter::key(std::string_view name) {
  writeEscaped(name);
  char* at = reserve(1);
  *at = ':';
  ++size_;
  needsComma_ = false;
}

void JsonWriter::string(std::string_view value) {
  writeEscaped(value);
}

void JsonWriter::integer(std::int64_t value) {
  char* at = reserve(24);
  separate(at);
  at = std::to_chars(at, at + 21, value).ptr;
  size_ = std::size_t(at - out_.data());
  needsComma_ = true;
}

void JsonWriter::number(double value) {
  if (!std::isfinite(value)) {
    failure_ = "a number is not finite";
    writeRaw("null");
    return;
  }
#if defined(__cpp_lib_to_chars) && __cpp_lib_to_chars >= 201611L
  char* at = reserve(40);
  separate(at);
  at = std::to_chars(at, at + 32, value).ptr;
  size_ = std::size_t(at - out_.data());
  needsComma_ = true;
#else
  writeRaw(formatNumber(value));
#endif
}

void JsonWriter::boolean(bool value) {
  writeRaw(value ? "true" : "false");
}

void JsonWriter::null() {
  writeRaw("null");
}

void JsonWriter::date(Date value) {
  if (!hasIso8601Form(value)) {
    failure_ = "a date is outside years 0001 to 9999";
    writeRaw("null");
    return;
  }
  char* at = reserve(kIso8601Length + 3);
  separate(at);
  *at++ = '"';
  formatIso8601(value, at);
  at += kIso8601Length;
  *at++ = '"';
  size_ = std::size_t(at - out_.data());
  needsComma_ = true;
}

void JsonWriter::writeEscaped(std::string_view value) {
  static constexpr char kHex[] = "0123456789abcdef";
  // Worst case: every byte a six-byte \u escape, plus a comma and the quotes.
  char* at = reserve(value.size() * 6 + 3);
  separate(at);
  *at++ = '"';
  const char* p = value.data();
  const char* const end = p + value.size();
  while (p != end) {
    const char* run = p;
    p = findSpecialByte(p, end);
    std::memcpy(at, run, std::size_t(p - run));
    at += p - run;
    if (p == end) break;
    const auto byte = static_cast<unsigned char>(*p);
    if (byte >= 0x80) {
      const std::size_t length = utf8SequenceLength(std::string_view(p, std::size_t(end - p)), 0);
      if (length == 0) {
        at = std::copy_n(kReplacementCharacter, 3, at);
        ++p;
      } else {
        std::memcpy(at, p, length);
        at += length;
        p += length;
      }
      continue;
    }
    const char escape = kEscapes[byte];
    *at++ = '\\';
    *at++ = escape;
    if (escape == 'u') {
      *at++ = '0';
      *at++ = '0';
      *at++ = kHex[byte >> 4];
      *at++ = kHex[byte & 0xF];
    }
    ++p;
  }
  *at++ = '"';
  size_ = std::size_t(at - out_.data());
  needsComma_ = true;
}

}  // namespace nutrition::json
