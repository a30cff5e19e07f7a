// Every backend operation against every fault the sandbox can inject, through the real libcurl
// client: each completion runs exactly once with no value (the login's never runs without an
// answer; a member update answers with the member read again), nothing hangs or crashes, and
// the session and the held data stay as they were.

#include <gtest/gtest.h>

#include <atomic>
#include <thread>

#include "backend/DataServiceNutrition.h"
#include "backend/NutritionAuthDataservice.h"
#include "facade/NutritionSDK.h"
#include "logic/NutritionUtils.h"
#include "platform/linux/CurlHttpClient.h"
#include "sandbox/SandboxServer.h"
#include "session/NutritionAuth.h"
#include "support/SharedSandbox.h"
#include "support/TestPlatform.h"

namespace nutrition {
namespace {

using namespace std::chrono_literals;
using sandbox::Fault;

// The real client with a short time-out, so that a held request ends in the test's time, and a
// count of what it delivered.
class ShortTimeoutHttpClient final : public HttpClient {
 public:
  void send(HttpRequest request, Callback callback) override {
    request.timeout = 400ms;
    inner_.send(std::move(request), [this, callback = std::move(callback)](HttpResponse response) {
      callback(std::move(response));
      ++delivered;
    });
  }
  std::atomic<int> delivered{0};

 private:
  CurlHttpClient inner_;
};

struct Outcome {
  std::atomic<int> calls{0};
  std::atomic<bool> value{false};
};

struct Operation {
  const char* name;
  const char* path;
  std::function<void(Outcome&)> send;
  bool isLogin = false;
  // Any answer to a member update is followed by reading the member again, which the session
  // answers with the member as it reads it (a new member for an answer it cannot read).
  bool rereadsMember = false;
};

const DataServiceNutrition& rest() {
  return DataServiceNutrition::sharedInstance();
}

template <class T>
BackendCompletion<T> recordInto(Outcome& outcome) {
  return [&outcome](const std::optional<Error>&, const std::optional<T>& value) {
    outcome.value = value.has_value();
    ++outcome.calls;
  };
}

class FaultMatrix : public ::testing::Test {
 protected:
  void SetUp() override {
    NutritionSDK::sharedInstance().setURL(server_.baseURL());
    NutritionSDK::sharedInstance().start(
        std::string("fm-") + ::testing::UnitTest::GetInstance()->current_test_info()->name(),
        "demo", "demo-password");
    ASSERT_TRUE(runUntil([] { return NutritionAuth::sharedInstance().currentUser.has_value(); }));
    // The data holder, with its favourites and excluded aliments downloaded.
    NutritionUtils& utils = NutritionUtils::sharedInstance();
    ASSERT_TRUE(runUntil([&] { return utils.favoriteDishes && utils.excludedAliments; }));
    utils.selectedDay = 1;
    utils.selectedIntake = 1;
  }

  bool runUntil(const std::function<bool()>& done, std::chrono::milliseconds timeout = 10s) {
    const auto deadline = std::chrono::steady_clock::now() + timeout;
    while (!done()) {
      if (std::chrono::steady_clock::now() >= deadline) return false;
      platform_.queue().waitAndRun(10ms);
    }
    return true;
  }

  static std::vector<Operation> operations() {
    return {
        {"login", "/api/auth/login",
         [](Outcome& outcome) {
           NutritionAuthDataservice::sharedInstance().login(
               "demo", "demo-password", [&outcome](std::optional<NutritionCredentialsIA> value) {
                 outcome.value = value.has_value();
                 ++outcome.calls;
               });
         },
         true},
        {"member", "/api/user",
         [](Outcome& outcome) {
           NutritionAuthDataservice::sharedInstance().getNutritionUser(
               NutritionAuth::sharedInstance().userId(),
               [&outcome](std::optional<NutritionUserResponse> value) {
                 outcome.value = value.has_value();
                 ++outcome.calls;
               });
         }},
        {"menu", "/api/menu",
         [](Outcome& o) { rest().getWeeklyIAMenu(recordInto<NutritionMenu>(o)); }},
        {"alternative", "/api/menu/dish/replace",
         [](Outcome& o) { rest().getAlternativeDish(1, recordInto<NutritionMenu>(o)); }},
        {"favourites", "/api/favorite-dish",
         [](Outcome& o) { rest().getMyFavoriteDishes(recordInto<std::vector<NutritionDish>>(o)); }},
        {"add favourite", "/api/favorite-dish/add",
         [](Outcome& o) {
           NutritionFavoriteDishPost favourite;
           favourite.dish = NutritionDish{.dishID = 1, .name = "Avena"};
           rest().addFavoriteDish(favourite, recordInto<std::vector<NutritionFavoriteDishPost>>(o));
         }},
        {"remove favourite", "/api/favorite-dish/delete",
         [](Outcome& o) {
           rest().removeFavoriteDish(1, recordInto<std::vector<NutritionFavoriteDishesGet>>(o));
         }},
        {"update member", "/api/user",
         [](Outcome& o) {
           rest().updateUser(*NutritionAuth::sharedInstance().currentUser, false,
                             recordInto<NutritionUser>(o));
         },
         false, true},
        {"intakes", "/api/intake",
         [](Outcome& o) { rest().getIntakes(recordInto<std::vector<NutritionIntake>>(o)); }},
        {"excluded", "/api/excluded-aliment",
         [](Outcome& o) {
           rest().getExcludedAliments(recordInto<std::vector<NutritionExcluded>>(o));
         }},
        {"fasting schemes", "/api/intermittent-fasting",
         [](Outcome& o) {
           rest().getIntermitentFasting(recordInto<std::vector<IntermittentFasting>>(o));
         }},
        {"balances", "/api/desired-balance",
         [](Outcome& o) { rest().getBalances(recordInto<std::vector<NutritionBalance>>(o)); }},
        {"preferences", "/api/preference",
         [](Outcome& o) {
           rest().getPreferences(recordInto<std::vector<NutritionPreference>>(o));
         }},
        {"distributions", "/api/distribution-by-intake",
         [](Outcome& o) {
           rest().getDistributions(recordInto<std::vector<NutritionDistribution>>(o));
         }},
        {"activity", "/api/physical-intensity",
         [](Outcome& o) {
           rest().getPhysicalActivity(recordInto<std::vector<PhysicalIntensity>>(o));
         }},
        {"courses", "/api/dish-order",
         [](Outcome& o) { rest().getDishOrder(recordInto<std::vector<NutritionDishOrder>>(o)); }},
    };
  }

