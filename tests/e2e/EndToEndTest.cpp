// NutritionKit end to end: the facade and the backend clients over libcurl against the
// sandbox backend, with the test thread as the main thread.

#include <gtest/gtest.h>

#include <atomic>
#include <thread>

#include "backend/DataServiceNutrition.h"
#include "backend/NutritionAuthDataservice.h"
#include "facade/NutritionSDK.h"
#include "platform/linux/CurlHttpClient.h"
#include "sandbox/SandboxServer.h"
#include "session/NutritionAuth.h"
#include "support/SharedSandbox.h"
#include "support/TestPlatform.h"

namespace nutrition {
namespace {

using namespace std::chrono_literals;
using sandbox::Fault;

class EndToEnd : public ::testing::Test {
 protected:
  void SetUp() override { sdk().setURL(server_.baseURL()); }

  // A member id of the test's own: the shared backend keeps every test's members.
  static std::string memberOfThisTest(const std::string& member) {
    return member + "-" + ::testing::UnitTest::GetInstance()->current_test_info()->name();
  }

  static NutritionSDK& sdk() { return NutritionSDK::sharedInstance(); }
  static NutritionAuth& session() { return NutritionAuth::sharedInstance(); }

  // Runs the main queue until `done` holds; false after `timeout`.
  bool runUntil(const std::function<bool()>& done, std::chrono::milliseconds timeout = 10s) {
    const auto deadline = std::chrono::steady_clock::now() + timeout;
    while (!done()) {
      if (std::chrono::steady_clock::now() >= deadline) return false;
      platform_.queue().waitAndRun(20ms);
    }
    return true;
  }

  void startDemoMember(const std::string& member) {
    sdk().start(memberOfThisTest(member), "demo", "demo-password");
    ASSERT_TRUE(runUntil([] { return session().currentUser.has_value(); }));
  }

  void updateProfileAndWait() {
    auto standard = platform_.stores().standard();
    standard->remove("hold_menu_timer");
    sdk().updateProfile(NutritionGender::male, 180, 80, test::utc(1985, 4, 12), 3, std::nullopt,
                        true, true);
    ASSERT_TRUE(runUntil([&] { return standard->value("hold_menu_timer").has_value(); }));
  }

  std::vector<std::string> requestLines() const {
    std::vector<std::string> lines;
    for (const auto& request : server_.requests()) {
      lines.push_back(request.method + " " + request.path +
                      (request.query.empty() ? "" : "?" + request.query));
    }
    return lines;
  }

  sandbox::SandboxServer& server_ = test::sharedSandbox();
  std::shared_ptr<CurlHttpClient> http_ = std::make_shared<CurlHttpClient>();
  test::TestPlatform platform_{{.http = http_, .install = true}};
};

TEST_F(EndToEnd, StartUpSendsTheLoginThenTheMemberDownload) {
  startDemoMember("m1");
  EXPECT_EQ(requestLines(), (std::vector<std::string>{"POST /api/auth/login",
                                                      "GET /api/user?Language=es_ES&UserId=" +
                                                          memberOfThisTest("m1") + "_demo"}));
  const auto requests = server_.requests();
  EXPECT_EQ(requests[0].body, R"({"ClientAlias":"demo","Password":"demo-password"})");
  EXPECT_EQ(requests[0].header("Content-Type"), "application/json");
  EXPECT_EQ(requests[1].header("Accept"), "application/json");
  EXPECT_EQ(session().credentials->clientID, 1);
  EXPECT_TRUE(session().isUnregister);
  EXPECT_EQ(session().currentUser->userID, memberOfThisTest("m1") + "_demo");
}

TEST_F(EndToEnd, NewMemberIsCreatedWithPostAndThenUpdatedWithPatch) {
  startDemoMember("m1");
  updateProfileAndWait();
  EXPECT_FALSE(session().isUnregister);
  EXPECT_EQ(sdk().getUserHeight(), 180);
  EXPECT_EQ(session().currentUser->physicalIntensityID, 3);

  updateProfileAndWait();
  std::vector<std::string> writes;
  for (const auto& request : server_.requests()) {
    if (request.path == "/api/user" && request.method != "GET") writes.push_back(request.method);
  }
  EXPECT_EQ(writes, (std::vector<std::string>{"POST", "PATCH"}));

  std::optional<NutritionMenu> menu;
  DataServiceNutrition::sharedInstance().getWeeklyIAMenu([&](auto, auto answer) { menu = answer; });
  ASSERT_TRUE(runUntil([&] { return menu.has_value(); }));
  EXPECT_EQ(menu->processed, true);
  EXPECT_EQ(menu->days->size(), 7u);
}

TEST_F(EndToEnd, NewBaseUrlTakesEffectForLaterRequests) {
  startDemoMember("m1");
  sandbox::SandboxServer other{{.processingTime = 0ms}};
  ASSERT_TRUE(other.start());
  sdk().setURL(other.baseURL());
  bool done = false;
  DataServiceNutrition::sharedInstance().getIntakes([&](auto, auto) { done = true; });
  ASSERT_TRUE(runUntil([&] { return done; }));
  EXPECT_EQ(other.requests().size(), 1u);
  EXPECT_EQ(server_.requests().size(), 2u);
}

TEST_F(EndToEnd, CompletionsRunOnTheMainThreadUnlessNothingAnswered) {
  startDemoMember("m1");
  const auto mainThread = std::this_thread::get_id();
  std::optional<std::thread::id> answeredOn;
  DataServiceNutrition::sharedInstance().getDishOrder(
      [&](auto, auto) { answeredOn = std::this_thread::get_id(); });
  ASSERT_TRUE(runUntil([&] { return answeredOn.has_value(); }));
  EXPECT_EQ(*answeredOn, mainThread);

  std::atomic<bool> failed{false};
  std::thread::id failedOn;
  std::optional<Error> error;
  server_.setFault("/api/dish-order", {.closeConnection = true});
  DataServiceNutrition::sharedInstance().getDishOrder([&](auto e, auto) {
    failedOn = std::this_thread::get_id();
    error = e;
    failed = true;
  });
  ASSERT_TRUE(runUntil([&] { return failed.load(); }));
  EXPECT_NE(failedOn, mainThread);
  EXPECT_EQ(error->code, ErrorCode::transport);
}

TEST_F(EndToEnd, FaultyAnswersEndAsAbsentValuesWithoutCrashing) {
  startDemoMember("m1");
  struct Case {
    const char* name;
    Fault fault;
    bool transportError;
  };
  const std::vector<Case> cases{
      {"slow", {.latency = 300ms}, false},
      {"500 with HTML", {.status = 500, .body = Fault::Body::html}, false},
      {"truncated", {.body = Fault::Body::truncated}, false},
      {"empty", {.body = Fault::Body::empty}, false},
      {"wrong types", {.replacementBody = R"([{"IntakeId": "one"}])"}, false},
      {"closed", {.closeConnection = true}, true},
  };
  for (const auto& c : cases) {
    SCOPED_TRACE(c.name);
    server_.setFault("/api/intake", c.fault);
    std::atomic<bool> done{false};
    std::optional<Error> error;
    std::optional<std::vector<NutritionIntake>> intakes;
    DataServiceNutrition::sharedInstance().getIntakes([&](auto e, auto list) {
      error = e;
      intakes = list;
      done = true;
    });
    ASSERT_TRUE(runUntil([&] { return done.load(); }));
    EXPECT_EQ(error.has_value(), c.transportError);
    EXPECT_EQ(intakes.has_value(), c.fault.latency > 0ms);
  }

  // A member download that does not decode leaves the member new, as an unknown one would.
  server_.setFault("/api/user", {.replacementBody = R"([{"Weight": "heavy"}])"});
  sdk().setMemberId(memberOfThisTest("m2"));
  ASSERT_TRUE(
      runUntil([] { return session().currentUser->userID == memberOfThisTest("m2") + "_demo"; }));
  EXPECT_TRUE(session().isUnregister);
}

// Counts the answers (or transport errors) its inner client has delivered.
class CountingHttpClient final : public HttpClient {
 public:
  void send(HttpRequest request, Callback callback) override {
    inner_.send(std::move(request), [this, callback = std::move(callback)](HttpResponse response) {
      callback(std::move(response));
      ++delivered;
    });
  }
  std::atomic<int> delivered{0};

