// A soak run against the in-process sandbox: 1,000 sessions (login, member download, logout)
// and 1,000 weekly menu downloads through the real module, printing the heap in use (glibc's
// count of bytes allocated and not freed) every 100 rounds. A leak shows as a figure that keeps
// growing; the last line gives the heap at the end as a multiple of the heap after the first
// 100 rounds, which should stay near 1, and how much the heap grew a round over the second
// half of the run (after the allocator and the connection cache have warmed up), which should
// stay near 0.
//
// Run: cmake --preset bench && cmake --build --preset bench --target nutrition_soak_bench &&
// ./build/bench/bench/nutrition_soak_bench [ROUNDS]

#include <malloc.h>
#include <unistd.h>

#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <functional>
#include <string>

#include "facade/NutritionSDK.h"
#include "logic/NutritionUtils.h"
#include "platform/linux/LinuxPlatform.h"
#include "sandbox/SandboxServer.h"
#include "session/NutritionAuth.h"

namespace nutrition {
namespace {

using namespace std::chrono_literals;

std::size_t heapInUse() {
  return mallinfo2().uordblks;
}

class Soak {
 public:
  explicit Soak(int rounds) : rounds_(rounds) {
    server_.start();
    Platform::install(platform_);
    NutritionSDK::sharedInstance().setURL(server_.baseURL());
  }
  ~Soak() {
    Platform::install(nullptr);
    std::filesystem::remove_all(directory_);
  }

  bool runUntil(const std::function<bool()>& done) {
    const auto deadline = std::chrono::steady_clock::now() + 10s;
    while (!done()) {
      if (std::chrono::steady_clock::now() > deadline) return false;
      queue_->waitAndRun(10ms);
    }
    return true;
  }

  // Runs `round` `rounds_` times, printing the heap every 100; false when a round failed.
  bool phase(const char* name, const std::function<bool(int)>& round) {
    std::printf("%s\n  %6s %14s\n", name, "rounds", "heap in use");
    std::size_t settled = 0;
    std::size_t half = 0;
    for (int i = 1; i <= rounds_; ++i) {
      if (!round(i)) {
        std::printf("  round %d failed\n", i);
        return false;
      }
      if (i % 100 == 0) {
        server_.clearRequests();  // the server's own request log is not the module's heap
        queue_->runUntilIdle();
        const std::size_t heap = heapInUse();
        if (i == 100 || settled == 0) settled = heap;
        if (i <= rounds_ / 2) half = heap;
        std::printf("  %6d %14zu\n", i, heap);
      }
    }
    const double end = double(heapInUse());
    std::printf("  end / after 100 rounds: %.3f x; over the second half: %+.1f bytes a round\n",
                end / double(settled), (end - double(half)) / (rounds_ - rounds_ / 2));
    return true;
  }

  bool sessions() {
    return phase("login, member download, logout", [&](int i) {
      auto& sdk = NutritionSDK::sharedInstance();
      sdk.start("soak-" + std::to_string(i % 10), "demo", "demo-password");
      const bool known =
          runUntil([] { return NutritionAuth::sharedInstance().currentUser.has_value(); });
      sdk.logout();
      return known;
    });
  }

  bool menus() {
    auto& sdk = NutritionSDK::sharedInstance();
    sdk.start("soak-menu", "demo", "demo-password");
    if (!runUntil([] { return NutritionAuth::sharedInstance().currentUser.has_value(); }))
      return false;
    sdk.updateProfile(NutritionGender::male, 180, 80,
                      std::chrono::sys_days{std::chrono::year{1985} / 4 / 12}, 3, std::nullopt,
                      true, false);
    if (!runUntil([] { return !NutritionAuth::sharedInstance().isUnregister; })) return false;
    return phase("weekly menu download", [&](int) {
      bool answered = false;
      NutritionUtils::sharedInstance().downloadMenu(
          [&](const std::optional<NutritionMenu>&) { answered = true; });
      return runUntil([&] { return answered; });
    });
  }

 private:
  int rounds_;
  std::filesystem::path directory_ =
      std::filesystem::temp_directory_path() / ("nutrition-soak-" + std::to_string(::getpid()));
  sandbox::SandboxServer server_{{.processingTime = 0ms}};
  std::shared_ptr<Platform> platform_ = makeLinuxPlatform({.dataDirectory = directory_});
  std::shared_ptr<ManualMainQueue> queue_ =
      std::dynamic_pointer_cast<ManualMainQueue>(platform_->mainQueue);
};

}  // namespace
}  // namespace nutrition

int main(int argc, char** argv) {
  const int rounds = argc > 1 ? std::atoi(argv[1]) : 1000;
  if (rounds < 100) {
    std::fprintf(stderr, "usage: nutrition_soak_bench [ROUNDS >= 100]\n");
    return 2;
  }
  nutrition::Soak soak(rounds);
  const bool ok = soak.sessions() && soak.menus();
  return ok ? 0 : 1;
}
