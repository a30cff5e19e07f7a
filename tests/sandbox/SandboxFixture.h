#pragma once
// Sandbox tests: the binary's shared sandbox (or a server of the test's own, for options of its
// own), a clock the test moves, and helpers to reach it over HTTP and decode its answers with
// the module's own decoders. Member ids carry the test's name, so tests never meet each
// other's members on the shared server.

#include <gtest/gtest.h>

#include <atomic>
#include <memory>
#include <string>

#include "model/ModelCodec.h"
#include "model/NutritionUser.h"
#include "sandbox/SandboxServer.h"
#include "support/Curl.h"
#include "support/SharedSandbox.h"
#include "support/TestPlatform.h"

namespace nutrition::test {

class SandboxTest : public ::testing::Test {
 protected:
  // Replaces the shared sandbox for this test with a server of its own.
  void startServer(sandbox::SandboxServer::Options options = {}) {
    own_.reset();
    options.now = [] { return sandboxNow().load(); };
    own_ = std::make_unique<sandbox::SandboxServer>(std::move(options));
    ASSERT_TRUE(own_->start());
  }

  sandbox::SandboxServer& server() { return own_ ? *own_ : sharedSandbox(); }
  std::string url(const std::string& path) { return server().baseURL() + path; }

  HttpReply get(const std::string& path) { return httpGet(url(path)); }
  HttpReply send(const std::string& method, const std::string& path, const std::string& body) {
    return httpRequest(method, url(path), body);
  }

  template <class T>
  std::vector<T> getArray(const std::string& path) {
    const HttpReply reply = get(path);
    EXPECT_EQ(reply.status, 200) << path << ": " << reply.body;
    auto decoded = decodeJsonArray<T>(reply.body);
    EXPECT_TRUE(decoded.ok()) << path << ": " << (decoded.ok() ? "" : decoded.error().message);
    return decoded.ok() ? std::move(decoded).value() : std::vector<T>{};
  }

  // Creates the member with POST and checks the answer.
  void createUser(const NutritionUser& user) {
    const HttpReply reply = send("POST", "api/user?Language=es_ES", *encodeJson(user));
    ASSERT_EQ(reply.status, 200) << reply.body;
  }

  // "<member>-<test name>_demo": a backend user id of the demo account no other test uses.
  static std::string userId(const std::string& member) {
    const auto* test = ::testing::UnitTest::GetInstance()->current_test_info();
    return member + "-" + test->test_suite_name() + "." + test->name() + "_demo";
  }

  static NutritionUser member(const std::string& userId) {
    NutritionUser user;
    user.userID = userId;
    user.memberID = userId.substr(0, userId.rfind('_'));
    user.clientID = 1;
    user.gender = NutritionGender::female;
    user.height = 165;
    user.weight = 62;
    user.dailyKcal = 1800.0;
    user.distributionByIntakeID = 5;
    user.selectedIntakes = {{SelectedIntake{1, std::vector<std::int64_t>{1}},
                             SelectedIntake{3, std::vector<std::int64_t>{1, 2, 3}},
                             SelectedIntake{5, std::vector<std::int64_t>{1, 2}}}};
    return user;
  }

  std::atomic<double>& now_ = sandboxNow();

 private:
  std::unique_ptr<sandbox::SandboxServer> own_;
};

}  // namespace nutrition::test
