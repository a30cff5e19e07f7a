#include <gtest/gtest.h>

#include <cmath>
#include <limits>

#include "model/NutritionDistribution.h"
#include "model/NutritionIntake.h"
#include "model/NutritionUser.h"
#include "platform/linux/TzCalendar.h"
#include "support/TestPlatform.h"

namespace nutrition {
namespace {

using namespace std::chrono_literals;
using test::utc;

NutritionUser withIntakes(std::vector<std::int64_t> intakes) {
  NutritionUser user;
  user.selectedIntakes = std::vector<SelectedIntake>{};
  for (const auto intake : intakes) {
    user.selectedIntakes->push_back(SelectedIntake{intake, std::vector<std::int64_t>{1}});
  }
  return user;
}

TEST(Energy, IdealWeightsBySexAndHeight) {
  NutritionUser male;
  male.gender = NutritionGender::male;
  male.height = 180;
  EXPECT_DOUBLE_EQ(male.getIdealWeight(), 77.6);
  EXPECT_DOUBLE_EQ(male.getIdealWeightKcal(), 22 * 1.8 * 1.8);

  const NutritionUser unknown;
  EXPECT_DOUBLE_EQ(unknown.getIdealWeight(), 63.9);
  EXPECT_DOUBLE_EQ(unknown.getIdealWeightKcal(), 60.69);

  NutritionUser female = male;
  female.gender = NutritionGender::female;
  EXPECT_DOUBLE_EQ(female.getIdealWeight(), 45.5 + 27.6);
  EXPECT_DOUBLE_EQ(female.getIdealWeightKcal(), 21 * 1.8 * 1.8);
}

TEST(Energy, ActivityLevelsOutsideOneToFourCountAsTheHighest) {
  for (const std::optional<std::int64_t> level : {std::optional<std::int64_t>{5}, {0}, {-1}, {}}) {
    SCOPED_TRACE(level.value_or(-99));
    NutritionUser user;
    user.physicalIntensityID = level;
    user.gender = NutritionGender::male;
    EXPECT_EQ(user.getActivityNumber(), 52);
    user.gender.reset();  // no sex reads as not male
    EXPECT_EQ(user.getActivityNumber(), 45);
  }
}

TEST(Energy, YearsFactorCountsWholeYearsAtTheBoundaries) {
  const FixedOffsetCalendar calendar;
  const Date now = utc(2026, 11, 21, 12);
  const std::vector<std::pair<Date, double>> births{
      {utc(1986, 11, 21, 12), 1.0},        // exactly 40
      {utc(1985, 11, 21, 12, 0, 1), 1.0},  // 41 one second from now
      {utc(1985, 11, 21, 12), 0.95},       // exactly 41
      {utc(1976, 11, 21), 0.95},           // 50
      {utc(1975, 11, 21), 0.9},            // 51
      {utc(1956, 11, 21), 0.8},            // 70
      {utc(1955, 11, 22), 0.8},            // 71 tomorrow
      {utc(1955, 11, 21), 0.7},            // 71
      {utc(2030, 1, 1), 1.0},              // not born yet
  };
  for (const auto& [birth, factor] : births) {
    SCOPED_TRACE(formatIso8601(birth));
    NutritionUser user;
    user.dateOfBirth = birth;
    EXPECT_EQ(user.getYearsFactor(now, calendar), factor);
  }
  EXPECT_EQ(NutritionUser{}.getYearsFactor(now, calendar), 1.0);  // no birth date: age 0
}

TEST(Energy, PhaseCountsCalendarDaysInTheDevicesZone) {
  // Noon to noon in Madrid across the spring clock change: 29 calendar days, although only
  // 28 days and 23 hours pass.
  const TzCalendar madrid("Europe/Madrid");
  const Date operation = utc(2026, 2, 28, 11);
  const Date now = utc(2026, 3, 29, 10);
  EXPECT_EQ(NutritionUser::getPhaseForOperationDate(operation, now, madrid),
            BariatricoPhase::phase2);
  EXPECT_EQ(NutritionUser::getPhaseForOperationDate(operation, now, FixedOffsetCalendar{}),
            BariatricoPhase::phase1);
}

TEST(Energy, KcalForDietByGoal) {
  const FixedOffsetCalendar calendar;
  const Date now = utc(2026, 11, 21, 12);
  NutritionUser user;
  user.gender = NutritionGender::male;
  user.height = 180;
  user.weight = 90;
  user.physicalIntensityID = 2;
  user.dateOfBirth = utc(1981, 6, 1);  // 45
  user.desiredBalanceID = 1;
  EXPECT_NEAR(user.getKcalForDiet(now, calendar), 2020.536, 1e-9);
  user.desiredBalanceID = 2;
  EXPECT_NEAR(user.getKcalForDiet(now, calendar), 2658.6 * 0.95, 1e-9);
  user.desiredBalanceID = 3;
  EXPECT_NEAR(user.getKcalForDiet(now, calendar), 2658.6 * 0.95 * 1.2, 1e-9);
  user.desiredBalanceID.reset();
  user.weight.reset();  // weight 0: adjusted weight is three quarters of the ideal
  EXPECT_NEAR(user.getKcalForDiet(now, calendar), 35 * 71.28 * 0.75 * 0.95 * 1.2, 1e-9);
}

TEST(Energy, SavingTheProfileCountsTheAgeAtTheGivenInstant) {
  const FixedOffsetCalendar calendar;
  NutritionUser user;
  user.gender = NutritionGender::male;
  user.height = 180;
  user.weight = 90;
  user.physicalIntensityID = 2;
  user.desiredBalanceID = 1;
  user.dateOfBirth = utc(1985, 11, 21, 12);  // 41 at noon
  user.setTargetWeightAndDailyKcal(utc(2026, 11, 21, 12), calendar);
  EXPECT_EQ(user.targetWeight, 77);
  EXPECT_NEAR(*user.dailyKcal, 2020.536, 1e-9);

  user.setTargetWeightAndDailyKcal(utc(2026, 11, 21, 11, 59, 59), calendar);  // still 40
  EXPECT_NEAR(*user.dailyKcal, 2658.6 * 0.8, 1e-9);
}

TEST(Energy, HugeValuesNeverTrap) {
  const FixedOffsetCalendar calendar;
  const Date now = utc(2026, 11, 21, 12);
  NutritionUser user;
  user.height = std::numeric_limits<std::int64_t>::max();
  user.weight = std::numeric_limits<std::int64_t>::min();
  user.setTargetWeightAndDailyKcal(now, calendar);
  EXPECT_GT(*user.targetWeight, 0);
  EXPECT_TRUE(std::isfinite(*user.dailyKcal));
  user.height = std::numeric_limits<std::int64_t>::min();
  user.setTargetWeightAndDailyKcal(now, calendar);
  EXPECT_LT(*user.targetWeight, 0);

  NutritionIntake intake;
  intake.dishes = {
      {NutritionDish{.kcal = std::numeric_limits<std::int64_t>::max()}, NutritionDish{.kcal = 1}}};
  EXPECT_EQ(intake.getTotalKcal(), std::numeric_limits<std::int64_t>::max());
  intake.dishes = {{NutritionDish{.kcal = 300}, NutritionDish{}, NutritionDish{.kcal = 150}}};
  EXPECT_EQ(intake.getTotalKcal(), 450);
  intake.dishes.reset();
  EXPECT_EQ(intake.getTotalKcal(), 0);
}

TEST(Energy, DistributionMatchesTheExactIntakeList) {
  // Exact lists only: another order, a prefix or a repeat falls back to 2.
  const std::vector<std::pair<std::vector<std::int64_t>, std::int64_t>> table{
      {{1, 3, 5}, 3}, {{2, 3, 5}, 10}, {{5, 3, 1}, 2}, {{1, 3}, 2}, {{}, 2}, {{1, 3, 5, 5}, 2},
  };
  for (const auto& [intakes, distribution] : table) {
    NutritionUser user = withIntakes(intakes);
    user.distributionByIntakeID = 99;
    user.updateDistributionForIntakes();
    EXPECT_EQ(user.distributionByIntakeID, distribution) << ::testing::PrintToString(intakes);
  }
  NutritionUser absent;
  absent.selectedIntakes.reset();
  absent.updateDistributionForIntakes();
  EXPECT_EQ(absent.distributionByIntakeID, 2);

  NutritionUser missingIntake = withIntakes({1, 3, 5});
  missingIntake.selectedIntakes->at(0).intake.reset();  // counts as 0
  missingIntake.updateDistributionForIntakes();
  EXPECT_EQ(missingIntake.distributionByIntakeID, 2);
}

TEST(Energy, BariatricPhaseByWholeDaysSinceTheOperation) {
  const FixedOffsetCalendar calendar;
  const Date now = utc(2026, 11, 21, 12);
  const std::vector<std::pair<Date, BariatricoPhase>> table{
      {now, BariatricoPhase::phase0},
      {now + 24h * 3, BariatricoPhase::phase0},  // in the future
      {now - 23h, BariatricoPhase::phase0},
      {now - 24h, BariatricoPhase::phase1},
      {now - 24h * 28, BariatricoPhase::phase1},
      {now - 24h * 29, BariatricoPhase::phase2},
      {now - 24h * 28 - 1s, BariatricoPhase::phase1},  // 28 days and a second
      {now - 24h * 56, BariatricoPhase::phase2},
      {now - 24h * 57, BariatricoPhase::phase3},
      {now - 24h * 84, BariatricoPhase::phase3},
      {now - 24h * 85, BariatricoPhase::phase4},
      {now - 24h * 4000, BariatricoPhase::phase4},
  };
  for (const auto& [operation, phase] : table) {
    SCOPED_TRACE(formatIso8601(operation));
    EXPECT_EQ(NutritionUser::getPhaseForOperationDate(operation, now, calendar), phase);
  }
}

TEST(Energy, UserFromResponseKeepsDefaultsOnlyWhereTheResponseHasNoField) {
  NutritionUserResponse response;
  response.id = "doc";
  response.countryIDS = {{1}};
  response.preferenceIDS = {{2}};
  response.weight = 70;
  const NutritionUser user(response);
  EXPECT_EQ(user.countries, std::vector<std::int64_t>{1});
  EXPECT_EQ(user.preferences, std::vector<std::int64_t>{2});
  EXPECT_EQ(user.weight, 70);
  // The response has no algorithm or regenerate flag: the defaults stay. What it has absent
  // replaces a default.
  EXPECT_EQ(user.algorithm, 2);
  EXPECT_EQ(user.regenerateMenu, true);
  EXPECT_FALSE(user.difficulty.has_value());
  EXPECT_FALSE(user.dietID.has_value());
  EXPECT_FALSE(user.selectedIntakes.has_value());
}

}  // namespace
}  // namespace nutrition
