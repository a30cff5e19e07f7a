#include <gtest/gtest.h>

#include "model/ModelCodec.h"
#include "model/NutritionCatalogues.h"
#include "model/NutritionCredentials.h"
#include "model/NutritionDistribution.h"
#include "model/NutritionFavoriteDish.h"
#include "model/NutritionMenu.h"
#include "model/NutritionPreference.h"
#include "model/NutritionUser.h"
#include "model/WaitScreen.h"
#include "support/TestPlatform.h"

namespace nutrition {
namespace {

template <class T>
void expectArrayFails(std::string_view json) {
  SCOPED_TRACE(json);
  const auto decoded = decodeJsonArray<T>(json);
  ASSERT_FALSE(decoded.ok());
  EXPECT_EQ(decoded.error().code, ErrorCode::decoding);
}

TEST(RecordDecoding, UserResponseReadsEveryKeyAndLeavesMissingOnesAbsent) {
  const auto users = decodeJsonArray<NutritionUserResponse>(R"([{
      "_id": "64f", "UserId": "m1_acme", "MemberId": "m1", "ClientId": 7,
      "IntermittentFastingId": 3, "DateOfBirth": "1985-04-12T00:00:00Z", "Difficulty": 2,
      "Gender": "Female", "PhysicalIntensityId": 2, "TargetWeight": 60, "Weight": 70,
      "DailyKcal": 1834.5, "Height": 165, "DesiredBalanceId": 1, "TrainingId": 1, "DietId": 8,
      "DistributionByIntakeId": 5, "ClientAlias": "acme",
      "SelectedIntakes": [{"Intake": 3, "Dishes": [1, 2]}, {"Intake": null}],
      "ExcludedAlimentIds": [4], "PreferenceIds": [], "CountryIds": [1],
      "Password": "never read", "SomethingNew": {"nested": [1, 2, {"x": null}]}
    }, {"_id": "only"}])");
  ASSERT_TRUE(users.ok()) << users.error().message;
  ASSERT_EQ(users->size(), 2u);

  const NutritionUserResponse& full = users->at(0);
  EXPECT_EQ(full.userID, "m1_acme");
  EXPECT_EQ(full.clientID, 7);
  EXPECT_EQ(full.dateOfBirth, test::utc(1985, 4, 12));
  EXPECT_EQ(full.gender, NutritionGender::female);
  EXPECT_EQ(full.dailyKcal, 1834.5);
  EXPECT_EQ(full.dietID, 8);
  ASSERT_TRUE(full.selectedIntakes.has_value());
  EXPECT_EQ(full.selectedIntakes->at(0), (SelectedIntake{3, std::vector<std::int64_t>{1, 2}}));
  EXPECT_EQ(full.selectedIntakes->at(1), SelectedIntake{});
  EXPECT_EQ(full.preferenceIDS, std::vector<std::int64_t>{});
  EXPECT_EQ(full.countryIDS, std::vector<std::int64_t>{1});

  NutritionUserResponse onlyId;
  onlyId.id = "only";
  EXPECT_EQ(users->at(1), onlyId);
}

TEST(RecordDecoding, NullLeavesAbsentAndDefaultsNeverStandInForMissingKeys) {
  // A decoded NutritionUser has no starting defaults: what the JSON lacks is absent.
  const auto user = decodeJson<NutritionUser>(R"({"UserId": null, "Weight": 80})");
  ASSERT_TRUE(user.ok()) << user.error().message;
  NutritionUser expected = NutritionUser::empty();
  expected.weight = 80;
  EXPECT_EQ(*user, expected);
  EXPECT_FALSE(user->algorithm.has_value());
  EXPECT_FALSE(user->regenerateMenu.has_value());
}

TEST(RecordDecoding, WrongTypesFailTheWholeBody) {
  expectArrayFails<NutritionUserResponse>(R"([{"_id": "a"}, {"Gender": "male"}])");
  expectArrayFails<NutritionUserResponse>(R"([{"DateOfBirth": "1990-02-03"}])");
  expectArrayFails<NutritionUserResponse>(R"([{"Weight": "80"}])");
  expectArrayFails<NutritionUserResponse>(R"([{"Weight": 80.5}])");
  expectArrayFails<NutritionUserResponse>(R"([{"CountryIds": [1, null]}])");
  expectArrayFails<NutritionUserResponse>(R"([{"SelectedIntakes": [{"Dishes": ["1"]}]}])");
  // Deep inside a menu: one fractional Kcal or one BinaryUrl string fails every menu.
  expectArrayFails<NutritionMenu>(
      R"([{"Days": [{"DayNum": 1, "Intakes": [{"Dishes": [{"Kcal": 300}, {"Kcal": 120.5}]}]}]}])");
  expectArrayFails<NutritionMenu>(
      R"([{"Days": [{"Intakes": [{"Dishes": [{"BinaryUrl": "https://x/a.png"}]}]}]}])");
  expectArrayFails<NutritionPreference>(R"([{"PreferenceType": "Intolerance"}])");
  expectArrayFails<NutritionCredentialsIA>(R"([{"Enabled": "yes"}])");
  expectArrayFails<NutritionCredentialsIA>(R"({"ClientId": 1})");  // an object, not an array
}

TEST(RecordDecoding, KeysAreMatchedAfterUnescaping) {
  const auto user = decodeJson<NutritionUserResponse>(R"({"\u0055serId": "m\u00e9\"1"})");
  ASSERT_TRUE(user.ok()) << user.error().message;
  EXPECT_EQ(user->userID, "m\xC3\xA9\"1");
}

