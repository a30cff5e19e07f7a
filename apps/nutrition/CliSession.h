#pragma once
// What every member command of `nutrition` shares: the options naming the backend and the
// member, the Linux platform with a recording HTTP client, the embedded sandbox backend when no
// backend is named, the main loop, logging in, creating the member's profile when the backend
// does not know it, and waiting for a built menu.
//
// NUTRITIONKIT_NOW (an ISO 8601 date-time) pins the module's clock, for runs that must print
// the same thing every time.

#include <chrono>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "RecordingHttpClient.h"
#include "model/NutritionMenu.h"
#include "platform/Platform.h"
#include "sandbox/SandboxServer.h"
#include "text/StringTables.h"

namespace nutrition::cli {

struct CliOptions {
  std::optional<std::string> baseURL;
  std::string appID;
  std::string password;
  std::string member = "demo-member";
};

extern const char* const kMemberOptionsUsage;

// Reads the member options; prints the problem and returns nothing when they are wrong.
std::optional<CliOptions> parseCliOptions(const std::vector<std::string>& arguments);

class PinnedClock;

class CliSession {
 public:
  // `keepSandboxState`: the embedded sandbox saves its members under the data directory, so
  // the member survives between runs.
  CliSession(CliOptions options, bool keepSandboxState);
  ~CliSession();

  // Starts the backend if needed and logs in; false (message printed) on failure.
  bool open();
  // Sends the demo profile when the backend does not know the member yet.
  bool ensureProfile();
  // Sends the demo profile (sex, height, weight, birth date, activity) with a new menu and
  // waits for the backend's answer; false (message printed) without one.
  bool sendDemoProfile();
  // The member's menu once the backend has built it, held by the data holder; nothing (message
  // printed) on failure.
  std::optional<NutritionMenu> builtMenu(bool verbose);

  // A clock pinned by NUTRITIONKIT_NOW runs on in real time from now on.
  void letClockRun();
  // Runs the main queue until `done` holds; false on timeout or a request without answer.
  bool runUntil(const std::function<bool()>& done, std::chrono::seconds timeout);
  // Prints why the command failed and returns the exit code.
  int fail(const std::string& what) const;

  const std::string& baseURL() const { return base_; }
  bool embedded() const { return sandbox_ != nullptr; }
  const RecordingHttpClient& http() const { return *http_; }
  const Platform& platform() const { return *platform_; }
  // The texts in the device language, as the module's screens show them.
  const StringTables& strings() const { return *strings_; }

 private:
  CliOptions options_;
  bool keepSandboxState_;
  std::string base_;
  std::unique_ptr<sandbox::SandboxServer> sandbox_;
  std::shared_ptr<Platform> platform_;
  std::shared_ptr<RecordingHttpClient> http_;
  std::shared_ptr<ManualMainQueue> queue_;
  std::shared_ptr<PinnedClock> pinned_;
  std::unique_ptr<StringTables> strings_;
};

void printRequests(const RecordingHttpClient& http);

}  // namespace nutrition::cli
