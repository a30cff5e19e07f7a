#pragma once
// A small streaming JSON writer that keeps keys in the order they are written, which the
// backend records need, and escapes strings correctly. Invalid UTF-8 is replaced by U+FFFD so
// the output is always valid JSON; a non-finite number cannot be written and marks the writer
// as failed instead.
//
//   JsonWriter w;
//   w.beginObject();
//   w.key("UserId");  w.string("m1_acme");
//   w.key("Weight");  w.integer(80);
//   w.endObject();
//   w.text() == R"({"UserId":"m1_acme","Weight":80})"

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace nutrition::json {

class JsonWriter {
 public:
  void beginObject();
  void endObject();
  void beginArray();
  void endArray();

  void key(std::string_view name);
  void string(std::string_view value);
  void integer(std::int64_t value);
  void number(double value);
  void boolean(bool value);
  void null();

  bool failed() const { return failed_; }
  const std::string& text() const { return out_; }
  std::string take() { return std::move(out_); }

 private:
  void beforeValue();
  void open(char bracket);
  void close(char bracket);
  void writeEscaped(std::string_view value);

  std::string out_;
  std::vector<bool> containerIsEmpty_;
  bool afterKey_ = false;
  bool failed_ = false;
};

// Shortest text that reads back as the same double ("1800", "2020.536"); locale-independent.
std::string formatNumber(double value);

}  // namespace nutrition::json
