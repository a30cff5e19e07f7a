#include "platform/Calendar.h"

#include <gtest/gtest.h>

#include "platform/linux/TzCalendar.h"
#include "support/TestPlatform.h"

namespace nutrition {
namespace {

using namespace std::chrono_literals;
using test::utc;

TEST(Calendar, LocalDateAndWeekdayFollowTheZone) {
  // Sunday 23:30 in UTC is already Monday in Auckland and still Sunday afternoon in Los Angeles.
  const Date instant = utc(2026, 11, 22, 23, 30);
  const FixedOffsetCalendar utcCalendar;
  const TzCalendar auckland("Pacific/Auckland");
  const TzCalendar losAngeles("America/Los_Angeles");

  EXPECT_EQ(utcCalendar.weekday(instant), 1u);  // Sunday
  EXPECT_EQ(auckland.weekday(instant), 2u);     // Monday
  EXPECT_EQ(losAngeles.weekday(instant), 1u);

  EXPECT_EQ(auckland.components(instant), (LocalDateTime{2026, 11, 23, 12, 30, 0, 2}));
  EXPECT_EQ(losAngeles.components(instant), (LocalDateTime{2026, 11, 22, 15, 30, 0, 1}));
  EXPECT_EQ(auckland.format(instant, "dd/MM/yyyy HH:mm"), "23/11/2026 12:30");
  EXPECT_EQ(losAngeles.format(instant, "HH:mm:ss"), "15:30:00");
  EXPECT_EQ(auckland.timeZoneIdentifier(), "Pacific/Auckland");
}

TEST(Calendar, CountsWholeUnitsNotSeconds) {
  const TzCalendar madrid("Europe/Madrid");
  // The autumn change makes this calendar day 25 hours long: still one day.
  EXPECT_EQ(madrid.daysBetween(utc(2026, 10, 24, 22), utc(2026, 10, 25, 23)), 1);
  // 23 hours across the spring change, noon to noon local: one day.
  EXPECT_EQ(madrid.daysBetween(utc(2026, 3, 28, 11), utc(2026, 3, 29, 10)), 1);
  EXPECT_EQ(FixedOffsetCalendar{}.daysBetween(utc(2026, 3, 28, 11), utc(2026, 3, 29, 10)), 0);

  const FixedOffsetCalendar calendar;
  EXPECT_EQ(calendar.daysBetween(utc(2026, 1, 1, 10), utc(2026, 1, 3, 9)), 1);
  EXPECT_EQ(calendar.daysBetween(utc(2026, 1, 3, 9), utc(2026, 1, 1, 10)), -1);
  EXPECT_EQ(calendar.yearsBetween(utc(2000, 2, 29), utc(2001, 2, 28)), 0);
  EXPECT_EQ(calendar.yearsBetween(utc(2000, 2, 29), utc(2001, 3, 1)), 1);
  EXPECT_EQ(calendar.yearsBetween(utc(2030, 1, 1), utc(2026, 1, 2)), -3);
}

TEST(Calendar, ExtremeInstantsStayInRange) {
  const FixedOffsetCalendar calendar(14h);
  const Date far{std::chrono::seconds{std::numeric_limits<std::int64_t>::max() / 2}};
  const Date past{std::chrono::seconds{std::numeric_limits<std::int64_t>::min() / 2}};
  EXPECT_GT(calendar.year(far), 20000);
  EXPECT_LT(calendar.year(past), -20000);
  EXPECT_GT(calendar.yearsBetween(past, far), 0);
}

TEST(Calendar, UnknownZoneFallsBackToUtc) {
  const TzCalendar nowhere("Nowhere/Atlantis");
  EXPECT_EQ(nowhere.timeZoneIdentifier(), "UTC");
  EXPECT_EQ(nowhere.utcOffset(utc(2026, 1, 1)), 0s);
}

}  // namespace
}  // namespace nutrition
