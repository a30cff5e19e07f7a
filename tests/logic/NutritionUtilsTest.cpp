#include "logic/NutritionUtils.h"

#include <gtest/gtest.h>

#include <cmath>

#include "support/FakeLinks.h"
#include "support/TestPlatform.h"

namespace nutrition {
namespace {

using namespace std::chrono_literals;
using test::utc;

constexpr const char* kWeek = R"([{"_id": "m", "Processed": %s, "Days": [
    {"DayNum": 1, "KcalDay": 100}, {"DayNum": 3, "KcalDay": 300}, {"KcalDay": 999},
    {"DayNum": 7, "KcalDay": 700, "Intakes": [{"IntakeId": 1, "Dishes": [{"DishId": 4, "DishOrderId": 1}]}]}]}])";

std::string week(bool processed) {
  char text[1024];
  std::snprintf(text, sizeof text, kWeek, processed ? "true" : "false");
  return text;
}

class NutritionUtilsTest : public ::testing::Test {
 protected:
  explicit NutritionUtilsTest(test::TestPlatform::Options options = {.realResources = true})
      : platform_(options) {
    config_.mainURL = "https://backend.test/";
    links_.setMember("m1_acme");
  }

  // Makes the holder and answers the two requests it sends when made.
  NutritionUtils& utils(const char* favourites = "[]") {
    holder_.emplace(platform_.bundle(), service_, links_, config_, strings_);
    http().answerTo("api/favorite-dish?", favourites);
    http().answerTo("api/excluded-aliment",
                    R"([{"ExcludedAlimentId": 4, "ExcludedAlimentName": "Pescado"}])");
    platform_.queue().runUntilIdle();
    return *holder_;
  }
  test::ScriptedHttpClient& http() { return platform_.http(); }

  test::TestPlatform platform_;
  NutritionSDKUtils config_{platform_.bundle(), "es"};
  StringTables strings_{*platform_.bundle().resources, "es"};
  test::FakeLinks links_;
  DataServiceNutrition service_{platform_.bundle(), config_, strings_, links_.links()};
  std::optional<NutritionUtils> holder_;
};

TEST_F(NutritionUtilsTest, CreationFetchesFavouritesAndExcludedAliments) {
  auto& holder =
      utils(R"([{"DishId": 4, "DishName": "Avena"}, {"DishId": 9, "DishName": "Kiwi"}])");
  ASSERT_EQ(holder.favoriteDishes->size(), 2u);
  ASSERT_EQ(holder.favoriteIntakes.size(), 2u);
  EXPECT_EQ(holder.favoriteIntakes[1].name, "Kiwi");
  EXPECT_EQ(holder.favoriteIntakes[1].dishes->at(0).dishID, 9);
  EXPECT_EQ(holder.excludedAliments->at(0).excludedAlimentName, "Pescado");
}

TEST_F(NutritionUtilsTest, TodayIsFoundByWeekdayAndDownloadedUntilProcessed) {
  auto& holder = utils();
  // 2026-11-22 is a Sunday: day 7; the 23rd a Monday: day 1.
  platform_.clock().set(utc(2026, 11, 22, 12));
  EXPECT_EQ(holder.todayDayNumber(), 7);
  EXPECT_EQ(holder.getTodayMenu(), NutritionDay{});  // nothing held
  platform_.clock().set(utc(2026, 11, 23, 12));
  EXPECT_EQ(holder.todayDayNumber(), 1);

  std::vector<std::optional<NutritionDay>> days;
  const auto keep = [&](std::optional<NutritionDay> day) { days.push_back(std::move(day)); };
  const auto sent = http().requests().size();
  holder.getTodayMenu(keep);
  ASSERT_TRUE(http().answerTo("api/menu", week(false)));
  platform_.queue().runUntilIdle();
  holder.getTodayMenu(keep);  // not processed: asked for again
  ASSERT_TRUE(http().answerTo("api/menu", week(true)));
  platform_.queue().runUntilIdle();
  holder.getTodayMenu(keep);  // processed: answered from the held menu
  EXPECT_EQ(http().requests().size(), sent + 2);
  ASSERT_EQ(days.size(), 3u);
  EXPECT_EQ(days[2]->kcalDay, 100);
  EXPECT_EQ(holder.getTodayMenu().kcalDay, 100);

  platform_.clock().set(utc(2026, 11, 25, 12));  // Wednesday: day 3
  EXPECT_EQ(holder.getTodayMenu().kcalDay, 300);
  platform_.clock().set(utc(2026, 11, 24, 12));  // Tuesday: the day without a number
  EXPECT_EQ(holder.getTodayMenu(), NutritionDay{});
  bool called = false;
  holder.getTodayMenu([&](std::optional<NutritionDay> day) {
    called = true;
    EXPECT_FALSE(day.has_value());
  });
  EXPECT_TRUE(called);
}

