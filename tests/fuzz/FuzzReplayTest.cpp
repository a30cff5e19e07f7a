// The fuzzers' committed seeds and every input a fuzzer ever found, replayed through the same
// entries as regular tests: each input must go through without a crash, a sanitizer report or
// a broken property.

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>

#include "fuzz/FuzzTargets.h"

namespace nutrition {
namespace {

std::size_t replayFolder(const fuzz::Target& target, const std::filesystem::path& folder) {
  std::size_t replayed = 0;
  if (!std::filesystem::is_directory(folder)) return replayed;
  for (const auto& file : std::filesystem::directory_iterator(folder)) {
    std::ifstream in(file.path(), std::ios::binary);
    const std::string bytes{std::istreambuf_iterator<char>(in), {}};
    SCOPED_TRACE(file.path().string());
    target.entry(reinterpret_cast<const std::uint8_t*>(bytes.data()), bytes.size());
    ++replayed;
  }
  return replayed;
}

TEST(FuzzReplay, SeedsAndFoundInputsGoThroughEveryEntry) {
  const std::filesystem::path root = NUTRITION_FUZZ_DIR;
  for (const fuzz::Target& target : fuzz::kTargets) {
    SCOPED_TRACE(std::string(target.name));
    const std::size_t seeds = replayFolder(target, root / "corpus" / target.name);
    EXPECT_GT(seeds, 0u) << "no seed corpus for " << target.name;
    replayFolder(target, root / "regressions" / target.name);
  }
  // Inputs no seed covers: empty, a lone selector, and bytes that are no JSON.
  using namespace std::string_literals;
  const std::string odd[] = {""s, "\x13"s, "\x00{"s, "\xff\xfe[1,"s,
                             "\x04[[[[[[[[[[[[]]]]]]]]]]]]"s};
  for (const fuzz::Target& target : fuzz::kTargets) {
    for (const std::string& bytes : odd)
      target.entry(reinterpret_cast<const std::uint8_t*>(bytes.data()), bytes.size());
  }
}

}  // namespace
}  // namespace nutrition
