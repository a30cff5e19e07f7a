// Looking up a user-facing text: once the core has parsed the device language's table, against
// what every lookup used to cost (reading the table file and parsing it again).

#include <benchmark/benchmark.h>

#include <map>
#include <string>
#include <vector>

#include "json/JsonDecode.h"
#include "platform/linux/DirectoryResourceBundle.h"
#include "platform/linux/LinuxPlatform.h"
#include "text/StringTables.h"

namespace nutrition::bench {
namespace {

using Table = std::map<std::string, std::string, std::less<>>;

const DirectoryResourceBundle& resources() {
  static const DirectoryResourceBundle bundle(defaultResourcesDirectory());
  return bundle;
}

// Every Spanish key of the English table, so lookups walk the whole table.
const std::vector<std::string>& keys() {
  static const std::vector<std::string> all = [] {
    std::vector<std::string> out;
    const auto table = json::decodeDocument<Table>(
        resources().resource("strings/NutritionStrings.en", "json").value_or("{}"));
    for (const auto& [key, value] : *table)
      out.push_back(key);
    return out;
  }();
  return all;
}

void StringLookup_Ours(benchmark::State& state) {
  const StringTables strings(resources(), "en");
  const auto& all = keys();
  std::size_t i = 0;
  for (auto _ : state) {
    auto text = strings.localized(all[i]);
    benchmark::DoNotOptimize(text);
    i = i + 1 == all.size() ? 0 : i + 1;
  }
}

void StringLookup_ReadAndParseEachTime(benchmark::State& state) {
  const auto& all = keys();
  std::size_t i = 0;
  for (auto _ : state) {
    const auto bytes = resources().resource("strings/NutritionStrings.en", "json");
    const auto table = json::decodeDocument<Table>(*bytes);
    const auto found = table->find(all[i]);
    auto text = found == table->end() ? all[i] : found->second;
    benchmark::DoNotOptimize(text);
    i = i + 1 == all.size() ? 0 : i + 1;
  }
}

BENCHMARK(StringLookup_Ours);
BENCHMARK(StringLookup_ReadAndParseEachTime);

}  // namespace
}  // namespace nutrition::bench
