#include "json/JsonReader.h"

#include <gtest/gtest.h>

#include <clocale>
#include <cmath>
#include <cstring>
#include <limits>
#include <map>

#include "json/JsonNumber.h"
#include "model/ModelCodec.h"
#include "model/NutritionMenu.h"
#include "model/NutritionUser.h"

namespace nutrition::json {
namespace {

using StringTable = std::map<std::string, std::string, std::less<>>;

// A dish whose unknown key "Extra" holds `value`: only validation can reject it.
std::string dishWithExtra(std::string_view value) {
  return R"([{"DishId":1,"Extra":)" + std::string(value) + "}]";
}

bool sameBits(double a, double b) {
  return std::memcmp(&a, &b, sizeof a) == 0;
}

TEST(JsonReader, InvalidJsonFailsEvenWhereNoFieldReadsIt) {
  using namespace std::string_view_literals;
  for (const std::string_view value : std::initializer_list<std::string_view>{
           "[1 true]",              // missing comma
           "[1,]",                  // trailing comma in an array
           R"({"a":1,})",           // trailing comma in an object
           "[1,,2]",                //
           R"({"a" 1})",            // missing colon
           R"({a:1})",              // unquoted key
           "'text'",                // single quotes
           "/* note */ 1",          // comments
           "1 // note",             //
           "01",                    // leading zeros
           "-01",                   //
           "1.",                    // fraction without digits
           ".5",                    //
           "1e",                    // exponent without digits
           "+1",                    //
           "-",                     //
           "NaN",                   //
           "Infinity",              //
           "-Infinity",             //
           "nul",                   // truncated literals
           "tru",                   //
           "True",                  //
           R"("\x41")",             // unknown escape
           R"("\u12")",             // short \u escape
           R"("\uZZZZ")",           //
           R"("\ud800")",           // lone high surrogate
           R"("\ud800x")",          //
           R"("\ud800\u0041")",     // high surrogate followed by no low one
           R"("\udc00")",           // lone low surrogate
           "\"\xFF\"",              // raw invalid UTF-8
           "\"\xC3\"",              // truncated sequence
           "\"\xC0\xAF\"",          // overlong form
           "\"\xED\xA0\x80\"",      // encoded surrogate
           "\"\xF4\x90\x80\x80\"",  // beyond U+10FFFF
           "\"a\nb\"",              // raw control characters
           "\"a\tb\"",              //
           "\"a\0b\""sv,
           "\"unterminated",  //
           "[[1]",            // unclosed
           "{\"a\":[}]",      // mismatched brackets
       }) {
    SCOPED_TRACE(value);
    const auto decoded = decodeJsonArray<NutritionDish>(dishWithExtra(value));
    ASSERT_FALSE(decoded.ok());
    EXPECT_EQ(decoded.error().code, ErrorCode::decoding);
  }
  // The same rule holds anywhere in a body, and for anything after the root value.
  EXPECT_FALSE(decodeJsonArray<NutritionDish>(R"([{"DishId":1,"Extra":[1 true]}])").ok());
  EXPECT_FALSE(decodeJson<NutritionMenu>(R"({"Days":[{"DayNum":1,"Note":nul}]})").ok());
  EXPECT_FALSE(decodeJson<NutritionMenu>(R"({"_id":"m"} x)").ok());
  EXPECT_FALSE(decodeJson<NutritionMenu>(R"({"_id":"m"}})").ok());
  EXPECT_FALSE(decodeJson<NutritionMenu>("").ok());
  EXPECT_FALSE(decodeJson<NutritionMenu>("  \n ").ok());
}

TEST(JsonReader, ValidJsonInUnknownKeysIsSkipped) {
  for (const char* value : {
           R"({"nested":[1,-2.5e+3,0.0,-0,1E-2,true,false,null,{"k":[]},{}],"":""})",
           R"("esc \" \\ \/ \b \f \n \r \t \u00e9 \ud83d\ude00")",
           "\"raw UTF-8: \xC3\xB1 \xE2\x82\xAC \xF0\x9F\x98\x80\"",
           " [ 1 , [ ] , { } ] ",
           "123456789012345678901234567890",
           "1e400",
       }) {
    SCOPED_TRACE(value);
    const auto decoded = decodeJsonArray<NutritionDish>(dishWithExtra(value));
    ASSERT_TRUE(decoded.ok()) << decoded.error().message;
    EXPECT_EQ(decoded->at(0).dishID, 1);
  }
  const auto spaced = decodeJson<NutritionDish>(" \t\r\n{ \"DishId\" : 3 ,\n\"Kcal\":\t4 } \n");
  ASSERT_TRUE(spaced.ok()) << spaced.error().message;
  EXPECT_EQ(spaced->kcal, 4);
}

TEST(JsonReader, NestingIsLimitedWithoutExhaustingTheStack) {
  const auto nested = [](std::size_t depth) {
    return std::string(depth, '[') + std::string(depth, ']');
  };
  const auto deep = decodeJsonArray<NutritionDish>(dishWithExtra(nested(100000)));
  ASSERT_FALSE(deep.ok());
  EXPECT_NE(deep.error().message.find("nested too deeply"), std::string::npos)
      << deep.error().message;
  EXPECT_FALSE(decodeDocument<std::vector<std::string>>(nested(100000)).ok());

  // Depth counts every level, the record's own included: 2 + 250 stays within 256.
  EXPECT_TRUE(decodeJsonArray<NutritionDish>(dishWithExtra(nested(250))).ok());
  EXPECT_FALSE(decodeJsonArray<NutritionDish>(dishWithExtra(nested(255))).ok());
}

TEST(JsonReader, IntegersAreJsonIntegersWithinInt64) {
  struct Case {
    const char* text;
    std::optional<std::int64_t> expected;  // nothing: must fail
  };
  for (const Case& c : {
           Case{"0", 0},
           Case{"-0", 0},
           Case{"9223372036854775807", std::numeric_limits<std::int64_t>::max()},
           Case{"-9223372036854775808", std::numeric_limits<std::int64_t>::min()},
           Case{"9007199254740993", 9007199254740993},  // beyond double precision
           Case{"9223372036854775808", std::nullopt},
           Case{"-9223372036854775809", std::nullopt},
           Case{"100000000000000000000", std::nullopt},
           Case{"1.0", std::nullopt},
           Case{"1e2", std::nullopt},
           Case{"1E0", std::nullopt},
           Case{"300.5", std::nullopt},
           Case{"\"300\"", std::nullopt},
       }) {
    SCOPED_TRACE(c.text);
    const auto dish = decodeJson<NutritionDish>(std::string(R"({"Kcal":)") + c.text + "}");
    ASSERT_EQ(dish.ok(), c.expected.has_value());
    if (dish.ok()) {
      EXPECT_EQ(dish->kcal, c.expected);
    }
  }
}

TEST(JsonReader, DoublesAreTheNearestDoubleOnEveryPath) {
  struct Case {
    const char* text;
    double expected;
  };
  for (const Case& c : {
           Case{"1834.5", 1834.5},
           Case{"0.1", 0.1},
           Case{"-60.69", -60.69},
           Case{"1800", 1800.0},
           Case{"-0", -0.0},
           Case{"0.30000000000000004", 0.30000000000000004},
           Case{"9007199254740993", 9007199254740992.0},  // ties to even
           Case{"123456789012345678901234567890", 1.2345678901234568e29},
           Case{"2.2250738585072014e-308", 2.2250738585072014e-308},
           Case{"4.9406564584124654e-324", 4.9406564584124654e-324},
           Case{"1.7976931348623157e308", 1.7976931348623157e308},
           Case{"1e-400", 0.0},
           Case{"1E+2", 100.0},
           Case{"7.0e-10", 7.0e-10},
       }) {
    SCOPED_TRACE(c.text);
    const auto user = decodeJson<NutritionUser>(std::string(R"({"DailyKcal":)") + c.text + "}");
    ASSERT_TRUE(user.ok()) << user.error().message;
    EXPECT_TRUE(sameBits(*user->dailyKcal, c.expected)) << *user->dailyKcal;
    // The conversion used where the standard library lacks floating-point from_chars.
    double fallback = 1;
    ASSERT_TRUE(detail::parseDoubleWithStrtod(c.text, fallback));
    EXPECT_TRUE(sameBits(fallback, c.expected)) << fallback;
  }
  EXPECT_FALSE(decodeJson<NutritionUser>(R"({"DailyKcal":1e400})").ok());
  EXPECT_FALSE(decodeJson<NutritionUser>(R"({"DailyKcal":-1e309})").ok());
}

TEST(JsonReader, FallbackConversionIgnoresTheLocale) {
  // Only meaningful where a locale with a decimal comma is installed.
  const std::string previous = std::setlocale(LC_NUMERIC, nullptr);
  bool anyComma = false;
  for (const char* name : {"de_DE.UTF-8", "es_ES.UTF-8", "fr_FR.UTF-8", "de_DE", "C.UTF-8"}) {
    if (!std::setlocale(LC_NUMERIC, name)) continue;
    anyComma = anyComma || *std::localeconv()->decimal_point == ',';
    double value = 0;
    EXPECT_TRUE(detail::parseDoubleWithStrtod("2020.536", value));
    EXPECT_EQ(value, 2020.536) << name;
  }
  std::setlocale(LC_NUMERIC, previous.c_str());
  if (!anyComma) std::printf("no decimal-comma locale installed; checked the C locale only\n");
}

TEST(JsonReader, EscapesAndSurrogatePairsBecomeUtf8) {
  struct Case {
    const char* json;
    std::string expected;
  };
  for (const Case& c : {
           Case{R"("\u00e9")", "\xC3\xA9"},
           Case{R"("\u20AC")", "\xE2\x82\xAC"},
           Case{R"("\ud83d\ude00")", "\xF0\x9F\x98\x80"},
           Case{R"("\uD834\uDD1E")", "\xF0\x9D\x84\x9E"},
           Case{R"("\u0000")", std::string(1, '\0')},
           Case{R"("\"\\\/\b\f\n\r\t")", "\"\\/\b\f\n\r\t"},
           Case{"\"Fácil ñ € 😀\"", "Fácil ñ € 😀"},
           Case{R"("plain, then \u0041 and more plain text after the escape")",
                "plain, then A and more plain text after the escape"},
       }) {
    SCOPED_TRACE(c.json);
    const auto text = decodeDocument<std::string>(c.json);
    ASSERT_TRUE(text.ok()) << text.error().message;
    EXPECT_EQ(*text, c.expected);
  }
}

