#include "fasting/AyunoUtils.h"

#include <gtest/gtest.h>

#include <cmath>

#include "platform/linux/TzCalendar.h"
#include "support/FakeLinks.h"
#include "support/TestPlatform.h"

namespace nutrition {
namespace {

using namespace std::chrono_literals;
using test::utc;

class AyunoTest : public ::testing::Test {
 protected:
  explicit AyunoTest(std::shared_ptr<const Calendar> calendar = nullptr,
                     std::string language = "es")
      : platform_({.now = utc(2026, 11, 21, 12),
                   .language = std::move(language),
                   .calendar = std::move(calendar),
                   .realResources = true}) {}

  void setScheme(std::optional<std::int64_t> scheme) {
    links_.member = NutritionUser::empty();
    links_.member->intermittentFastingID = scheme;
  }
  void startAt(Date start) {
    platform_.stores()
        .suite("NutritionPreferences")
        ->set("ayuno_timer", double(start.time_since_epoch().count()));
  }
  void elapse(std::int64_t seconds) {
    startAt(utc(2026, 11, 21, 12) - std::chrono::seconds(seconds));
  }

  AyunoUtils& ayuno() { return ayuno_; }
  std::vector<NotificationRequest> pending() const {
    return platform_.bundle().notifications->pending();
  }

  test::TestPlatform platform_;
  StringTables strings_{*platform_.bundle().resources, platform_.bundle().locale->languageCode()};
  test::FakeLinks links_;
  AyunoUtils ayuno_{platform_.bundle(), links_, strings_};
};

TEST_F(AyunoTest, WithoutAFastEverythingReadsEmpty) {
  setScheme(3);
  EXPECT_FALSE(ayuno().getCurrentTime().has_value());
  EXPECT_TRUE(ayuno().isFinished());
  EXPECT_EQ(ayuno().getCurrentTimeString(), "00:00:00");
  EXPECT_EQ(ayuno().getStartTime(), "");
  EXPECT_EQ(ayuno().getFinishTime(), "");
  EXPECT_FALSE(ayuno().getFinishTimeDate().has_value());
  EXPECT_EQ(ayuno().getCurrentPhase().hour, 0);
  EXPECT_EQ(ayuno().getCurrentPercentage(), 0.0);
  setScheme(std::nullopt);
  EXPECT_TRUE(std::isnan(ayuno().getCurrentPercentage()));

  // A start of the wrong type, or not a number at all, is no start.
  platform_.stores().suite("NutritionPreferences")->set("ayuno_timer", std::string("yesterday"));
  EXPECT_TRUE(ayuno().isFinished());
  platform_.stores().suite("NutritionPreferences")->set("ayuno_timer", std::nan(""));
  EXPECT_FALSE(ayuno().getCurrentTime().has_value());
}

TEST_F(AyunoTest, SchemesSetTheLengthAndTheRunningTime) {
  setScheme(1);
  elapse(43200);
  EXPECT_EQ(ayuno().getCurrentPercentage(), 1.0);
  elapse(43201);
  EXPECT_EQ(ayuno().getCurrentPercentage(), 0.999);
  elapse(129599);
  EXPECT_FALSE(ayuno().isFinished());
  elapse(129600);
  EXPECT_TRUE(ayuno().isFinished());

  setScheme(2);
  elapse(136799);
  EXPECT_FALSE(ayuno().isFinished());
  elapse(136800);
  EXPECT_TRUE(ayuno().isFinished());

  for (const std::int64_t scheme : {0, 3, 7}) {
    SCOPED_TRACE(scheme);
    setScheme(scheme);
    elapse(28800);
    EXPECT_EQ(ayuno().getCurrentPercentage(), 0.5);  // 16 hours
  }
  elapse(137046);
  EXPECT_EQ(ayuno().getCurrentTimeString(), "38:04:06");
  elapse(-65);  // the clock went back
  EXPECT_EQ(ayuno().getCurrentTime(), -65);
  EXPECT_LT(ayuno().getCurrentPercentage(), 0);
}

TEST_F(AyunoTest, PhasesFollowTheElapsedHoursAsTheClockSteps) {
  setScheme(1);
  startAt(utc(2026, 11, 21, 12));
  const std::vector<std::pair<std::int64_t, std::int64_t>> steps{
      {10799, 0}, {10800, 3}, {32400, 9}, {39600, 11}, {50400, 14}, {57600, 16}, {200000, 16}};
  std::int64_t done = 0;
  for (const auto& [elapsed, hour] : steps) {
    platform_.clock().advance(std::chrono::seconds(elapsed - done));
    done = elapsed;
    EXPECT_EQ(ayuno().getCurrentPhase().hour, hour) << elapsed;
  }
}

TEST_F(AyunoTest, NotificationIsReplacedNotAdded) {
  setScheme(3);
  startAt(utc(2026, 11, 21, 8, 30));
  ayuno().addAyunoNotification();
  ayuno().addAyunoNotification();
  const auto scheduled = pending();
  ASSERT_EQ(scheduled.size(), 1u);
  EXPECT_EQ(scheduled[0].identifier, "ayuno");
  EXPECT_EQ(scheduled[0].body, "Tu periodo de ayuno intermitente ha finalizado");
  EXPECT_EQ(scheduled[0].trigger, (LocalDateTime{2026, 11, 22, 0, 30, 0, 1}));

  platform_.stores().suite("NutritionPreferences")->remove("ayuno_timer");
  ayuno().addAyunoNotification();  // no start: the old one is removed, nothing replaces it
  EXPECT_TRUE(pending().empty());
}

TEST_F(AyunoTest, StartingAndEndingAFast) {
  setScheme(2);
  EXPECT_TRUE(ayuno().startIfFinished());
  EXPECT_FALSE(ayuno().startIfFinished());
  EXPECT_EQ(ayuno().getFinishTimeDate(), utc(2026, 11, 22, 2));
  EXPECT_EQ(pending().size(), 1u);
  ayuno().finish();
  EXPECT_TRUE(ayuno().isFinished());
  EXPECT_EQ(pending().size(), 1u);  // still scheduled
}

// A start at 23:00 yesterday local time in two zones, and the finish the next day.
class AyunoInZone : public AyunoTest, public ::testing::WithParamInterface<const char*> {
 protected:
  AyunoInZone() : AyunoTest(std::make_shared<TzCalendar>(GetParam()), "en") {}
};

TEST_P(AyunoInZone, DayWordsFollowTheLocalDate) {
  const TzCalendar zone(GetParam());
  // 07:00 local on the 21st, with a start at 23:00 local on the 20th.
  const Date nowUtc = utc(2026, 11, 21, 7) - zone.utcOffset(utc(2026, 11, 21, 7));
  platform_.clock().set(nowUtc);
  setScheme(3);
  startAt(nowUtc - 8h);
  EXPECT_EQ(ayuno().getStartTime(), "Yesterday, 23:00");
  EXPECT_EQ(ayuno().getFinishTime(), "Today, 15:00");
  EXPECT_EQ(ayuno().getCurrentPhase().hour, 3);
  // Past midnight of the start day the finish is still called tomorrow's when it is.
  platform_.clock().set(nowUtc - 7h - 30min);  // 23:30 on the 20th
  EXPECT_EQ(ayuno().getStartTime(), "Today, 23:00");
  EXPECT_EQ(ayuno().getFinishTime(), "Tomorrow, 15:00");
}

INSTANTIATE_TEST_SUITE_P(Zones, AyunoInZone,
                         ::testing::Values("Pacific/Auckland", "America/Los_Angeles"));

}  // namespace
}  // namespace nutrition
