// Typed decoding of the weekly menu and of a member record, beside two reference parsers
// reading the same bytes into their own document trees: simdjson's DOM parser (reused across
// iterations and given a padded copy, its best case) and nlohmann::json.

#include <benchmark/benchmark.h>
#include <simdjson.h>

#include <nlohmann/json.hpp>

#include "bench/BenchBodies.h"
#include "model/ModelCodec.h"

namespace nutrition::bench {
namespace {

template <class Decode>
void run(benchmark::State& state, const std::string& body, Decode decode) {
  for (auto _ : state) {
    auto decoded = decode(body);
    benchmark::DoNotOptimize(decoded);
  }
  state.SetBytesProcessed(std::int64_t(state.iterations()) * std::int64_t(body.size()));
}

void simdjsonDom(benchmark::State& state, const std::string& body) {
  simdjson::dom::parser parser;
  const simdjson::padded_string padded(body);
  for (auto _ : state) {
    simdjson::dom::element root;
    if (parser.parse(padded).get(root)) state.SkipWithError("simdjson failed");
    benchmark::DoNotOptimize(root);
  }
  state.SetBytesProcessed(std::int64_t(state.iterations()) * std::int64_t(body.size()));
}

void DecodeMenu_Ours(benchmark::State& state) {
  run(state, weeklyMenuJson(), [](const std::string& body) {
    auto menus = decodeJsonArray<NutritionMenu>(body);
    if (!menus.ok()) std::abort();
    return menus;
  });
}
void DecodeMenu_SimdjsonDom(benchmark::State& state) {
  simdjsonDom(state, weeklyMenuJson());
}
void DecodeMenu_Nlohmann(benchmark::State& state) {
  run(state, weeklyMenuJson(), [](const std::string& body) { return nlohmann::json::parse(body); });
}

// Not a parse: copying the decoded records makes every allocation and copies every byte a
// decode must, which is the floor a typed decode into std::string and std::vector stands on.
void CopyDecodedMenu(benchmark::State& state) {
  const std::vector<NutritionMenu>& menus = weeklyMenu();
  for (auto _ : state) {
    auto copy = menus;
    benchmark::DoNotOptimize(copy);
  }
  state.SetBytesProcessed(std::int64_t(state.iterations()) * std::int64_t(weeklyMenuJson().size()));
}

void DecodeMember_Ours(benchmark::State& state) {
  run(state, memberJson(), [](const std::string& body) {
    auto user = decodeJson<NutritionUser>(body);
    if (!user.ok()) std::abort();
    return user;
  });
}
void DecodeMember_SimdjsonDom(benchmark::State& state) {
  simdjsonDom(state, memberJson());
}
void DecodeMember_Nlohmann(benchmark::State& state) {
  run(state, memberJson(), [](const std::string& body) { return nlohmann::json::parse(body); });
}

BENCHMARK(DecodeMenu_Ours);
BENCHMARK(DecodeMenu_SimdjsonDom);
BENCHMARK(DecodeMenu_Nlohmann);
BENCHMARK(CopyDecodedMenu);
BENCHMARK(DecodeMember_Ours);
BENCHMARK(DecodeMember_SimdjsonDom);
BENCHMARK(DecodeMember_Nlohmann);

}  // namespace
}  // namespace nutrition::bench
