// Runs every registered benchmark, then prints the figures that matter as ratios against the
// reference measured in the same run (so a busy or slower machine shifts both sides alike),
// the peak heap of a decode, and which simdjson kernel ran.

#include <benchmark/benchmark.h>
#include <simdjson.h>

#include <algorithm>
#include <cstdio>
#include <map>
#include <string>
#include <thread>

#include "bench/BenchBodies.h"
#include "bench/HeapCounter.h"
#include "model/ModelCodec.h"

namespace nutrition::bench {
namespace {

// Keeps the fastest CPU time per iteration each benchmark reached over its repetitions.
class CollectingReporter : public benchmark::ConsoleReporter {
 public:
  void ReportRuns(const std::vector<Run>& runs) override {
    ConsoleReporter::ReportRuns(runs);
    for (const auto& run : runs) {
      if (run.run_type != Run::RT_Iteration || run.error_occurred) continue;
      const double seconds = run.GetAdjustedCPUTime();
      auto [entry, added] = fastest.try_emplace(run.run_name.function_name, seconds);
      if (!added) entry->second = std::min(entry->second, seconds);
    }
  }
  std::map<std::string, double> fastest;  // in the run's time unit
};

void printRatio(const CollectingReporter& reporter, const char* what, const std::string& ours,
                const std::string& reference, const char* goal) {
  const auto a = reporter.fastest.find(ours);
  const auto b = reporter.fastest.find(reference);
  if (a == reporter.fastest.end() || b == reporter.fastest.end()) return;
  std::printf("  %-44s %6.2f x   (%s)\n", what, b->second / a->second, goal);
}

// The most heap live at once while a fresh thread decodes the body for the first time, the
// decoded value included.
struct HeapUse {
  std::size_t peak = 0;
  std::size_t allocations = 0;
};

HeapUse firstDecodeHeap(const std::string& body) {
  HeapUse use;
  std::thread([&] {
    const HeapWindow window;
    {
      const auto menus = decodeJsonArray<NutritionMenu>(body);
      if (!menus.ok()) std::abort();
    }
    use = {window.peak(), window.allocations()};
  }).join();
  return use;
}

}  // namespace
}  // namespace nutrition::bench

int main(int argc, char** argv) {
  using namespace nutrition;
  using namespace nutrition::bench;
  // The bodies must read back as what was written before anything is timed.
  if (*decodeJsonArray<NutritionMenu>(weeklyMenuJson()) != weeklyMenu() ||
      *decodeJson<NutritionUser>(memberJson()) != member()) {
    std::fprintf(stderr, "the benchmark bodies do not round-trip\n");
    return 1;
  }

  benchmark::Initialize(&argc, argv);
  if (benchmark::ReportUnrecognizedArguments(argc, argv)) return 1;
  CollectingReporter reporter;
  benchmark::RunSpecifiedBenchmarks(&reporter);
  benchmark::Shutdown();

  const std::string& menu = weeklyMenuJson();
  const HeapUse heap = firstDecodeHeap(menu);
  std::printf("\nBodies: weekly menu %zu bytes, member %zu bytes. simdjson kernel: %s\n",
              menu.size(), memberJson().size(),
              simdjson::get_active_implementation()->name().c_str());
  std::printf("Ratios (reference time / our time; above 1 means we are faster):\n");
  printRatio(reporter, "decode weekly menu vs simdjson DOM parse", "DecodeMenu_Ours",
             "DecodeMenu_SimdjsonDom", "goal >= 0.5");
  printRatio(reporter, "decode weekly menu vs nlohmann::json parse", "DecodeMenu_Ours",
             "DecodeMenu_Nlohmann", "goal >= 10");
  printRatio(reporter, "decode weekly menu vs copying its records", "DecodeMenu_Ours",
             "CopyDecodedMenu", "the allocation floor, for information");
  printRatio(reporter, "decode member vs simdjson DOM parse", "DecodeMember_Ours",
             "DecodeMember_SimdjsonDom", "for information");
  printRatio(reporter, "decode member vs nlohmann::json parse", "DecodeMember_Ours",
             "DecodeMember_Nlohmann", "for information");
  printRatio(reporter, "encode weekly menu vs RapidJSON Writer", "EncodeMenu_Ours",
             "EncodeMenu_RapidJson", "goal >= 1");
  printRatio(reporter, "encode member vs RapidJSON Writer", "EncodeMember_Ours",
             "EncodeMember_RapidJson", "goal >= 1");
  std::printf(
      "Peak heap of a first decode on a new thread: %zu bytes = %.2f x the body (goal <= "
      "3), in %zu allocations\n",
      heap.peak, double(heap.peak) / double(menu.size()), heap.allocations);
  if (const auto lookup = reporter.fastest.find("StringLookup_Ours");
      lookup != reporter.fastest.end()) {
    std::printf("Text lookup: %.0f ns (goal < 1000 ns)\n", lookup->second);
    printRatio(reporter, "text lookup vs reading and parsing the table", "StringLookup_Ours",
               "StringLookup_ReadAndParseEachTime", "what each lookup used to cost");
  }
  return 0;
}
