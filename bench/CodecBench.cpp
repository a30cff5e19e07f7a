// How fast the JSON records decode and encode: a whole generated weekly menu (what "api/menu"
// answers) and the member record. Run: cmake --preset bench && cmake --build --preset bench &&
// ./build/bench/bench/nutrition_bench

#include <benchmark/benchmark.h>

#include "model/ModelCodec.h"
#include "sandbox/MenuGenerator.h"

namespace nutrition {
namespace {

std::string menuJson() {
  NutritionUser user;
  user.userID = "bench_demo";
  user.dailyKcal = 2000.0;
  const auto menu = sandbox::MenuGenerator(sandbox::SeedData::embedded())
                        .generate(user, 1, "2026-11-21T12:00:00.000Z");
  return *encodeJson(std::vector<NutritionMenu>{menu});
}

void DecodeWeeklyMenu(benchmark::State& state) {
  const std::string json = menuJson();
  for (auto _ : state) {
    auto menus = decodeJsonArray<NutritionMenu>(json);
    benchmark::DoNotOptimize(menus);
  }
  state.SetBytesProcessed(std::int64_t(state.iterations()) * std::int64_t(json.size()));
}
BENCHMARK(DecodeWeeklyMenu);

void EncodeWeeklyMenu(benchmark::State& state) {
  const auto menus = *decodeJsonArray<NutritionMenu>(menuJson());
  std::size_t bytes = 0;
  for (auto _ : state) {
    auto text = encodeJson(menus);
    bytes = text->size();
    benchmark::DoNotOptimize(text);
  }
  state.SetBytesProcessed(std::int64_t(state.iterations()) * std::int64_t(bytes));
}
BENCHMARK(EncodeWeeklyMenu);

void DecodeMember(benchmark::State& state) {
  const std::string json =
      R"([{"_id":"d1","UserId":"m1_acme","MemberId":"m1","ClientId":7,"DateOfBirth":"1985-04-12T00:00:00Z",)"
      R"("Gender":"Female","Weight":62,"Height":165,"DailyKcal":1834.5,"DistributionByIntakeId":5,)"
      R"("SelectedIntakes":[{"Intake":1,"Dishes":[1]},{"Intake":3,"Dishes":[1,2,3]}],"PreferenceIds":[2]}])";
  for (auto _ : state) {
    auto users = decodeJsonArray<NutritionUserResponse>(json);
    benchmark::DoNotOptimize(users);
  }
}
BENCHMARK(DecodeMember);

}  // namespace
}  // namespace nutrition