  sandbox::SandboxServer& server_ = test::sharedSandbox();
  std::shared_ptr<ShortTimeoutHttpClient> http_ = std::make_shared<ShortTimeoutHttpClient>();
  test::TestPlatform platform_{{.http = http_, .install = true}};
};

TEST_F(FaultMatrix, EveryOperationUnderEveryFault) {
  struct Cell {
    const char* name;
    Fault fault;
    bool noAnswer;  // no HTTP answer reaches the client
  };
  const std::vector<Cell> faults{
      {"404 with JSON", {.status = 404, .replacementBody = R"({"error":"not found"})"}, false},
      {"500 with JSON", {.status = 500, .replacementBody = R"({"error":"internal"})"}, false},
      {"401 with HTML", {.status = 401, .body = Fault::Body::html}, false},
      {"503 with HTML", {.status = 503, .body = Fault::Body::html}, false},
      {"malformed", {.body = Fault::Body::malformed}, false},
      {"truncated", {.body = Fault::Body::truncated}, false},
      {"empty body", {.body = Fault::Body::empty}, false},
      {"closed connection", {.closeConnection = true}, true},
      {"no answer", {.noAnswer = true}, true},
  };
  NutritionAuth& session = NutritionAuth::sharedInstance();
  NutritionUtils& utils = NutritionUtils::sharedInstance();
  const auto member = session.currentUser;
  const auto credentials = session.credentials;
  const auto favourites = utils.favoriteDishes;
  const auto menu = utils.weeklyMenu;

  for (const Operation& operation : operations()) {
    for (const Cell& cell : faults) {
      SCOPED_TRACE(std::string(operation.name) + " / " + cell.name);
      server_.setFault(operation.path, cell.fault);
      Outcome outcome;
      const int before = http_->delivered;
      operation.send(outcome);
      if (operation.isLogin && cell.noAnswer) {
        // Without an answer the login's completion never runs: wait for the client's failure.
        ASSERT_TRUE(runUntil([&] { return http_->delivered > before; }));
        platform_.queue().runUntilIdle();
        EXPECT_EQ(outcome.calls, 0);
      } else {
        ASSERT_TRUE(runUntil([&] { return outcome.calls > 0; })) << "no completion";
        // Anything the client still delivers must not call again.
        runUntil([] { return false; }, 30ms);
        EXPECT_EQ(outcome.calls, 1);
        EXPECT_EQ(outcome.value, operation.rereadsMember && !cell.noAnswer);
      }
      server_.clearFaults();
    }
  }
  // The session and the held data are as they were.
  EXPECT_EQ(session.currentUser, member);
  EXPECT_EQ(session.credentials, credentials);
  EXPECT_EQ(utils.favoriteDishes, favourites);
  EXPECT_EQ(utils.weeklyMenu.has_value(), menu.has_value());
}

TEST_F(FaultMatrix, SlowAnswersStillAnswerOnce) {
  for (const Operation& operation : operations()) {
    if (std::string_view(operation.name) == "alternative") continue;  // needs a built menu
    SCOPED_TRACE(operation.name);
    server_.setFault(operation.path, {.latency = 150ms});
    Outcome outcome;
    operation.send(outcome);
    ASSERT_TRUE(runUntil([&] { return outcome.calls > 0; }));
    runUntil([] { return false; }, 20ms);
    EXPECT_EQ(outcome.calls, 1);
    server_.clearFaults();
  }
}

}  // namespace
}  // namespace nutrition