 private:
  CurlHttpClient inner_;
};

TEST_F(EndToEnd, UnreachableBackendNeverAnswersTheLogin) {
  const auto counting = std::make_shared<CountingHttpClient>();
  test::TestPlatform unreachable({.http = counting, .install = true});
  sdk().setURL("http://127.0.0.1:9/");
  sdk().start("m1", "demo", "demo-password");
  bool logged = false;
  NutritionAuthDataservice::sharedInstance().login("demo", "demo-password",
                                                   [&](auto) { logged = true; });
  // Both logins have failed once the client has delivered both transport errors.
  const auto deadline = std::chrono::steady_clock::now() + 10s;
  while (counting->delivered < 2 && std::chrono::steady_clock::now() < deadline) {
    std::this_thread::yield();
  }
  ASSERT_EQ(counting->delivered, 2);
  unreachable.queue().runUntilIdle();
  EXPECT_FALSE(logged);
  EXPECT_FALSE(session().credentials.has_value());
  EXPECT_FALSE(session().currentUser.has_value());
  EXPECT_EQ(unreachable.queue().pendingCount(), 0u);
}

TEST_F(EndToEnd, MemberIdsReachTheBackendIntact) {
  startDemoMember("a&b=c#d e");
  EXPECT_EQ(server_.requests().back().query,
            "Language=es_ES&UserId=a%26b%3Dc%23d%20e-" +
                std::string(::testing::UnitTest::GetInstance()->current_test_info()->name()) +
                "_demo");
  updateProfileAndWait();
  // The backend stored the member under the exact id and answers it back.
  EXPECT_EQ(session().currentUser->userID, memberOfThisTest("a&b=c#d e") + "_demo");
  EXPECT_FALSE(session().isUnregister);
}

TEST_F(EndToEnd, HttpClientReusesConnectionsAndCancelsOnShutdown) {
  startDemoMember("m1");
  const auto requests = server_.requests();
  EXPECT_EQ(requests[0].remotePort, requests[1].remotePort);

  // Several requests in flight at once all complete.
  int answered = 0;
  server_.setFault("/api/preference", {.latency = 200ms});
  for (int i = 0; i < 8; ++i) {
    DataServiceNutrition::sharedInstance().getPreferences([&](auto, auto list) {
      EXPECT_TRUE(list.has_value());
      ++answered;
    });
  }
  ASSERT_TRUE(runUntil([&] { return answered == 8; }));

  // Destroying a client with a request held by the server ends it as cancelled.
  server_.setFault("/api/menu", {.noAnswer = true});
  auto client = std::make_unique<CurlHttpClient>();
  std::atomic<bool> cancelled{false};
  client->send(HttpRequest{"GET", server_.baseURL() + "api/menu", {}, {}, 60s},
               [&](HttpResponse response) { cancelled = response.transportError == "cancelled"; });
  ASSERT_TRUE(runUntil([&] { return server_.requests().back().path == "/api/menu"; }));
  client.reset();
  EXPECT_TRUE(cancelled);
  server_.clearFaults();
}

}  // namespace
}  // namespace nutrition
