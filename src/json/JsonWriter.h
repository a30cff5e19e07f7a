#pragma once
// A small streaming JSON writer that keeps keys in the order they are written, which the
// backend records need, and escapes strings correctly. Invalid UTF-8 is replaced by U+FFFD so
// the output is always valid JSON; a non-finite number or a date without an ISO 8601 form
// cannot be written and marks the writer as failed instead.
//
//   JsonWriter w;
//   w.beginObject();
//   w.key("UserId");  w.string("m1_acme");
//   w.key("Weight");  w.integer(80);
//   w.endObject();
//   w.text() == R"({"UserId":"m1_acme","Weight":80})"
//
// The text grows in a buffer whose spare room is reserved ahead of each write, so writing a
// value costs one capacity check.

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

#include "base/Date.h"

namespace nutrition::json {

class JsonWriter {
 public:
  explicit JsonWriter(std::size_t expectedSize = 1024);

  void beginObject() { open('{'); }
  void endObject() { close('}'); }
  void beginArray() { open('['); }
  void endArray() { close(']'); }

  void key(std::string_view name);
  void string(std::string_view value);
  void integer(std::int64_t value);
  void number(double value);
  void boolean(bool value);
  void null();
  // ISO 8601 in UTC ("1985-04-12T00:00:00Z").
  void date(Date value);

  [[nodiscard]] bool failed() const { return !failure_.empty(); }
  // What could not be written, when failed().
  [[nodiscard]] std::string_view failure() const { return failure_; }
  [[nodiscard]] std::string_view text() const { return std::string_view(out_.data(), size_); }
  std::string take();

 private:
  // Room for `count` more bytes, returning where they go.
  char* reserve(std::size_t count) {
    if (out_.size() - size_ < count) grow(count);
    return out_.data() + size_;
  }
  void grow(std::size_t count);
  void separate(char*& at) {
    if (needsComma_) *at++ = ',';
  }
  void open(char bracket);
  void close(char bracket);
  void writeEscaped(std::string_view value);
  void writeRaw(std::string_view text);

  std::string out_;  // its size is the capacity in use; size_ is the text written
  std::size_t size_ = 0;
  bool needsComma_ = false;
  std::string_view failure_;
};

// Shortest text that reads back as the same double ("1800", "2020.536"); locale-independent.
std::string formatNumber(double value);

}  // namespace nutrition::json