TEST_F(NutritionUtilsTest, MenuHoldLastsUntilItsTime) {
  auto& holder = utils();
  auto standard = platform_.stores().standard();
  const double now = platform_.nowSeconds();
  EXPECT_TRUE(holder.canViewMenu());
  standard->set("hold_menu_timer", now + 1);
  EXPECT_FALSE(holder.canViewMenu());
  EXPECT_TRUE(standard->value("hold_menu_timer").has_value());
  config_.showWaitingScreens = false;
  EXPECT_TRUE(holder.canViewMenu());
  config_.showWaitingScreens = true;
  platform_.clock().advance(2s);
  EXPECT_TRUE(holder.canViewMenu());
  EXPECT_FALSE(standard->value("hold_menu_timer").has_value());
  standard->set("hold_menu_timer", std::string("soon"));
  EXPECT_TRUE(holder.canViewMenu());

  // A hold further ahead than a profile change sets is corrupt: released, and gone.
  const double later = platform_.nowSeconds();
  for (const double corrupt : {later + 10.0 * 365 * 86400, later + 66, std::nan("")}) {
    SCOPED_TRACE(corrupt);
    standard->set("hold_menu_timer", corrupt);
    EXPECT_TRUE(holder.canViewMenu());
    EXPECT_FALSE(standard->value("hold_menu_timer").has_value());
  }
  // A minute of clock change on top of the five seconds still holds.
  standard->set("hold_menu_timer", later + 64);
  EXPECT_FALSE(holder.canViewMenu());
}

TEST_F(NutritionUtilsTest, AnswersPerQuestionnaireField) {
  auto& holder = utils();
  std::map<std::string, std::optional<std::vector<QuestionaryAnswer>>> answers;
  const auto ask = [&](const std::string& field) {
    holder.getAnswersFor(field, [&, field](auto list) { answers[field] = std::move(list); });
  };
  ask("intermittentFastingID");
  http().answerTo("intermittent-fasting", R"([
      {"IntermittentFastingId": 1, "IntermittentFastingName": "12/12", "Enabled": true},
      {"IntermittentFastingId": 4, "IntermittentFastingName": "20/4", "Enabled": false}])");
  ask("preferences");
  http().answerTo("api/preference", R"([
      {"PreferenceId": 1, "PreferenceName": "Vegano", "PreferenceType": "Principles"},
      {"PreferenceId": 3, "PreferenceName": "Sin gluten", "PreferenceType": "Intollerance"},
      {"PreferenceId": 5, "PreferenceName": "Marisco", "PreferenceType": "Allergen"}])");
  platform_.queue().runUntilIdle();
  const auto sent = http().requests().size();
  ask("intollerance");  // from the cached catalogue
  EXPECT_EQ(http().requests().size(), sent);
  ask("distributionByIntakeID");
  http().answerTo("distribution-by-intake", R"([
      {"DistributionByIntakeId": 5, "DistributionByIntakeName": "Cinco"},
      {"DistributionByIntakeId": 2, "DistributionByIntakeName": "Dos"}])");
  ask("difficulty");
  ask("excludedAliment");  // cached since creation
  ask("weight");
  platform_.queue().runUntilIdle();

  const auto scores = [&](const std::string& field) {
    std::vector<std::int64_t> out;
    for (const auto& a : answers[field].value())
      out.push_back(*a.score);
    return out;
  };
  // "No quiero ayuno" comes first and the disabled scheme is left out.
  EXPECT_EQ(scores("intermittentFastingID"), (std::vector<std::int64_t>{0, 1}));
  EXPECT_EQ(scores("preferences"), (std::vector<std::int64_t>{1, 5}));
  EXPECT_EQ(scores("distributionByIntakeID"), (std::vector<std::int64_t>{2, 5}));
  EXPECT_EQ(scores("difficulty"), (std::vector<std::int64_t>{1, 2, 3}));
  EXPECT_EQ(answers["difficulty"]->at(2).title, "Elaborada");
  EXPECT_EQ(scores("excludedAliment"), std::vector<std::int64_t>{4});
  EXPECT_EQ(scores("intollerance"), std::vector<std::int64_t>{3});
  EXPECT_FALSE(answers["weight"].has_value());
}

