#include "support/Snapshot.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <sstream>

namespace nutrition::test {

void expectSnapshot(const std::string& name, const std::string& rendered) {
  const std::filesystem::path file =
      std::filesystem::path(NUTRITION_SOURCE_DIR) / "tests" / "snapshots" / (name + ".txt");
  const char* record = std::getenv("NUTRITION_RECORD_SNAPSHOTS");
  if (record != nullptr && std::string(record) == "1") {
    std::ofstream out(file, std::ios::binary | std::ios::trunc);
    out << rendered;
    ADD_FAILURE() << "recorded " << file << "; review it and run again without "
                  << "NUTRITION_RECORD_SNAPSHOTS";
    return;
  }
  std::ifstream in(file, std::ios::binary);
  if (!in) {
    ADD_FAILURE() << "no snapshot " << file << "; record it with NUTRITION_RECORD_SNAPSHOTS=1\n"
                  << rendered;
    return;
  }
  std::stringstream expected;
  expected << in.rdbuf();
  EXPECT_EQ(expected.str(), rendered) << "snapshot " << file
                                      << " differs; re-record it with NUTRITION_RECORD_SNAPSHOTS=1 "
                                         "if the change is meant";
}

}  // namespace nutrition::test
