#include "base/SharedInstance.h"

#include <vector>

namespace nutrition {
namespace {

std::mutex& registryMutex() {
  static std::mutex mutex;
  return mutex;
}

std::vector<void (*)()>& resets() {
  static std::vector<void (*)()> functions;
  return functions;
}

}  // namespace

namespace detail {
void registerSharedInstanceReset(void (*reset)()) {
  std::lock_guard lock(registryMutex());
  resets().push_back(reset);
}
}  // namespace detail

void resetSharedInstances() {
  std::vector<void (*)()> functions;
  {
    std::lock_guard lock(registryMutex());
    functions = resets();
  }
  for (auto* reset : functions)
    reset();
}

}  // namespace nutrition