TEST(RecordDecoding, MenuKeepsOrderTextAndEmptyLists) {
  const auto menus = decodeJsonArray<NutritionMenu>(R"([
      {"_id": "m", "Processed": true, "KcalMedia": 1800, "ChangedAt": "2023-05-01T10:00:00.123Z",
       "Days": [{"DayNum": 2, "KcalDay": 1790, "Intakes": [
         {"IntakeId": 1, "IntakeName": "Desayuno", "DayNum": 2, "Dishes": [
           {"DishId": 10, "DishName": "Avena", "BinaryUrl": ["https://x/avena.png"],
            "Kcal": 300, "Preferences": [1, 2]}]}]}]},
      {"Days": []},
      {}])");
  ASSERT_TRUE(menus.ok()) << menus.error().message;
  ASSERT_EQ(menus->size(), 3u);
  const NutritionMenu& menu = menus->at(0);
  EXPECT_EQ(menu.changedAt, "2023-05-01T10:00:00.123Z");
  EXPECT_EQ(menu.kcalMedia, 1800.0);
  EXPECT_EQ(menu.processed, true);
  const NutritionDish& dish = menu.days->at(0).intakes->at(0).dishes->at(0);
  EXPECT_EQ(dish.name, "Avena");
  EXPECT_EQ(dish.binaryUrls, std::vector<std::string>{"https://x/avena.png"});
  EXPECT_EQ(menus->at(1).days, std::vector<NutritionDay>{});
  EXPECT_FALSE(menus->at(2).days.has_value());
}

TEST(RecordDecoding, CataloguesFollowTheirOwnRules) {
  const auto excluded = decodeJsonArray<NutritionExcluded>(
      R"([{"ExcludedAlimentId": 4, "ExcludedAlimentName": "Gluten", "PreferenceType": "Allergen",
           "AlimentIds": [1]}])");
  ASSERT_TRUE(excluded.ok()) << excluded.error().message;
  EXPECT_FALSE(excluded->at(0).preferenceType.has_value());
  EXPECT_EQ(excluded->at(0).excludedAlimentName, "Gluten");

  const auto preferences = decodeJsonArray<NutritionPreference>(
      R"([{"PreferenceId": 1, "PreferenceType": "Intollerance"},
          {"PreferenceId": 2, "PreferenceType": "Principles"}])");
  ASSERT_TRUE(preferences.ok()) << preferences.error().message;
  EXPECT_EQ(preferences->at(0).preferenceType, PreferenceType::intollerance);
  EXPECT_EQ(preferences->at(1).preferenceType, PreferenceType::principles);

  const auto intensity = decodeJsonArray<PhysicalIntensity>(R"([{"_id": "x"}])");
  ASSERT_TRUE(intensity.ok());
  EXPECT_FALSE(intensity->at(0).physicalIntensityID.has_value());

  const auto distributions =
      decodeJsonArray<NutritionDistribution>(R"([{"DistributionByIntakeId": 2}])");
  ASSERT_TRUE(distributions.ok());
  EXPECT_FALSE(distributions->at(0).ipDistribution.has_value());
}

TEST(RecordDecoding, RequiredFieldsMustBePresentAndNotNull) {
  const auto fastings = decodeJsonArray<IntermittentFasting>(
      R"([{"IntermittentFastingId": 3, "IntermittentFastingName": "16/8", "Enabled": false}])");
  ASSERT_TRUE(fastings.ok()) << fastings.error().message;
  EXPECT_FALSE(fastings->at(0).enabled);

  expectArrayFails<IntermittentFasting>(R"([{"Enabled": true}, {"IntermittentFastingId": 2}])");
  expectArrayFails<IntermittentFasting>(R"([{"Enabled": null}])");
  expectArrayFails<WaitScreen>(R"([{"image": "wait1"}])");
  expectArrayFails<WaitScreen>(R"([{"image": "wait1", "text": null}])");

  const auto screens = decodeJsonArray<WaitScreen>(R"([{"text": "Hola", "image": "wait1"}])");
  ASSERT_TRUE(screens.ok());
  EXPECT_EQ(screens->at(0), (WaitScreen{"wait1", "Hola"}));
}

TEST(RecordDecoding, FavouritesAndLoginAnswers) {
  const auto empty = decodeJson<NutritionFavoriteDishesGet>(R"({"Dishes": [], "UserId": "u"})");
  ASSERT_TRUE(empty.ok());
  EXPECT_EQ(empty->dishes, std::vector<NutritionDish>{});
  const auto missing = decodeJson<NutritionFavoriteDishesGet>(R"({"UserId": "u"})");
  ASSERT_TRUE(missing.ok());
  EXPECT_FALSE(missing->dishes.has_value());

  const auto none = decodeJsonArray<NutritionCredentialsIA>("[]");
  ASSERT_TRUE(none.ok());
  EXPECT_TRUE(none->empty());
  const auto credentials = decodeJsonArray<NutritionCredentialsIA>(
      R"([{"ClientId": 9007199254740993, "ClientAlias": "acme", "Enabled": true}])");
  ASSERT_TRUE(credentials.ok());
  EXPECT_EQ(credentials->at(0).clientID, 9007199254740993);  // beyond double precision
  EXPECT_EQ(credentials->at(0).clientAlias, "acme");

  const auto token = decodeJson<NutritionLoginAuth>(R"({"token": "abc"})");
  ASSERT_TRUE(token.ok());
  EXPECT_EQ(token->token, "abc");
}

}  // namespace
}  // namespace nutrition
