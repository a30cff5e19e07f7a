#include "session/NutritionAuth.h"

#include <gtest/gtest.h>

#include "facade/Core.h"
#include "model/ModelCodec.h"
#include "support/TestPlatform.h"

namespace nutrition {
namespace {

using namespace std::chrono_literals;
using test::utc;

constexpr const char* kBase = "https://backend.test/";
constexpr const char* kAccount = R"([{"ClientId": 7, "ClientAlias": "acme", "Enabled": true}])";
constexpr const char* kKnownMember =
    R"([{"_id": "d1", "UserId": "m1_acme", "MemberId": "m1", "ClientId": 7, "Weight": 70,
        "Height": 180, "Gender": "Male", "DietId": 1, "PreferenceIds": [2]}])";

// The session with the real clients over a scripted HTTP client, wired by a Core of fakes.
class SessionTest : public ::testing::Test {
 protected:
  SessionTest() { makeCore(); }

  // A new Core, as a new launch of the host app makes.
  void makeCore() {
    core_.reset();
    core_.emplace(platform_.shared());
    sdk().setURL(kBase);
  }

  NutritionAuth& session() { return core_->session(); }
  NutritionSDK& sdk() { return core_->sdk(); }
  test::ScriptedHttpClient& http() { return platform_.http(); }

  std::string lastURL() { return platform_.http().requests().back().url; }

  // Logs in and answers the login and the member download.
  void startAs(const char* member, const char* account, const char* memberAnswer) {
    sdk().start(member, "acme", "secret");
    http().answer(account);
    platform_.queue().runUntilIdle();
    ASSERT_EQ(http().waiting(), 1u);
    http().answer(memberAnswer);
    platform_.queue().runUntilIdle();
  }

  test::TestPlatform platform_;
  std::optional<Core> core_;
};

TEST_F(SessionTest, StartUpMakesExactlyTheLoginAndTheMemberDownload) {
  sdk().start("m1", "acme", "secret");
  ASSERT_EQ(http().requests().size(), 1u);
  const HttpRequest& login = http().requests()[0];
  EXPECT_EQ(login.method, "POST");
  EXPECT_EQ(login.url, std::string(kBase) + "api/auth/login");
  EXPECT_EQ(login.body, R"({"ClientAlias":"acme","Password":"secret"})");
  EXPECT_EQ(login.timeout, 60s);
  EXPECT_EQ(login.headers,
            (std::vector<std::pair<std::string, std::string>>{{"Content-Type", "application/json"},
                                                              {"Accept", "application/json"}}));

  http().answer(kAccount);
  // Nothing is touched until the main queue runs the answer.
  EXPECT_FALSE(session().credentials.has_value());
  platform_.queue().runUntilIdle();
  EXPECT_EQ(session().credentials->clientAlias, "acme");
  ASSERT_EQ(http().requests().size(), 2u);
  EXPECT_EQ(lastURL(), std::string(kBase) + "api/user?Language=es_ES&UserId=m1_acme");

  http().answer(kKnownMember);
  platform_.queue().runUntilIdle();
  EXPECT_FALSE(session().isUnregister);
  ASSERT_TRUE(session().currentUser.has_value());
  EXPECT_EQ(session().currentUser->weight, 70);
  EXPECT_EQ(session().currentUser->preferences, std::vector<std::int64_t>{2});
  EXPECT_EQ(session().currentUser->algorithm, 2);
  EXPECT_EQ(http().requests().size(), 2u);
  EXPECT_EQ(http().waiting(), 0u);
}

TEST_F(SessionTest, UnknownMemberGetsAnEmptyRecordWithItsIds) {
  startAs("m1", kAccount, "[]");
  EXPECT_TRUE(session().isUnregister);
  NutritionUser expected = NutritionUser::empty();
  expected.memberID = "m1";
  expected.clientID = 7;
  expected.userID = "m1_acme";
  EXPECT_EQ(session().currentUser, expected);

  // A failed login leaves no credentials; the user id then ends in "_".
  startAs("m2", "[]", "[]");
  EXPECT_FALSE(session().credentials.has_value());
  EXPECT_TRUE(lastURL().ends_with("&UserId=m2_"));
  EXPECT_EQ(session().currentUser->userID, "m2_");
}

TEST_F(SessionTest, LoginWithoutAnswerChangesNothing) {
  sdk().start("m1", "acme", "secret");
  http().failTransport();
  platform_.queue().runUntilIdle();
  EXPECT_EQ(http().requests().size(), 1u);
  EXPECT_FALSE(session().credentials.has_value());
  EXPECT_FALSE(session().currentUser.has_value());
  EXPECT_TRUE(session().isUnregister);
}

TEST_F(SessionTest, StartSessionThenSetMemberIdEqualsStart) {
  sdk().startSession("acme", "secret");
  http().answer(kAccount);
  platform_.queue().runUntilIdle();
  EXPECT_EQ(http().requests().size(), 1u);  // no member yet
  EXPECT_FALSE(sdk().getProfile().has_value());

  sdk().setMemberId("m1");
  http().answer(kKnownMember);
  platform_.queue().runUntilIdle();
  const auto viaSetMember = session().currentUser;

  startAs("m1", kAccount, kKnownMember);
  EXPECT_EQ(session().currentUser, viaSetMember);
  EXPECT_EQ(sdk().app_id, "acme");
}

