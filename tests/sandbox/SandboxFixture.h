#pragma once
// A sandbox server per test on an ephemeral port, with a clock the test moves, and helpers to
// reach it over HTTP and decode its answers with the module's own decoders.

#include <gtest/gtest.h>

#include <memory>
#include <string>

#include "model/ModelCodec.h"
#include "model/NutritionUser.h"
#include "sandbox/SandboxServer.h"
#include "support/Curl.h"
#include "support/TestPlatform.h"

namespace nutrition::test {

class SandboxTest : public ::testing::Test {
 protected:
  void SetUp() override { startServer({.processingTime = std::chrono::milliseconds(0)}); }

  void startServer(sandbox::SandboxServer::Options options = {}) {
    server_.reset();
    options.now = [this] { return now_; };
    server_ = std::make_unique<sandbox::SandboxServer>(std::move(options));
    ASSERT_TRUE(server_->start());
  }

  sandbox::SandboxServer& server() { return *server_; }
  std::string url(const std::string& path) const { return server_->baseURL() + path; }

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

  static NutritionUser member(const std::string& userId) {
    NutritionUser user;
    user.userID = userId;
    user.memberID = userId.substr(0, userId.find('_'));
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

  double now_ = 1'800'000'000.0;

 private:
  std::unique_ptr<sandbox::SandboxServer> server_;
};

}  // namespace nutrition::test
