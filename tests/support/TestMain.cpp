// The test binary's main: GoogleTest with the module's log kept per test (printed for failing
// tests only) and one shared sandbox backend.

#include <gtest/gtest.h>

#include <atomic>
#include <cstdio>
#include <memory>
#include <mutex>

#include "base/Log.h"
#include "support/SharedSandbox.h"
#include "support/TestLog.h"

namespace nutrition::test {
namespace {

std::mutex& logMutex() {
  static std::mutex mutex;
  return mutex;
}

std::vector<std::string>& lines() {
  static std::vector<std::string> kept;
  return kept;
}

void keep(LogLevel level, std::string_view message) {
  static constexpr const char* kNames[] = {"debug", "info", "warning", "error"};
  std::lock_guard lock(logMutex());
  lines().push_back(std::string(kNames[static_cast<int>(level)]) + ": " + std::string(message));
}

class LogPerTest final : public ::testing::EmptyTestEventListener {
  void OnTestStart(const ::testing::TestInfo&) override {
    {
      std::lock_guard lock(logMutex());
      lines().clear();
    }
    resetSharedSandbox();
  }
  void OnTestEnd(const ::testing::TestInfo& info) override {
    if (!info.result()->Failed()) return;
    for (const auto& line : loggedLines())
      std::fprintf(stderr, "  [log] %s\n", line.c_str());
  }
};

class SandboxEnvironment final : public ::testing::Environment {
  void TearDown() override { stopSharedSandbox(); }
};

std::mutex sandboxMutex;
std::unique_ptr<sandbox::SandboxServer> sandboxServer;

}  // namespace

std::vector<std::string> loggedLines() {
  std::lock_guard lock(logMutex());
  return lines();
}

bool logged(std::string_view fragment) {
  for (const auto& line : loggedLines()) {
    if (line.find(fragment) != std::string::npos) return true;
  }
  return false;
}

sandbox::SandboxServer& sharedSandbox() {
  std::lock_guard lock(sandboxMutex);
  if (!sandboxServer) {
    sandboxServer = std::make_unique<sandbox::SandboxServer>(sandbox::SandboxServer::Options{
        .processingTime = std::chrono::milliseconds(0), .now = [] { return sandboxNow().load(); }});
    if (!sandboxServer->start()) {
      std::fprintf(stderr, "cannot start the shared sandbox backend\n");
      std::abort();
    }
  }
  return *sandboxServer;
}

std::atomic<double>& sandboxNow() {
  static std::atomic<double> now{kSandboxStart};
  return now;
}

void resetSharedSandbox() {
  sandboxNow() = kSandboxStart;
  std::lock_guard lock(sandboxMutex);
  if (!sandboxServer) return;
  sandboxServer->clearFaults();
  sandboxServer->clearRequests();
}

void stopSharedSandbox() {
  std::lock_guard lock(sandboxMutex);
  sandboxServer.reset();
}

}  // namespace nutrition::test

int main(int argc, char** argv) {
  ::testing::InitGoogleTest(&argc, argv);
  nutrition::setLogSink(nutrition::test::keep);
  auto& listeners = ::testing::UnitTest::GetInstance()->listeners();
  listeners.Append(new nutrition::test::LogPerTest);
  ::testing::AddGlobalTestEnvironment(new nutrition::test::SandboxEnvironment);
  return RUN_ALL_TESTS();
}
