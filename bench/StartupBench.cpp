// How long a session takes to start against a backend 50 ms away: from `start()` to the
// member being known, through the Linux platform (libcurl) and the main queue run on this
// thread. Start-up is two sequential requests (the login, then the member download), so the
// floor is 2 x 50 ms; the figures are multiples of that floor.
//
//   x_mean, x_worst   start-up / 100 ms, averaged and at worst over the iterations
//   x_floor           two sequential requests on one plain libcurl handle, measured in the same
//                     run against the same server (what the transport alone costs)
//   one_connection    share of start-ups whose login and member download shared a connection
//
// Run: cmake --preset bench && cmake --build --preset bench &&
// ./build/bench/bench/nutrition_startup_bench

#include <benchmark/benchmark.h>
#include <curl/curl.h>
#include <unistd.h>

#include <algorithm>
#include <chrono>
#include <filesystem>
#include <utility>

#include "facade/NutritionSDK.h"
#include "platform/Platform.h"
#include "platform/linux/LinuxPlatform.h"
#include "sandbox/SandboxServer.h"
#include "session/NutritionAuth.h"

namespace nutrition {
namespace {

using namespace std::chrono_literals;
using Steady = std::chrono::steady_clock;

constexpr auto kLatency = 50ms;
constexpr double kFloorSeconds = 2 * std::chrono::duration<double>(kLatency).count();

class LatentSandbox {
 public:
  LatentSandbox() {
    server_.start();
    server_.setFault("/api/auth/login", {.latency = kLatency});
    server_.setFault("/api/user", {.latency = kLatency});
  }
  sandbox::SandboxServer& server() { return server_; }

 private:
  sandbox::SandboxServer server_{{.processingTime = 0ms}};
};

LatentSandbox& sandboxServer() {
  static LatentSandbox instance;
  return instance;
}

std::filesystem::path dataDirectory() {
  static const auto path = std::filesystem::temp_directory_path() /
                           ("nutrition-startup-bench-" + std::to_string(::getpid()));
  return path;
}

// The client ports of the first login and the first member download (other requests the
// module sends at start may come in between).
std::pair<int, int> loginAndUserPorts(const sandbox::SandboxServer& server) {
  int login = -1, user = -2;
  for (const auto& request : server.requests()) {
    if (request.path == "/api/auth/login" && login < 0) login = request.remotePort;
    if (request.path == "/api/user" && user < 0) user = request.remotePort;
  }
  return {login, user};
}

void Startup(benchmark::State& state) {
  auto& server = sandboxServer().server();
  double total = 0, worst = 0;
  int shared = 0, runs = 0;
  for (auto _ : state) {
    // A fresh platform each time: a new HTTP client with no connection open yet, as at launch.
    // Installing it discards the module's state, so the facade is reached afresh.
    auto platform = makeLinuxPlatform({.dataDirectory = dataDirectory()});
    auto queue = std::dynamic_pointer_cast<ManualMainQueue>(platform->mainQueue);
    Platform::install(platform);
    auto& sdk = NutritionSDK::sharedInstance();
    sdk.setURL(server.baseURL());
    server.clearRequests();

    const auto started = Steady::now();
    sdk.start("bench-member", "demo", "demo-password");
    while (!NutritionAuth::sharedInstance().currentUser) {
      if (Steady::now() - started > 10s) {
        state.SkipWithError("no member after 10 s");
        return;
      }
      queue->waitAndRun(1s);
    }
    const double seconds = std::chrono::duration<double>(Steady::now() - started).count();
    state.SetIterationTime(seconds);

    if (const auto ports = loginAndUserPorts(server); ports.first == ports.second) ++shared;
    total += seconds;
    worst = std::max(worst, seconds);
    ++runs;
  }
  Platform::install(nullptr);
  std::filesystem::remove_all(dataDirectory());
  state.counters["x_mean"] = total / runs / kFloorSeconds;
  state.counters["x_worst"] = worst / kFloorSeconds;
  state.counters["one_connection"] = double(shared) / runs;
}
BENCHMARK(Startup)->UseManualTime()->Iterations(30)->Unit(benchmark::kMillisecond);

size_t discard(char*, size_t size, size_t count, void*) {
  return size * count;
}

// The same two requests, back to back on one blocking libcurl handle.
void TwoRequestsFloor(benchmark::State& state) {
  auto& server = sandboxServer().server();
  const std::string login = server.baseURL() + "api/auth/login";
  const std::string user = server.baseURL() + "api/user?Language=es_ES&UserId=bench-member_demo";
  const std::string body = R"({"ClientAlias":"demo","Password":"demo-password"})";
  double total = 0;
  int runs = 0;
  for (auto _ : state) {
    CURL* curl = curl_easy_init();
    curl_easy_setopt(curl, CURLOPT_WRITEFUNCTION, discard);
    const auto started = Steady::now();
    curl_easy_setopt(curl, CURLOPT_URL, login.c_str());
    curl_easy_setopt(curl, CURLOPT_POSTFIELDS, body.c_str());
    curl_easy_perform(curl);
    curl_easy_setopt(curl, CURLOPT_URL, user.c_str());
    curl_easy_setopt(curl, CURLOPT_HTTPGET, 1L);
    curl_easy_perform(curl);
    const double seconds = std::chrono::duration<double>(Steady::now() - started).count();
    curl_easy_cleanup(curl);
    state.SetIterationTime(seconds);
    total += seconds;
    ++runs;
  }
  state.counters["x_floor"] = total / runs / kFloorSeconds;
}
BENCHMARK(TwoRequestsFloor)->UseManualTime()->Iterations(30)->Unit(benchmark::kMillisecond);

}  // namespace
}  // namespace nutrition
