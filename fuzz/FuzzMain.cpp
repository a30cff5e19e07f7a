// One libFuzzer program per entry of fuzz/FuzzTargets.h; NUTRITION_FUZZ_ENTRY names it.

#include "fuzz/FuzzTargets.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  return nutrition::fuzz::NUTRITION_FUZZ_ENTRY(data, size);
}
