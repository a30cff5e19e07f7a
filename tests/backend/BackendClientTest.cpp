#include <gtest/gtest.h>

#include <thread>

#include "backend/BackendRequest.h"
#include "backend/DataServiceNutrition.h"
#include "backend/NutritionAuthDataservice.h"
#include "base/Url.h"
#include "support/FakeLinks.h"
#include "support/TestPlatform.h"

namespace nutrition {
namespace {

TEST(BackendRequest, EncodesQueryValuesAndChecksTheAddress) {
  EXPECT_EQ(percentEncode("m1_acme-2.x~"), "m1_acme-2.x~");
  EXPECT_EQ(percentEncode("a&UserId=b"), "a%26UserId%3Db");
  EXPECT_EQ(percentEncode("a#b c+d/é"), "a%23b%20c%2Bd%2F%C3%A9");

  const BackendRequest request{"GET", "api/user", {{"Language", "es_ES"}, {"UserId", "a&b"}}, {}};
  const auto http = makeHttpRequest(request, "https://backend.test/v1/");
  ASSERT_TRUE(http.has_value());
  EXPECT_EQ(http->url, "https://backend.test/v1/api/user?Language=es_ES&UserId=a%26b");
  EXPECT_FALSE(http->body.has_value());

  for (const char* bad : {"", "backend.test/", "ftp://backend.test/", "https:///", "http://a b/",
                          "https://bäckend/", "https://\n/"}) {
    SCOPED_TRACE(bad);
    EXPECT_FALSE(makeHttpRequest(request, bad).has_value());
  }
  EXPECT_TRUE(isWellFormedURL("HTTP://127.0.0.1:8080/"));
}

class BackendClientTest : public ::testing::Test {
 protected:
  BackendClientTest() { config_.mainURL = "https://backend.test/"; }

  test::ScriptedHttpClient& http() { return platform_.http(); }

