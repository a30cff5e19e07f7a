#include "json/JsonWriter.h"

#include <charconv>
#include <clocale>
#include <cmath>
#include <cstdio>
#include <cstdlib>

namespace nutrition::json {
namespace {

constexpr std::string_view kReplacementCharacter = "\xEF\xBF\xBD";

// Length of the well-formed UTF-8 sequence starting at `text[i]`, or 0 when it is malformed.
std::size_t utf8SequenceLength(std::string_view text, std::size_t i) {
  const auto byte = [&](std::size_t k) { return static_cast<unsigned char>(text[k]); };
  const unsigned char lead = byte(i);
  std::size_t length = 0;
  unsigned char low = 0x80, high = 0xBF;  // bounds of the second byte
  if (lead < 0x80) return 1;
  if (lead >= 0xC2 && lead <= 0xDF) {
    length = 2;
  } else if (lead >= 0xE0 && lead <= 0xEF) {
    length = 3;
    if (lead == 0xE0) low = 0xA0;   // no overlong forms
    if (lead == 0xED) high = 0x9F;  // no surrogates
  } else if (lead >= 0xF0 && lead <= 0xF4) {
    length = 4;
    if (lead == 0xF0) low = 0x90;
    if (lead == 0xF4) high = 0x8F;  // nothing above U+10FFFF
  } else {
    return 0;
  }
  if (i + length > text.size()) return 0;
  if (byte(i + 1) < low || byte(i + 1) > high) return 0;
  for (std::size_t k = i + 2; k < i + length; ++k) {
    if (byte(k) < 0x80 || byte(k) > 0xBF) return 0;
  }
  return length;
}

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

void JsonWriter::beforeValue() {
  if (afterKey_) {
    afterKey_ = false;
    return;
  }
  if (!containerIsEmpty_.empty()) {
    if (!containerIsEmpty_.back()) out_ += ',';
    containerIsEmpty_.back() = false;
  }
}

void JsonWriter::open(char bracket) {
  beforeValue();
  out_ += bracket;
  containerIsEmpty_.push_back(true);
}

void JsonWriter::close(char bracket) {
  out_ += bracket;
  if (!containerIsEmpty_.empty()) containerIsEmpty_.pop_back();
}

void JsonWriter::beginObject() {
  open('{');
}
void JsonWriter::endObject() {
  close('}');
}
void JsonWriter::beginArray() {
  open('[');
}
void JsonWriter::endArray() {
  close(']');
}

void JsonWriter::key(std::string_view name) {
  beforeValue();
  writeEscaped(name);
  out_ += ':';
  afterKey_ = true;
}

void JsonWriter::string(std::string_view value) {
  beforeValue();
  writeEscaped(value);
}

void JsonWriter::integer(std::int64_t value) {
  beforeValue();
  out_ += std::to_string(value);
}

void JsonWriter::number(double value) {
  beforeValue();
  if (!std::isfinite(value)) {
    failed_ = true;
    out_ += "null";
    return;
  }
  out_ += formatNumber(value);
}

void JsonWriter::boolean(bool value) {
  beforeValue();
  out_ += value ? "true" : "false";
}

void JsonWriter::null() {
  beforeValue();
  out_ += "null";
}

void JsonWriter::writeEscaped(std::string_view value) {
  static constexpr char kHex[] = "0123456789abcdef";
  out_ += '"';
  for (std::size_t i = 0; i < value.size();) {
    const char c = value[i];
    const auto byte = static_cast<unsigned char>(c);
    if (byte >= 0x80) {
      const std::size_t length = utf8SequenceLength(value, i);
      if (length == 0) {
        out_ += kReplacementCharacter;
        ++i;
      } else {
        out_.append(value.substr(i, length));
        i += length;
      }
      continue;
    }
    switch (c) {
      case '"':
        out_ += "\\\"";
        break;
      case '\\':
        out_ += "\\\\";
        break;
      case '\n':
        out_ += "\\n";
        break;
      case '\r':
        out_ += "\\r";
        break;
      case '\t':
        out_ += "\\t";
        break;
      case '\b':
        out_ += "\\b";
        break;
      case '\f':
        out_ += "\\f";
        break;
      default:
        if (byte < 0x20) {
          out_ += "\\u00";
          out_ += kHex[byte >> 4];
          out_ += kHex[byte & 0xF];
        } else {
          out_ += c;
        }
    }
    ++i;
  }
  out_ += '"';
}

}  // namespace nutrition::json
