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

TEST(RecordEncoding, DecodedTextEncodesToTextThatDecodesTheSame) {
  // Escapes, raw UTF-8, control characters, exact doubles and dates with offsets survive
  // decode, encode and decode again.
  const auto first = decodeJsonArray<NutritionMenu>(R"([{"_id":"m\"1\\","KcalMedia":0.1,
      "Days":[{"DayNum":1,"Intakes":[{"IntakeName":"Desayuno \u00e9 \ud83d\ude00 \u0001",
      "Dishes":[{"DishId":9007199254740993,"Recipe":"Paso 1:\n\tcorta.","BinaryUrl":[],
      "Kcal":-0,"Unknown":[{"x":null}]}]}],"KcalDay":1790}]}])");
  ASSERT_TRUE(first.ok()) << first.error().message;
  const auto second = decodeJsonArray<NutritionMenu>(encoded(*first));
  ASSERT_TRUE(second.ok()) << second.error().message;
  EXPECT_EQ(*second, *first);
  EXPECT_EQ(second->at(0).days->at(0).intakes->at(0).name,
            "Desayuno \xC3\xA9 \xF0\x9F\x98\x80 \x01");

  const auto user = decodeJson<NutritionUser>(
      R"({"DateOfBirth":"1985-04-12T02:30:00+02:30","DailyKcal":1834.123456789012})");
  ASSERT_TRUE(user.ok()) << user.error().message;
  const std::string text = encoded(*user);
  EXPECT_EQ(text, R"({"DateOfBirth":"1985-04-12T00:00:00Z","DailyKcal":1834.123456789012})");
  EXPECT_EQ(decodeJson<NutritionUser>(text).value(), *user);
}

TEST(RecordEncoding, ValuesWithoutAJsonFormCannotBeSent) {
  NutritionUser user = NutritionUser::empty();
  user.dailyKcal = std::nan("");
  const auto text = encodeJson(user);
  ASSERT_FALSE(text.ok());
  EXPECT_EQ(text.error().code, ErrorCode::encoding);

  // Every date that is written must read back: years outside 0001-9999 are refused.
  for (const Date date :
       {Date{} - std::chrono::days{800000}, Date{} + std::chrono::days{3000000}}) {
    NutritionUser dated = NutritionUser::empty();
    dated.dateOfBirth = date;
    const auto refused = encodeJson(dated);
    ASSERT_FALSE(refused.ok());
    EXPECT_EQ(refused.error().code, ErrorCode::encoding);
  }
}

}  // namespace
}  // namespace nutrition
