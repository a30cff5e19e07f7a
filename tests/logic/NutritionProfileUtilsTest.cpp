#include "logic/NutritionProfileUtils.h"

#include <gtest/gtest.h>

#include "facade/Core.h"
#include "screens/profile/QuestionnaireRules.h"
#include "support/TestPlatform.h"

namespace nutrition {
namespace {

using test::utc;
using List = std::vector<std::int64_t>;

// The profile mapping edits the session's member and reads distributions from the data holder:
// a Core of fakes wires the three.
class ProfileFieldsTest : public ::testing::Test {
 protected:
  ProfileFieldsTest() {
    core_.config().mainURL = "https://backend.test/";
    core_.session().currentUser = NutritionUser::empty();
  }
  NutritionUser& user() { return *core_.session().currentUser; }
  NutritionProfileUtils& profile() { return core_.profileUtils(); }
  void set(std::string_view field, const AnyValue& value) {
    profile().updateUserField(field, value);
  }
  test::TestPlatform platform_;
  Core core_{platform_.shared()};
};

TEST_F(ProfileFieldsTest, EachFieldTakesItsValueType) {
  set("gender", 0);
  EXPECT_EQ(user().gender, NutritionGender::male);
  set("gender", 1);
  EXPECT_EQ(user().gender, NutritionGender::female);
  set("gender", "1");  // not an integer: male
  EXPECT_EQ(user().gender, NutritionGender::male);

  set("height", "172");
  EXPECT_EQ(user().height, 172);
  for (const char* bad : {"172.5", " 172", "", "abc", "99999999999999999999", "+-5", "-", "+"}) {
    set("height", "170");
    set("height", bad);
    EXPECT_FALSE(user().height.has_value()) << bad;
  }
  set("height", 172);  // a number, not a text
  EXPECT_FALSE(user().height.has_value());

  set("dateOfBirth", utc(1990, 2, 3));
  EXPECT_EQ(user().dateOfBirth, utc(1990, 2, 3));
  set("countries", 9);
  EXPECT_EQ(user().countries, List{9});
  set("desiredBalanceID", 2);
  set("difficulty", 3);
  set("physicalIntensityID", 4);
  set("algorithm", 1);
  set("intermittentFastingID", 0);
  EXPECT_EQ(user().desiredBalanceID, 2);
  EXPECT_EQ(user().difficulty, 3);
  EXPECT_EQ(user().physicalIntensityID, 4);
  EXPECT_EQ(user().algorithm, 1);
  EXPECT_EQ(user().intermittentFastingID, 0);
  set("difficulty", "3");  // wrong type leaves the field absent
  EXPECT_FALSE(user().difficulty.has_value());

  set("preferences", List{2});
  set("intollerance", List{7});
  EXPECT_EQ(user().preferences, (List{2, 7}));
  set("intollerance", AnyValue::List{4, std::nullopt});  // not a list of integers: no change
  EXPECT_EQ(user().preferences, (List{2, 7}));
  set("excludedAliment", AnyValue::List{3, std::nullopt});
  EXPECT_FALSE(user().excludedAliments.has_value());

  // Unknown names change nothing, "weight" included.
  const NutritionUser before = user();
  set("weight", "80");
  set("", 1);
  EXPECT_EQ(user(), before);
}

TEST_F(ProfileFieldsTest, IntakesAndCoursesBuildUpInAnswerOrder) {
  set("selectedIntakes", List{1, 3, 5});
  EXPECT_EQ(user().selectedIntakes, (std::vector<SelectedIntake>{{1, List{1}}}));
  set("lunchDishes", List{2, 4});
  set("lunchDishes", List{1});
  EXPECT_EQ(user().selectedIntakes->size(), 3u);
  EXPECT_EQ(user().selectedIntakes->at(1), (SelectedIntake{3, List{2, 4}}));
  set("selectedIntakes", List{});
  EXPECT_EQ(user().selectedIntakes, std::vector<SelectedIntake>{});

  // The distribution's intakes join once its catalogue arrives.
  set("distributionByIntakeID", 4);
  EXPECT_EQ(user().distributionByIntakeID, 4);
  set("dinnerDishes", List{1, 2});
  ASSERT_TRUE(platform_.http().answerTo("distribution-by-intake", R"([
      {"DistributionByIntakeId": 4, "IPDistribution": [{"IntakeId": 1}, {"IntakeId": 3},
                                                       {"IntakeId": 4}, {"IntakeId": 5}]}])"));
  platform_.queue().runUntilIdle();
  EXPECT_EQ(user().selectedIntakes,
            (std::vector<SelectedIntake>{{5, List{1, 2}}, {1, List{1}}, {4, List{1}}}));

  // Read back in the form each field is written in.
  EXPECT_EQ(profile().getValueForField("dinnerDishes"), AnyValue(List{1, 2}));
  EXPECT_EQ(profile().getValueForField("distributionByIntakeID"), AnyValue(4));
  user().height = 181;
  EXPECT_EQ(profile().getValueForField("height"), AnyValue("181"));
  user().gender = NutritionGender::female;
  EXPECT_EQ(profile().getValueForField("gender"), AnyValue(1));
  EXPECT_FALSE(profile().getValueForField("weight").hasValue());
}

TEST_F(ProfileFieldsTest, QuestionnaireRules) {
  EXPECT_FALSE(multipleSelectionValue({}).hasValue());
  EXPECT_EQ(multipleSelectionValue({10, 12}).integerList(), (List{10, 12}));

  savePanel({{"preferences", AnyValue(List{1})},
             {"intollerance", AnyValue(List{2})},
             {std::nullopt, AnyValue(5)},
             {"height", AnyValue()}},
            profile());
  EXPECT_EQ(user().preferences, (List{1, 2}));
  EXPECT_FALSE(user().height.has_value());
  const auto& strings = core_.strings();
  EXPECT_EQ(pageRefusal(1, &user(), strings),
            "No es posible seleccionar vegano y vegetariano simultanemente");
  EXPECT_FALSE(pageRefusal(0, &user(), strings).has_value());
  EXPECT_FALSE(pageRefusal(2, &user(), strings).has_value());
  EXPECT_FALSE(pageRefusal(1, nullptr, strings).has_value());
  savePanel({{"preferences", AnyValue(List{2})}}, profile());
  EXPECT_FALSE(pageRefusal(1, &user(), strings).has_value());

  HealthQuestion fasting{.identifier = "intermittentFastingID"};
  EXPECT_TRUE(isQuestionShown(fasting, core_.config()));
  core_.config().intermittentFastingEnable = false;
  EXPECT_FALSE(isQuestionShown(fasting, core_.config()));
  EXPECT_TRUE(isQuestionShown(HealthQuestion{.identifier = "gender"}, core_.config()));
}

}  // namespace
}  // namespace nutrition
