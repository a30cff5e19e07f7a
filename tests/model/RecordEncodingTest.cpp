#include <gtest/gtest.h>

#include <cmath>

#include "model/ModelCodec.h"
#include "model/NutritionCatalogues.h"
#include "model/NutritionFavoriteDish.h"
#include "model/NutritionMenu.h"
#include "model/NutritionPreference.h"
#include "model/NutritionUser.h"
#include "model/PublicProfile.h"
#include "support/TestPlatform.h"

namespace nutrition {
namespace {

template <class T>
std::string encoded(const T& value) {
  auto text = encodeJson(value);
  EXPECT_TRUE(text.ok());
  return text.ok() ? *text : std::string{};
}

// The keys of a flat JSON object in the order written.
std::vector<std::string> keysOf(const std::string& json) {
  std::vector<std::string> keys;
  int depth = 0;
  for (std::size_t i = 0; i < json.size(); ++i) {
    const char c = json[i];
    if (c == '{' || c == '[') ++depth;
    if (c == '}' || c == ']') --depth;
    if (c == '"') {
      const std::size_t end = json.find('"', i + 1);
      if (depth == 1 && json[end + 1] == ':') keys.push_back(json.substr(i + 1, end - i - 1));
      i = end;
    }
  }
  return keys;
}

NutritionUser fullUser() {
  NutritionUser user;
  user.userID = "m1_acme";
  user.memberID = "m1";
  user.clientID = 7;
  user.userName = "Ana";
  user.userSurnames = "Pérez";
  user.password = "secret";
  user.dateOfBirth = test::utc(1985, 4, 12);
  user.gender = NutritionGender::female;
  user.physicalIntensityID = 2;
  user.dailyKcal = 1834.5;
  user.targetWeight = 60;
  user.weight = 70;
  user.height = 165;
  user.desiredBalanceID = 1;
  user.countries = {{1}};
  user.preferences = {{2}};
  user.distributionByIntakeID = 3;
  user.selectedIntakes = {{SelectedIntake{1, std::vector<std::int64_t>{1}}}};
  user.excludedAliments = {{4, 5}};
  user.intermittentFastingID = 0;
  return user;
}

TEST(RecordEncoding, WritesOnlyPresentFieldsInKeyTableOrder) {
  NutritionUser sparse = NutritionUser::empty();
  sparse.userID = "x";
  sparse.weight = 80;
  EXPECT_EQ(encoded(sparse), R"({"UserId":"x","Weight":80})");

  EXPECT_EQ(keysOf(encoded(fullUser())), (std::vector<std::string>{"UserId",
                                                                   "MemberId",
                                                                   "ClientId",
                                                                   "UserName",
                                                                   "UserSurnames",
                                                                   "Password",
                                                                   "DateOfBirth",
                                                                   "Gender",
                                                                   "PhysicalIntensityId",
                                                                   "DailyKcal",
                                                                   "TargetWeight",
                                                                   "Weight",
                                                                   "Height",
                                                                   "DesiredBalanceId",
                                                                   "TrainingId",
                                                                   "Countries",
                                                                   "Preferences",
                                                                   "DietId",
                                                                   "DistributionByIntakeId",
                                                                   "SelectedIntakes",
                                                                   "ExcludedAlimentIds",
                                                                   "Algorithm",
                                                                   "RegenerateMenu",
                                                                   "IntermittentFastingId",
                                                                   "Difficulty"}));

  NutritionMenu menu;
  menu.kcalMedia = 1800.5;
  menu.id = "abc";
  EXPECT_EQ(encoded(menu), R"({"_id":"abc","KcalMedia":1800.5})");
}

TEST(RecordEncoding, WritesValuesInTheBackendsForms) {
  NutritionUser user = NutritionUser::empty();
  user.dateOfBirth = test::utc(1990, 2, 3);
  user.gender = NutritionGender::male;
  user.dailyKcal = 1800.0;
  user.regenerateMenu = false;
  user.selectedIntakes = {{SelectedIntake{5, std::vector<std::int64_t>{1, 2}}}};
  EXPECT_EQ(encoded(user),
            R"({"DateOfBirth":"1990-02-03T00:00:00Z","Gender":"Male","DailyKcal":1800,)"
            R"("SelectedIntakes":[{"Intake":5,"Dishes":[1,2]}],"RegenerateMenu":false})");

  PublicProfile profile{
      "Ana", std::nullopt, 165, std::nullopt, NutritionGender::female, test::utc(1985, 4, 12)};
  EXPECT_EQ(encoded(profile),
            R"({"name":"Ana","height":165,"gender":"Female","birthDate":"1985-04-12T00:00:00Z"})");
}

TEST(RecordEncoding, NestedRecordsKeepTheirOwnOrder) {
  NutritionDish dish;
  dish.binaryUrls = {{"https://x/a.png"}};
  dish.kcal = 300;
  dish.dishID = 10;
  NutritionFavoriteDishPost post{"m1_acme", dish};
  EXPECT_EQ(
      encoded(post),
      R"({"Dish":{"DishId":10,"Kcal":300,"BinaryUrl":["https://x/a.png"]},"UserId":"m1_acme"})");

  NutritionExcluded excluded{4, "Gluten", PreferenceType::allergen, std::nullopt};
  EXPECT_EQ(encoded(excluded), R"({"ExcludedAlimentId":4,"ExcludedAlimentName":"Gluten"})");

  EXPECT_EQ(encoded(IntermittentFasting{0, "No", true}),
            R"({"IntermittentFastingId":0,"IntermittentFastingName":"No","Enabled":true})");
}

TEST(RecordEncoding, EncodedRecordsDecodeToEqualRecords) {
  const NutritionUser user = fullUser();
  const auto back = decodeJson<NutritionUser>(encoded(user));
  ASSERT_TRUE(back.ok()) << back.error().message;
  EXPECT_EQ(*back, user);

  NutritionMenu menu;
  menu.id = "m";
  menu.processed = false;
  menu.days = {
      {NutritionDay{3,
                    std::vector<NutritionIntake>{NutritionIntake{
                        1, "Desayuno \"ligero\"", 3,
                        std::vector<NutritionDish>{NutritionDish{.dishID = 1, .kcal = 2}}}},
                    1790}}};
  const auto menuBack = decodeJson<NutritionMenu>(encoded(menu));
  ASSERT_TRUE(menuBack.ok()) << menuBack.error().message;
  EXPECT_EQ(*menuBack, menu);
}

TEST(RecordEncoding, NonFiniteEnergyCannotBeSent) {
  NutritionUser user = NutritionUser::empty();
  user.dailyKcal = std::nan("");
  const auto text = encodeJson(user);
  ASSERT_FALSE(text.ok());
  EXPECT_EQ(text.error().code, ErrorCode::encoding);
}

}  // namespace
}  // namespace nutrition