TEST(JsonReader, FailureMessagesSayWhereReadingStopped) {
  struct Case {
    std::string_view json;
    std::string_view path;
  };
  for (const Case& c : {
           Case{R"([{"Days":[{"DayNum":1},{"Intakes":[{"Dishes":[{"Kcal":1.5}]}]}]}])",
                "[0].Days[1].Intakes[0].Dishes[0].Kcal"},
           Case{R"([{"DishId":1},{"DishId":2,"Extra":[1 true]}])", "[1].Extra"},
           Case{R"([{"Days":[{"Intakes":[{"Dishes":[{"BinaryUrl":"x"}]}]}]}])",
                "[0].Days[0].Intakes[0].Dishes[0].BinaryUrl"},
           Case{R"([{"Days":[{"Intakes":[{"\u0044ishes":[{},{"Preferences":[1,"2"]}]}]}]}])",
                "[0].Days[0].Intakes[0].Dishes[1].Preferences[1]"},
       }) {
    SCOPED_TRACE(c.json);
    const auto menus = decodeJsonArray<NutritionMenu>(c.json);
    ASSERT_FALSE(menus.ok());
    EXPECT_NE(menus.error().message.find(std::string(c.path) + " "), std::string::npos)
        << menus.error().message;
  }
  const auto gender = decodeJson<NutritionUser>(R"({"Gender":"male"})");
  ASSERT_FALSE(gender.ok());
  EXPECT_NE(gender.error().message.find("Gender"), std::string::npos);
}