  test::TestPlatform platform_;
  NutritionSDKUtils config_{platform_.bundle(), "es"};
  StringTables strings_{*platform_.bundle().resources, "es"};
  test::FakeLinks links_;
  DataServiceNutrition service_{platform_.bundle(), config_, strings_, links_.links()};
  NutritionAuthDataservice auth_{platform_.bundle(), config_};
};

TEST_F(BackendClientTest, RequestsCarryTheirMethodPathQueryAndBody) {
  auto& service = service_;
  const auto ignore = [](auto, auto) {};
  service.getWeeklyIAMenu(ignore);  // no member yet: an empty user id
  EXPECT_EQ(http().requests().back().url, "https://backend.test/api/menu?Language=es_ES&UserId=");

  links_.setMember("m1_acme");
  config_.sdkLanguage = NutritionLanguage::en;
  service.getMyFavoriteDishes(ignore);
  EXPECT_EQ(http().requests().back().url,
            "https://backend.test/api/favorite-dish?UserId=m1_acme&Language=en_EN");
  service.removeFavoriteDish(12, ignore);
  EXPECT_EQ(http().requests().back().method, "DELETE");
  EXPECT_EQ(http().requests().back().body, R"({"UserId":"m1_acme","DishId":12})");
  service.addFavoriteDish(NutritionFavoriteDishPost{"m1_acme", NutritionDish{.dishID = 3}}, ignore);
  EXPECT_EQ(http().requests().back().body, R"({"Dish":{"DishId":3},"UserId":"m1_acme"})");

  const std::vector<std::pair<std::function<void()>, std::string>> catalogues{
      {[&] { service.getIntakes(ignore); }, "api/intake"},
      {[&] { service.getExcludedAliments(ignore); }, "api/excluded-aliment"},
      {[&] { service.getIntermitentFasting(ignore); }, "api/intermittent-fasting"},
      {[&] { service.getBalances(ignore); }, "api/desired-balance"},
      {[&] { service.getPreferences(ignore); }, "api/preference"},
      {[&] { service.getDistributions(ignore); }, "api/distribution-by-intake"},
      {[&] { service.getPhysicalActivity(ignore); }, "api/physical-intensity"},
      {[&] { service.getDishOrder(ignore); }, "api/dish-order"},
  };
  for (const auto& [call, path] : catalogues) {
    call();
    EXPECT_EQ(http().requests().back().url, "https://backend.test/" + path + "?Language=en_EN");
    EXPECT_EQ(http().requests().back().method, "GET");
  }

  // The base URL is read afresh for every request.
  config_.mainURL = "http://127.0.0.1:1/";
  service.getIntakes(ignore);
  EXPECT_EQ(http().requests().back().url, "http://127.0.0.1:1/api/intake?Language=en_EN");
  // One that is no URL sends nothing and never answers.
  const auto count = http().requests().size();
  config_.mainURL = "not a url/";
  bool called = false;
  service.getIntakes([&](auto, auto) { called = true; });
  EXPECT_EQ(http().requests().size(), count);
  EXPECT_FALSE(called);
}

TEST_F(BackendClientTest, AnswersAreHandledOnTheMainQueueAndTransportErrorsAtOnce) {
  auto& service = service_;
  std::optional<Error> error;
  std::optional<std::vector<NutritionIntake>> intakes;
  int calls = 0;
  const auto record = [&](std::optional<Error> e, std::optional<std::vector<NutritionIntake>> v) {
    ++calls;
    error = std::move(e);
    intakes = std::move(v);
  };

  service.getIntakes(record);
  http().answer(R"([{"IntakeId": 1, "IntakeName": "Desayuno"}])");
  EXPECT_EQ(calls, 0);  // waits for the main queue
  platform_.queue().runUntilIdle();
  EXPECT_EQ(calls, 1);
  EXPECT_FALSE(error.has_value());
  EXPECT_EQ(intakes->at(0).name, "Desayuno");

  service.getIntakes(record);
  http().failTransport("timed out");
  EXPECT_EQ(calls, 2);  // at once, on the HTTP thread
  EXPECT_EQ(error->code, ErrorCode::transport);
  EXPECT_FALSE(intakes.has_value());

  // A body that does not decode, whatever the status, is no value and no error.
  for (const auto& [body, status] : std::vector<std::pair<std::string, int>>{
           {"<html>oops</html>", 500}, {R"([{"IntakeId": "1"}])", 200}, {"", 204}, {"[{", 200}}) {
    service.getIntakes(record);
    http().answer(body, status);
    platform_.queue().runUntilIdle();
    EXPECT_FALSE(error.has_value());
    EXPECT_FALSE(intakes.has_value()) << body;
  }
  EXPECT_EQ(calls, 6);
}

TEST_F(BackendClientTest, FastingCatalogueOffersNoFastingFirst) {
  std::optional<std::vector<IntermittentFasting>> fastings;
  service_.getIntermitentFasting([&](auto, auto list) { fastings = std::move(list); });
  http().answer(
      R"([{"IntermittentFastingId": 3, "IntermittentFastingName": "16/8", "Enabled": true}])");
  platform_.queue().runUntilIdle();
  ASSERT_EQ(fastings->size(), 2u);
  EXPECT_EQ(fastings->at(0), (IntermittentFasting{0, "No quiero ayuno", true}));
  EXPECT_EQ(fastings->at(1).intermittentFastingID, 3);

  service_.getIntermitentFasting([&](auto, auto list) { fastings = std::move(list); });
  http().answer(R"([{"IntermittentFastingId": 3}])");  // "Enabled" is required
  platform_.queue().runUntilIdle();
  EXPECT_FALSE(fastings.has_value());
}

TEST_F(BackendClientTest, AlternativeDishNeedsADayAndAnIntake) {
  links_.setMember("m1_acme");
  const std::size_t before = http().requests().size();
  std::optional<NutritionMenu> menu;
  const auto keep = [&](auto, std::optional<NutritionMenu> m) { menu = std::move(m); };
  service_.getAlternativeDish(2, keep);
  links_.day = 3;
  service_.getAlternativeDish(2, keep);
  EXPECT_EQ(http().requests().size(), before);

  links_.intake = 5;
  service_.getAlternativeDish(2, keep);
  ASSERT_EQ(http().requests().size(), before + 1);
  const HttpRequest& sent = http().requests().back();
  EXPECT_EQ(sent.method, "PATCH");
  EXPECT_EQ(sent.url, "https://backend.test/api/menu/dish/replace");
  EXPECT_EQ(sent.body,
            R"({"UserId":"m1_acme","DayNum":3,"IntakeId":5,"DishOrderId":2,"Language":"es_ES"})");
  ASSERT_TRUE(
      http().answerTo("dish/replace", R"([{"_id": "new", "Processed": true}, {"_id": "second"}])"));
  platform_.queue().runUntilIdle();
  EXPECT_EQ(menu->id, "new");
}

TEST_F(BackendClientTest, UpdateUserDropsTheHeldMenuAndReadsTheMemberAgain) {
  NutritionUser user = NutritionUser::empty();
  user.userID = "m1_acme";
  std::optional<NutritionUser> reread;
  std::optional<Error> error;
  int calls = 0;
  const auto keep = [&](std::optional<Error> failure, std::optional<NutritionUser> answer) {
    error = std::move(failure);
    reread = std::move(answer);
    ++calls;
  };
  service_.updateUser(user, false, keep);
  EXPECT_EQ(http().requests().back().method, "PATCH");
  service_.updateUser(user, true, keep);
  EXPECT_EQ(http().requests().back().method, "POST");
  EXPECT_EQ(http().requests().back().url, http().requests().front().url);

  http().answer("not even JSON");  // the body is not read
  platform_.queue().runUntilIdle();
  EXPECT_EQ(links_.droppedMenus, 1);
  ASSERT_EQ(links_.rereads.size(), 1u);
  EXPECT_EQ(calls, 0);
  NutritionUser fresh;
  fresh.weight = 81;
  links_.rereads[0](fresh);
  EXPECT_EQ(calls, 1);
  EXPECT_FALSE(error.has_value());
  EXPECT_EQ(reread->weight, 81);

  // Without an answer nothing follows.
  http().failTransport();
  EXPECT_EQ(links_.droppedMenus, 1);
  EXPECT_EQ(calls, 2);
  EXPECT_EQ(error->code, ErrorCode::transport);
  EXPECT_FALSE(reread.has_value());
}

TEST_F(BackendClientTest, AnswersArrivingAfterTheServiceIsGoneAreDropped) {
  int calls = 0;
  {
    DataServiceNutrition shortLived(platform_.bundle(), config_, strings_, links_.links());
    shortLived.getIntakes([&](auto, auto) { ++calls; });
    http().answer("[]");
  }
  platform_.queue().runUntilIdle();
  EXPECT_EQ(calls, 0);
}

TEST_F(BackendClientTest, LoginAnswersOnTheHttpThreadAndOnlyWithAnAnswer) {
  config_.mainURL = "https://other.test/";
  NutritionAuthDataservice auth(platform_.bundle(), config_);
  EXPECT_EQ(auth.baseURLDev, "https://other.test/");
  std::vector<std::optional<NutritionCredentialsIA>> answers;
  const auto keep = [&](std::optional<NutritionCredentialsIA> c) {
    answers.push_back(std::move(c));
  };

  auth.login("acme", "secret", keep);
  http().failTransport();
  EXPECT_TRUE(answers.empty());  // never called without an answer

  for (const char* body : {"[]", R"({"ClientAlias": "acme"})", R"([{"ClientAlias": "acme"}])"}) {
    auth.login("acme", "secret", keep);
    http().answer(body);
  }
  EXPECT_EQ(platform_.queue().pendingCount(), 0u);  // not through the main queue
  ASSERT_EQ(answers.size(), 3u);
  EXPECT_FALSE(answers[0].has_value());
  EXPECT_FALSE(answers[1].has_value());
  EXPECT_EQ(answers[2]->clientAlias, "acme");
}

}  // namespace
}  // namespace nutrition