TEST_F(NutritionUtilsTest, FavouritesAndAlternativesKeepTheHeldDataCurrent) {
  auto& holder = utils();
  std::optional<std::vector<NutritionDish>> favourites;
  holder.addFavoriteDish(NutritionDish{.dishID = 4, .name = "Avena"},
                         [&](auto list) { favourites = std::move(list); });
  EXPECT_EQ(http().requests().back().body,
            R"({"Dish":{"DishId":4,"DishName":"Avena"},"UserId":"m1_acme"})");
  http().answerTo("favorite-dish/add",
                  R"([{"Dish": {"DishId": 4, "DishName": "Avena"}, "UserId": "m1_acme"}])");
  platform_.queue().runUntilIdle();
  EXPECT_EQ(favourites->size(), 1u);
  EXPECT_EQ(holder.favoriteIntakes.size(), 1u);

  holder.removeFavoriteDish(4, [&](auto list) { favourites = std::move(list); });
  http().answerTo("favorite-dish/delete", R"([{"Dishes": [], "UserId": "m1_acme"}])");
  platform_.queue().runUntilIdle();
  EXPECT_TRUE(favourites->empty());
  EXPECT_TRUE(holder.favoriteIntakes.empty());

  // The REST client reads the selection through its link, which the Core points at the holder.
  links_.day = holder.selectedDay = 7;
  links_.intake = holder.selectedIntake = 1;
  std::optional<NutritionDish> alternative;
  holder.getAlternativeDish(1, [&](auto dish) { alternative = std::move(dish); });
  http().answerTo("dish/replace", week(true));
  platform_.queue().runUntilIdle();
  EXPECT_EQ(alternative->dishID, 4);
  EXPECT_EQ(holder.weeklyMenu->id, "m");
}

TEST_F(NutritionUtilsTest, ShippedResourcesLoad) {
  auto& holder = utils();
  auto& config = config_;
  const auto full = holder.getProfileQuestionary();
  ASSERT_TRUE(full.has_value());
  ASSERT_EQ(full->size(), 3u);
  config.isShort = true;
  const auto shorter = holder.getProfileQuestionary();
  ASSERT_EQ(shorter->size(), 2u);
  EXPECT_EQ(shorter->front(), full->at(1));
  config.isShort = false;
  config.showExcludedAliments = false;
  const auto without = holder.getProfileQuestionary();
  EXPECT_NE(without, full);

  EXPECT_EQ(holder.getWaitScreens().size(), 4u);
  EXPECT_FALSE(holder.getInfoFile("info_ayuno").empty());
  EXPECT_TRUE(holder.getInfoFile("no_such_file").empty());
}

class NutritionUtilsWithoutResources : public NutritionUtilsTest {
 protected:
  NutritionUtilsWithoutResources() : NutritionUtilsTest({}) {}
};

TEST_F(NutritionUtilsWithoutResources, MissingResourcesGiveEmptyResults) {
  auto& holder = utils();
  EXPECT_FALSE(holder.getProfileQuestionary().has_value());
  EXPECT_TRUE(holder.getWaitScreens().empty());
  EXPECT_TRUE(holder.getInfoFile("info_ayuno").empty());
}

}  // namespace
}  // namespace nutrition
