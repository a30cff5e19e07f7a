#include "json/JsonWriter.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>

namespace nutrition::json {
namespace {

std::string writeString(std::string_view value) {
  JsonWriter out;
  out.string(value);
  return out.take();
}

TEST(JsonWriter, SeparatesNestedContainersAndKeepsKeyOrder) {
  JsonWriter out;
  out.beginObject();
  out.key("b");
  out.beginArray();
  out.integer(1);
  out.beginObject();
  out.endObject();
  out.beginArray();
  out.endArray();
  out.endArray();
  out.key("a");
  out.boolean(false);
  out.key("c");
  out.null();
  out.endObject();
  EXPECT_EQ(out.text(), R"({"b":[1,{},[]],"a":false,"c":null})");
  EXPECT_FALSE(out.failed());
}

TEST(JsonWriter, EscapesStrings) {
  EXPECT_EQ(writeString("say \"hi\"\\"), R"("say \"hi\"\\")");
  EXPECT_EQ(writeString("a\nb\tc\r\b\f"), R"("a\nb\tc\r\b\f")");
  EXPECT_EQ(writeString(std::string("\x01\x1f", 2)), R"("\u0001\u001f")");
  EXPECT_EQ(writeString(std::string("nul\0x", 5)), R"("nul\u0000x")");
  EXPECT_EQ(writeString("/path"), R"("/path")");
  // Valid UTF-8 passes through unchanged.
  EXPECT_EQ(writeString("Fácil ñ € 😀"), "\"Fácil ñ € 😀\"");
}

TEST(JsonWriter, ReplacesMalformedUtf8) {
  const std::string replacement = "\xEF\xBF\xBD";
  EXPECT_EQ(writeString("a\xFFz"), "\"a" + replacement + "z\"");
  EXPECT_EQ(writeString("\xC3"), "\"" + replacement + "\"");                    // truncated
  EXPECT_EQ(writeString("\xC0\xAF"), "\"" + replacement + replacement + "\"");  // overlong
  EXPECT_EQ(writeString("\xED\xA0\x80"),                                        // surrogate
            "\"" + replacement + replacement + replacement + "\"");
}

TEST(JsonWriter, GrowsPastItsFirstReserveWithoutLosingText) {
  // A tiny first reserve: every kind of write has to grow the buffer.
  JsonWriter out(4);
  std::string expected = "[";
  out.beginArray();
  for (int i = 0; i < 200; ++i) {
    if (i > 0) expected += ',';
    switch (i % 4) {
      case 0:
        out.string(std::string(std::size_t(i), '\x01'));
        expected += '"';
        for (int k = 0; k < i; ++k)
          expected += "\\u0001";
        expected += '"';
        break;
      case 1:
        out.integer(std::numeric_limits<std::int64_t>::min());
        expected += "-9223372036854775808";
        break;
      case 2:
        out.number(-1.5e-300);
        expected += "-1.5e-300";
        break;
      default:
        out.date(Date{std::chrono::seconds{-62135596800}});  // the first writable second
        expected += "\"0001-01-01T00:00:00Z\"";
    }
  }
  out.endArray();
  expected += ']';
  EXPECT_FALSE(out.failed());
  EXPECT_EQ(out.take(), expected);
}

TEST(JsonWriter, WritesShortestRoundTripNumbersAndRefusesNonFinite) {
  EXPECT_EQ(formatNumber(1800.0), "1800");
  EXPECT_EQ(formatNumber(2020.536), "2020.536");
  EXPECT_EQ(formatNumber(0.1), "0.1");
  EXPECT_EQ(formatNumber(-60.69), "-60.69");
  EXPECT_EQ(std::stod(formatNumber(1.0 / 3.0)), 1.0 / 3.0);

  for (double bad : {std::nan(""), std::numeric_limits<double>::infinity()}) {
    JsonWriter out;
    out.number(bad);
    EXPECT_TRUE(out.failed());
  }
}

}  // namespace
}  // namespace nutrition::json
