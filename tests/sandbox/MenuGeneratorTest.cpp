#include "sandbox/MenuGenerator.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <map>
#include <set>

namespace nutrition::sandbox {
namespace {

const SeedData& seed() {
  return SeedData::embedded();
}

const SeedDish& seedDish(const NutritionDish& dish) {
  const SeedDish* found = seed().dish(dish.dishID.value());
  EXPECT_NE(found, nullptr);
  return *found;
}

bool intersects(const std::vector<std::int64_t>& a,
                const std::optional<std::vector<std::int64_t>>& b) {
  return b && std::any_of(a.begin(), a.end(), [&](std::int64_t x) {
           return std::find(b->begin(), b->end(), x) != b->end();
         });
}

// A varied member profile drawn from `n`: intakes, courses, preferences, exclusions, energy.
NutritionUser profile(std::uint64_t n) {
  static const std::vector<std::vector<std::int64_t>> kIntakeSets{
      {3, 5},       {1, 3, 5}, {1, 3, 4, 5}, {1, 2, 3, 4, 5}, {1, 2, 3, 5},
      {2, 3, 4, 5}, {3, 4, 5}, {2, 3, 5},    {1, 2, 4}};
  NutritionUser user;
  user.userID = "member" + std::to_string(n) + "_demo";
  user.dailyKcal = 400.0 + double((n * 37) % 3200);
  const auto& intakes = kIntakeSets[n % kIntakeSets.size()];
  user.selectedIntakes = std::vector<SelectedIntake>{};
  for (const auto intake : intakes) {
    std::vector<std::int64_t> courses{1};
    if (intake == 3 || intake == 5) {
      courses = (n / 3) % 2 ? std::vector<std::int64_t>{1, 2, 3} : std::vector<std::int64_t>{1, 2};
    }
    user.selectedIntakes->push_back({intake, courses});
  }
  user.updateDistributionForIntakes();
  if (intakes == std::vector<std::int64_t>{1, 2, 4}) user.distributionByIntakeID = 6;
  user.preferences = std::vector<std::int64_t>{};
  if (n % 4 == 1) user.preferences->push_back(1);  // vegan
  if (n % 4 == 2) user.preferences->push_back(2);  // vegetarian
  if (n % 5 == 0) user.preferences->push_back(3);  // gluten free
  if (n % 7 == 0) user.preferences->push_back(6);  // nut allergy
  user.excludedAliments = std::vector<std::int64_t>{};
  for (std::int64_t id = 1; id <= 10; ++id) {
    if ((n >> id) % 5 == 0) user.excludedAliments->push_back(id);
  }
  return user;
}

TEST(DishLibrary, IsLargeConsistentAndBilingual) {
  const auto& dishes = seed().dishes;
  EXPECT_GE(dishes.size(), 120u);
  std::set<std::int64_t> ids;
  std::map<std::int64_t, int> perCourse;
  for (const auto& dish : dishes) {
    SCOPED_TRACE(dish.id);
    EXPECT_TRUE(ids.insert(dish.id).second);
    ++perCourse[dish.course];
    const double fromMacros = 4.0 * double(dish.carbs + dish.proteins) + 9.0 * double(dish.fats);
    EXPECT_LE(std::abs(double(dish.kcal) - fromMacros), 0.1 * fromMacros);
    EXPECT_TRUE(dish.name.es && dish.name.en && dish.recipe.es && dish.recipe.en);
    EXPECT_NE(dish.name.es, dish.name.en.value_or("") + "?");
    EXPECT_FALSE(dish.ingredients.es.value_or("").empty());
    EXPECT_FALSE(dish.ingredients.en.value_or("").empty());
    EXPECT_GE(dish.difficulty, 1);
    EXPECT_LE(dish.difficulty, 3);
    for (const auto intake : dish.intakes) {
      EXPECT_TRUE(seed().entry(seed().catalogues.intakes, intake));
    }
  }
  EXPECT_GE(perCourse[1], 20);
  EXPECT_GE(perCourse[2], 20);
  EXPECT_GE(perCourse[3], 10);
}

TEST(MenuGenerator, KeepsItsPromisesOverManyProfiles) {
  const MenuGenerator generator(seed());
  for (std::uint64_t n = 0; n < 300; ++n) {
    const NutritionUser user = profile(n);
    SCOPED_TRACE(*user.userID);
    const NutritionMenu menu = generator.generate(user, 1, "2026-11-21T12:00:00.000Z");
    ASSERT_TRUE(menu.days.has_value());
    ASSERT_EQ(menu.days->size(), 7u);

    const auto planned = generator.plan(user);
    double planned_total = 0;
    for (const auto& course : planned)
      planned_total += course.kcal;
    EXPECT_NEAR(planned_total, *user.dailyKcal, 0.01);

    std::map<std::pair<std::int64_t, std::int64_t>, std::set<std::int64_t>> weekly;
    double weekKcal = 0;
    for (std::size_t d = 0; d < 7; ++d) {
      const NutritionDay& day = menu.days->at(d);
      EXPECT_EQ(day.day, std::int64_t(d + 1));
      ASSERT_EQ(day.intakes->size(), user.selectedIntakes->size());
      std::int64_t dayKcal = 0;
      for (std::size_t i = 0; i < day.intakes->size(); ++i) {
        const NutritionIntake& intake = day.intakes->at(i);
        const SelectedIntake& selected = user.selectedIntakes->at(i);
        EXPECT_EQ(intake.intakeId, selected.intake);
        ASSERT_EQ(intake.dishes->size(), selected.dishes->size());
        double intakePlan = 0;
        for (const auto& course : planned) {
          if (course.intake == selected.intake) intakePlan += course.kcal;
        }
        EXPECT_NEAR(double(intake.getTotalKcal()), intakePlan, double(intake.dishes->size()));
        for (std::size_t c = 0; c < intake.dishes->size(); ++c) {
          const NutritionDish& dish = intake.dishes->at(c);
          const SeedDish& source = seedDish(dish);
          EXPECT_EQ(dish.dishOrderID, selected.dishes->at(c));
          EXPECT_EQ(source.course, selected.dishes->at(c));
          EXPECT_FALSE(intersects(source.conflictsPreferences, user.preferences)) << source.id;
          EXPECT_FALSE(intersects(source.conflictsExcluded, user.excludedAliments)) << source.id;
          weekly[{*intake.intakeId, *dish.dishOrderID}].insert(*dish.dishID);
        }
        dayKcal += intake.getTotalKcal();
      }
      EXPECT_EQ(day.kcalDay, dayKcal);
      weekKcal += double(dayKcal);
    }
    EXPECT_NEAR(*menu.kcalMedia, weekKcal / 7, 0.01);
    EXPECT_EQ(menu.viableKcal, *user.dailyKcal >= kMinViableKcal);

    // Variety: main courses are never the same twice in a week for the unrestricted members.
    if (user.preferences->empty() && user.excludedAliments->empty() && weekly.contains({3, 2})) {
      EXPECT_EQ((weekly[{3, 2}].size()), 7u);
    }
  }
}

TEST(MenuGenerator, IsDeterministicPerMemberAndSerial) {
  const MenuGenerator generator(seed());
  const NutritionUser user = profile(11);
  const auto first = generator.generate(user, 1, "t");
  EXPECT_EQ(generator.generate(user, 1, "t"), first);
  EXPECT_NE(generator.generate(user, 2, "t").days, first.days);
  NutritionUser other = user;
  other.userID = "someone_else";
  EXPECT_NE(generator.generate(other, 1, "t").days, first.days);
}

TEST(MenuGenerator, FallsBackSensiblyForSparseProfiles) {
  const MenuGenerator generator(seed());
  NutritionUser bare = NutritionUser::empty();
  bare.userID = "bare_demo";
  const auto menu = generator.generate(bare, 1, "t");
  // No intakes chosen: the default distribution's five intakes; no energy: the default.
  ASSERT_EQ(menu.days->at(0).intakes->size(), 5u);
  EXPECT_NEAR(*menu.kcalMedia, kDefaultDailyKcal, 10);

  NutritionUser odd = bare;
  odd.dailyKcal = std::nan("");
  odd.selectedIntakes = {{SelectedIntake{3, std::vector<std::int64_t>{2, 2, 9}},
                          SelectedIntake{42, std::vector<std::int64_t>{1}},
                          SelectedIntake{3, std::vector<std::int64_t>{1}}}};
  const auto oddMenu = generator.generate(odd, 1, "t");
  ASSERT_EQ(oddMenu.days->at(0).intakes->size(), 1u);  // unknown intake dropped, lunch merged
  EXPECT_EQ(oddMenu.days->at(0).intakes->at(0).dishes->size(), 2u);
  EXPECT_NEAR(double(oddMenu.days->at(0).kcalDay.value()), kDefaultDailyKcal, 2);
}

}  // namespace
}  // namespace nutrition::sandbox