TEST(JsonReader, StringTablesTakeAnyKeys) {
  const auto table = decodeDocument<StringTable>(
      R"({"Desayuno":"Breakfast","":"empty","Caf\u00e9":"Coffee","Desayuno":"Breakfast!"})");
  ASSERT_TRUE(table.ok()) << table.error().message;
  EXPECT_EQ(*table, (StringTable{{"Desayuno", "Breakfast!"}, {"", "empty"}, {"Café", "Coffee"}}));
  EXPECT_EQ(table->find(std::string_view("Café"))->second, "Coffee");

  const auto wrong = decodeDocument<StringTable>(R"({"a":"x","Cena":3})");
  ASSERT_FALSE(wrong.ok());
  EXPECT_NE(wrong.error().message.find("at Cena "), std::string::npos) << wrong.error().message;
  EXPECT_FALSE(decodeDocument<StringTable>(R"(["a"])").ok());
  EXPECT_TRUE(decodeDocument<StringTable>("{}").ok());
}

TEST(JsonReader, CursorReadsHeterogeneousValues) {
  Cursor in(R"({"n": 12.5, "s": "t\u00e9", "l": ["a", "b"], "o": {"x": [null]}, "b": true})");
  ASSERT_TRUE(in.beginObject());
  std::string_view key;
  std::vector<std::string> seen;
  for (bool first = true; in.nextKey(first, key); first = false) {
    const std::string name(key);
    switch (in.peek()) {
      case JsonType::number: {
        double number = 0;
        ASSERT_TRUE(in.readDouble(number));
        seen.push_back(name + "=" + std::to_string(number));
        break;
      }
      case JsonType::string: {
        std::string text;
        ASSERT_TRUE(in.readString(text));
        seen.push_back(name + "=" + text);
        break;
      }
      default:
        ASSERT_TRUE(in.skipValue());
        seen.push_back(name + " skipped");
    }
  }
  ASSERT_TRUE(in.ok());
  EXPECT_TRUE(in.finish());
  EXPECT_EQ(seen, (std::vector<std::string>{"n=12.500000", "s=té", "l skipped", "o skipped",
                                            "b skipped"}));

  // A failure sticks: nothing reads after it, and the error says where it happened.
  Cursor broken(R"(["a", 1])");
  std::vector<std::string> list;
  ASSERT_TRUE(broken.beginArray());
  for (bool first = true; broken.nextElement(first); first = false)
    broken.readString(list.emplace_back());
  EXPECT_FALSE(broken.ok());
  EXPECT_FALSE(broken.finish());
  EXPECT_NE(broken.error().message.find("expected a string"), std::string::npos);
}

}  // namespace
}  // namespace nutrition::json