TEST_F(SessionTest, ProfileUpdateSendsTheStartingPlanAndHoldsTheMenu) {
  startAs("m1", kAccount, "[]");
  platform_.stores().suite("NutritionPreferences")->set("ayuno_timer", 1.0);
  sdk().setCountry(NutritionUserCountry::usa);

  // Without generateMenu the change stays local.
  session().updateNutritionUser(NutritionGender::male, 180, 90, utc(1981, 6, 1), false, true);
  EXPECT_EQ(http().waiting(), 0u);
  EXPECT_EQ(session().currentUser->height, 180);

  session().updateNutritionUser(NutritionGender::male, 180, 90, utc(1981, 6, 1), true, true);
  ASSERT_EQ(http().waiting(), 1u);
  const HttpRequest& sent = http().requests().back();
  EXPECT_EQ(sent.method, "POST");  // the backend does not know the member yet
  EXPECT_EQ(sent.url, std::string(kBase) + "api/user?Language=es_ES");
  const auto body = decodeJson<NutritionUser>(*sent.body);
  ASSERT_TRUE(body.ok()) << *sent.body;
  EXPECT_EQ(body->dailyKcal, 1800.0);
  EXPECT_EQ(body->distributionByIntakeID, 5);
  EXPECT_EQ(body->selectedIntakes->size(), 5u);
  EXPECT_EQ(body->selectedIntakes->at(2), (SelectedIntake{3, std::vector<std::int64_t>{1, 2, 3}}));
  EXPECT_EQ(body->countries, std::vector<std::int64_t>{9});
  EXPECT_EQ(body->targetWeight, 77);
  EXPECT_EQ(body->dietID, 1);
  EXPECT_EQ(body->intermittentFastingID, 0);

  http().answer("{}");  // the body of the answer is not read
  platform_.queue().runUntilIdle();
  // The member is read again (the data holder, made now, asks for its own lists too).
  EXPECT_TRUE(lastURL().ends_with("api/user?Language=es_ES&UserId=m1_acme"));
  ASSERT_TRUE(http().answerTo("api/user?", kKnownMember));
  platform_.queue().runUntilIdle();
  EXPECT_FALSE(session().isUnregister);
  EXPECT_EQ(session().currentUser->weight, 70);
  EXPECT_EQ(platform_.stores().standard()->getDouble("hold_menu_timer"),
            platform_.nowSeconds() + 5.0);
  EXPECT_FALSE(platform_.stores().suite("NutritionPreferences")->value("ayuno_timer"));

  // A known member is updated with PATCH.
  session().updateNutritionUser(NutritionGender::male, 180, 88, utc(1981, 6, 1), true, true);
  EXPECT_EQ(http().requests().back().method, "PATCH");
}

TEST_F(SessionTest, OperationDateAppliesTheBariatricPhaseOnce) {
  startAs("m1", kAccount, kKnownMember);
  const Date thirtyDaysAgo =
      std::chrono::floor<std::chrono::seconds>(platform_.clock().now()) - 24h * 30;

  session().currentUser->dietID = 12;
  session().updateNutritionUser(NutritionGender::female, 165, 60, std::nullopt, 2, thirtyDaysAgo,
                                true, true);
  EXPECT_EQ(http().waiting(), 0u);  // already on phase 2
  EXPECT_EQ(session().currentUser->physicalIntensityID, 2);

  session().currentUser->dietID = 1;
  session().updateNutritionUser(NutritionGender::female, 165, 60, std::nullopt, 2, thirtyDaysAgo,
                                false, true);
  ASSERT_EQ(http().waiting(), 1u);  // sent whatever generateMenu says
  const auto body = decodeJson<NutritionUser>(*http().requests().back().body);
  ASSERT_TRUE(body.ok());
  EXPECT_EQ(body->dietID, 12);
  EXPECT_EQ(body->dailyKcal, 1400.0);
  EXPECT_EQ(body->distributionByIntakeID, 5);
  EXPECT_EQ(body->desiredBalanceID, 2);
  EXPECT_EQ(body->selectedIntakes->at(2), (SelectedIntake{3, std::vector<std::int64_t>{1, 2}}));
  EXPECT_EQ(body->targetWeight, 59);  // 45.5 + 15 * 0.92 = 59.3
}

TEST_F(SessionTest, LogoutForgetsTheMemberAndTheToken) {
  platform_.stores().standard()->set("training_auth_token", std::string("tok"));
  makeCore();
  EXPECT_EQ(session().token, "tok");

  startAs("m1", kAccount, kKnownMember);
  sdk().logout();
  EXPECT_FALSE(sdk().getProfile().has_value());
  EXPECT_TRUE(session().isUnregister);
  EXPECT_EQ(session().memberID, "");
  EXPECT_EQ(session().appID, "");
  EXPECT_FALSE(platform_.stores().standard()->value("training_auth_token").has_value());
  EXPECT_EQ(session().token, "tok");  // the in-memory copy stays
  EXPECT_TRUE(session().credentials.has_value());
}

}  // namespace
}  // namespace nutrition
