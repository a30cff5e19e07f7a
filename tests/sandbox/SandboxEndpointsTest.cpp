#include <gtest/gtest.h>

#include "model/NutritionCatalogues.h"
#include "model/NutritionCredentials.h"
#include "model/NutritionDistribution.h"
#include "model/NutritionFavoriteDish.h"
#include "model/NutritionMenu.h"
#include "model/NutritionPreference.h"
#include "sandbox/SandboxFixture.h"

namespace nutrition::test {
namespace {

using Endpoints = SandboxTest;

TEST_F(Endpoints, LoginAnswersTheAccountOnlyForTheRightPassword) {
  const auto login = [&](const std::string& body) {
    const HttpReply reply = send("POST", "api/auth/login", body);
    EXPECT_EQ(reply.status, 200);
    return *decodeJsonArray<NutritionCredentialsIA>(reply.body);
  };
  const auto accounts = login(R"({"ClientAlias":"demo","Password":"demo-password"})");
  ASSERT_EQ(accounts.size(), 1u);
  EXPECT_EQ(accounts[0].clientAlias, "demo");
  EXPECT_EQ(accounts[0].clientID, 1);
  EXPECT_EQ(accounts[0].enabled, true);
  EXPECT_TRUE(login(R"({"ClientAlias":"demo","Password":"wrong"})").empty());
  EXPECT_TRUE(login(R"({"ClientAlias":"other","Password":"demo-password"})").empty());
  EXPECT_TRUE(login(R"({})").empty());

  const HttpReply malformed = send("POST", "api/auth/login", "ClientAlias=demo");
  EXPECT_EQ(malformed.status, 400);
  EXPECT_NE(malformed.body.find("\"error\""), std::string::npos);
}

TEST_F(Endpoints, UsersAreCreatedUpdatedAndReadBack) {
  const std::string id = userId("m1");
  EXPECT_EQ(get("api/user?Language=es_ES&UserId=" + id).body, "[]");

  NutritionUser user = member(id);
  user.countries = {{1}};
  user.preferences = {{2}};
  user.excludedAliments = {{7}};
  user.dateOfBirth = utc(1985, 4, 12);
  createUser(user);
  EXPECT_EQ(send("POST", "api/user?Language=es_ES", *encodeJson(user)).status, 409);

  auto read = getArray<NutritionUserResponse>("api/user?Language=es_ES&UserId=" + id);
  ASSERT_EQ(read.size(), 1u);
  EXPECT_EQ(read[0].userID, id);
  EXPECT_EQ(read[0].clientAlias, "demo");
  EXPECT_EQ(read[0].countryIDS, std::vector<std::int64_t>{1});
  EXPECT_EQ(read[0].preferenceIDS, std::vector<std::int64_t>{2});
  EXPECT_EQ(read[0].excludedAlimentIDS, std::vector<std::int64_t>{7});
  EXPECT_EQ(read[0].dateOfBirth, utc(1985, 4, 12));
  EXPECT_TRUE(read[0].id.has_value());

  // PATCH changes only what it carries.
  NutritionUser change = NutritionUser::empty();
  change.userID = id;
  change.weight = 58;
  EXPECT_EQ(send("PATCH", "api/user?Language=es_ES", *encodeJson(change)).status, 200);
  read = getArray<NutritionUserResponse>("api/user?Language=es_ES&UserId=" + id);
  EXPECT_EQ(read[0].weight, 58);
  EXPECT_EQ(read[0].height, 165);

  change.userID = "nobody_demo";
  EXPECT_EQ(send("PATCH", "api/user?Language=es_ES", *encodeJson(change)).status, 404);
  EXPECT_EQ(send("POST", "api/user?Language=es_ES", R"({"Weight": 80})").status, 400);
  EXPECT_EQ(send("POST", "api/user?Language=es_ES", R"({"UserId": 5})").status, 400);
}

TEST_F(Endpoints, CataloguesDecodeInEveryLanguageWithSpanishAsFallback) {
  EXPECT_EQ(getArray<NutritionIntake>("api/intake?Language=en_EN")[0].name, "Breakfast");
  EXPECT_EQ(getArray<NutritionIntake>("api/intake?Language=fr_FR")[4].name, "Dîner");
  EXPECT_EQ(getArray<NutritionIntake>("api/intake?Language=xx_XX")[0].name, "Desayuno");
  EXPECT_EQ(getArray<NutritionIntake>("api/intake")[0].name, "Desayuno");
  // Every other catalogue answers a non-empty list of objects.
  for (const char* path :
       {"api/excluded-aliment", "api/intermittent-fasting", "api/desired-balance", "api/preference",
        "api/physical-intensity", "api/dish-order"}) {
    EXPECT_FALSE(getArray<NutritionPreference>(std::string(path) + "?Language=ca_ES").empty())
        << path;
  }

  // Every distribution the energy rules can pick is there, and its split covers the day.
  const auto distributions =
      getArray<NutritionDistribution>("api/distribution-by-intake?Language=es_ES");
  for (const std::int64_t id : {2, 3, 4, 5, 6, 7, 8, 9, 10}) {
    SCOPED_TRACE(id);
    const auto found = std::find_if(distributions.begin(), distributions.end(),
                                    [&](const auto& d) { return d.distributionByIntakeID == id; });
    ASSERT_NE(found, distributions.end());
    std::int64_t carbs = 0;
    for (const auto& split : found->ipDistribution.value())
      carbs += *split.carbs;
    EXPECT_EQ(carbs, 100);
  }
}

TEST_F(Endpoints, MenuReadsUnprocessedWhileTheBackendBuildsIt) {
  const std::string id = userId("m1");
  EXPECT_EQ(get("api/menu?Language=es_ES&UserId=" + id).body, "[]");
  startServer({.processingTime = std::chrono::seconds(5)});
  createUser(member(id));

  auto menus = getArray<NutritionMenu>("api/menu?Language=en_EN&UserId=" + id);
  ASSERT_EQ(menus.size(), 1u);
  EXPECT_EQ(menus[0].processed, false);
  EXPECT_EQ(menus[0].serialNumber, 1);

  now_ += 5;
  menus = getArray<NutritionMenu>("api/menu?Language=en_EN&UserId=" + id);
  ASSERT_EQ(menus[0].processed, true);
  ASSERT_EQ(menus[0].days->size(), 7u);
  const NutritionIntake& breakfast = menus[0].days->at(0).intakes->at(0);
  EXPECT_EQ(breakfast.name, "Breakfast");
  const NutritionDish& dish = breakfast.dishes->at(0);
  EXPECT_TRUE(dish.name && dish.ingredients && dish.recipe && dish.typeName);
  ASSERT_TRUE(dish.binaryUrls.has_value());
  EXPECT_TRUE(dish.binaryUrls->at(0).starts_with(server().baseURL() + "images/dish-"));

  // A profile update that asks for it regenerates the menu, which is on hold again.
  NutritionUser change = NutritionUser::empty();
  change.userID = id;
  change.regenerateMenu = true;
  ASSERT_EQ(send("PATCH", "api/user?Language=es_ES", *encodeJson(change)).status, 200);
  menus = getArray<NutritionMenu>("api/menu?Language=es_ES&UserId=" + id);
  EXPECT_EQ(menus[0].processed, false);
  EXPECT_EQ(menus[0].serialNumber, 2);
  change.regenerateMenu = false;
  now_ += 5;
  ASSERT_EQ(send("PATCH", "api/user?Language=es_ES", *encodeJson(change)).status, 200);
  menus = getArray<NutritionMenu>("api/menu?Language=es_ES&UserId=" + id);
  EXPECT_EQ(menus[0].processed, true);
  EXPECT_EQ(menus[0].serialNumber, 2);
}

TEST_F(Endpoints, DishReplacementKeepsTheCourseAndTheEnergy) {
  const std::string id = userId("m1");
  createUser(member(id));
  const auto before = getArray<NutritionMenu>("api/menu?Language=en_EN&UserId=" + id)[0];
  const NutritionDish old = before.days->at(2).intakes->at(1).dishes->at(1);  // lunch, main
  ASSERT_EQ(old.dishOrderID, 2);

  const HttpReply reply = send(
      "PATCH", "api/menu/dish/replace",
      R"({"UserId":")" + id + R"(","DayNum":3,"IntakeId":3,"DishOrderId":2,"Language":"en_EN"})");
  ASSERT_EQ(reply.status, 200) << reply.body;
  const auto after = decodeJsonArray<NutritionMenu>(reply.body)->at(0);
  const NutritionDish fresh = after.days->at(2).intakes->at(1).dishes->at(1);
  EXPECT_NE(fresh.dishID, old.dishID);
  EXPECT_EQ(fresh.dishOrderID, 2);
  EXPECT_EQ(fresh.kcal, old.kcal);
  EXPECT_EQ(fresh.typeName, "Main course");
  EXPECT_EQ(after.days->at(2).kcalDay, before.days->at(2).kcalDay);
  // Everything else is as it was.
  EXPECT_EQ(after.days->at(0), before.days->at(0));
  EXPECT_EQ(getArray<NutritionMenu>("api/menu?Language=en_EN&UserId=" + id)[0], after);

  EXPECT_EQ(send("PATCH", "api/menu/dish/replace",
                 R"({"UserId":")" + id + R"(","DayNum":9,"IntakeId":3,"DishOrderId":2})")
                .status,
            404);
  EXPECT_EQ(send("PATCH", "api/menu/dish/replace", R"({"UserId":")" + id + R"("})").status, 400);
}

TEST_F(Endpoints, FavouritesAreKeptPerUser) {
  const std::string id = userId("m1");
  createUser(member(id));
  NutritionDish dish;
  dish.dishID = 5;
  dish.kcal = 300;
  const std::string add = *encodeJson(NutritionFavoriteDishPost{id, dish});
  ASSERT_EQ(send("POST", "api/favorite-dish/add", add).status, 200);
  const HttpReply again = send("POST", "api/favorite-dish/add", add);
  const auto added = decodeJsonArray<NutritionFavoriteDishPost>(again.body);
  ASSERT_TRUE(added.ok()) << again.body;
  ASSERT_EQ(added->size(), 1u);
  EXPECT_EQ(added->at(0).userId, id);
  EXPECT_EQ(added->at(0).dish->dishID, 5);

  const auto listed = getArray<NutritionDish>("api/favorite-dish?UserId=" + id + "&Language=en_EN");
  ASSERT_EQ(listed.size(), 1u);
  EXPECT_EQ(listed[0].kcal, 300);
  EXPECT_TRUE(listed[0].name.has_value());
  EXPECT_TRUE(
      getArray<NutritionDish>("api/favorite-dish?UserId=other_demo&Language=en_EN").empty());

  const HttpReply removed =
      send("DELETE", "api/favorite-dish/delete", R"({"UserId":")" + id + R"(","DishId":5})");
  const auto remaining = decodeJsonArray<NutritionFavoriteDishesGet>(removed.body);
  ASSERT_TRUE(remaining.ok()) << removed.body;
  EXPECT_EQ(remaining->at(0).dishes, std::vector<NutritionDish>{});
  EXPECT_EQ(send("POST", "api/favorite-dish/add",
                 *encodeJson(NutritionFavoriteDishPost{"nobody_demo", dish}))
                .status,
            404);
}

TEST_F(Endpoints, ServesDishImagesAndLogsRequestsAsSent) {
  const HttpReply image = get("images/dish-3.png");
  EXPECT_EQ(image.status, 200);
  EXPECT_EQ(image.contentType, "image/png");
  EXPECT_EQ(image.body.substr(0, 8), "\x89PNG\r\n\x1A\n");
  EXPECT_EQ(get("images/dish-99999.png").status, 404);
  EXPECT_EQ(get("images/dish-3.gif").status, 404);

  server().clearRequests();
  send("POST", "api/user?Language=es_ES&UserId=a%26b%3Dc", R"({"UserId":"x"})");
  const auto requests = server().requests();
  ASSERT_EQ(requests.size(), 1u);
  EXPECT_EQ(requests[0].method, "POST");
  EXPECT_EQ(requests[0].path, "/api/user");
  EXPECT_EQ(requests[0].query, "Language=es_ES&UserId=a%26b%3Dc");
  EXPECT_EQ(requests[0].header("content-type"), "application/json");
  EXPECT_EQ(requests[0].body, R"({"UserId":"x"})");
}

}  // namespace
}  // namespace nutrition::test
