#include "base/Date.h"

#include <gtest/gtest.h>

#include "support/TestPlatform.h"

namespace nutrition {
namespace {

using test::utc;

TEST(Iso8601, ParsesInternetDateTimeWithEveryZoneForm) {
  EXPECT_EQ(parseIso8601("1985-04-12T00:00:00Z"), utc(1985, 4, 12));
  EXPECT_EQ(parseIso8601("1985-04-12T02:30:00+02:30"), utc(1985, 4, 12));
  EXPECT_EQ(parseIso8601("1985-04-11T19:00:00-0500"), utc(1985, 4, 12));
  EXPECT_EQ(parseIso8601("2024-02-29T23:59:59Z"), utc(2024, 2, 29, 23, 59, 59));
  EXPECT_EQ(parseIso8601("1969-12-31T23:59:59Z"), utc(1969, 12, 31, 23, 59, 59));
}

TEST(Iso8601, RejectsEverythingElse) {
  for (const char* text : {
           "1990-02-03",                  // no time
           "1990-02-03T00:00:00",         // no zone
           "2023-05-01T10:00:00.123Z",    // fractional seconds
           "1990-02-30T00:00:00Z",        // no such day
           "2023-02-29T00:00:00Z",        // not a leap year
           "1990-13-01T00:00:00Z",        // no such month
           "1990-02-03T24:00:00Z",        // hour out of range
           "1990-02-03T10:60:00Z",        // minute out of range
           "1990-02-03 10:00:00Z",        // space instead of T
           "1990-02-03T10:00:00+2:00",    // short zone
           "1990-02-03T10:00:00+02:00x",  // trailing text
           "+1990-02-03T10:00:00Z",       // signed year
           "",
       }) {
    SCOPED_TRACE(text);
    EXPECT_FALSE(parseIso8601(text).has_value());
  }
}

TEST(Iso8601, OnlyMomentsWithinYears0001To9999InUtcParse) {
  struct Case {
    const char* text;
    bool parses;
  };
  for (const Case& c : {
           Case{"0001-01-01T00:00:00Z", true}, Case{"9999-12-31T23:59:59Z", true},
           Case{"0001-01-01T01:00:00+01:00", true}, Case{"9999-12-31T22:59:59-01:00", true},
           Case{"0000-01-01T00:00:00+01:00", false},  // year 0 either way
           Case{"0000-12-31T23:00:00-01:00", true},   // written as 0001-01-01T00:00:00Z
           Case{"0001-01-01T00:00:00+00:01", false},  // before 0001 in UTC
           Case{"9999-12-31T23:59:59-00:01", false},  // year 10000 in UTC
       }) {
    SCOPED_TRACE(c.text);
    const auto date = parseIso8601(c.text);
    ASSERT_EQ(date.has_value(), c.parses);
    if (date) {
      EXPECT_EQ(parseIso8601(formatIso8601(*date)), date);
    }
  }
}

TEST(Iso8601, FormatsInUtcAndReadsBack) {
  EXPECT_EQ(formatIso8601(utc(1985, 4, 12)), "1985-04-12T00:00:00Z");
  EXPECT_EQ(formatIso8601(utc(1969, 7, 20, 20, 17, 40)), "1969-07-20T20:17:40Z");
  const Date date = utc(2031, 1, 9, 8, 7, 6);
  EXPECT_EQ(parseIso8601(formatIso8601(date)), date);
}

}  // namespace
}  // namespace nutrition
