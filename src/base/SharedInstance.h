#pragma once
// The process-wide single instances of NutritionKit (the configuration record, the session,
// the clients...). Each is made on first use from the installed Platform and lives until the
// process ends; resetSharedInstances() discards them all so that tests, or a host that installs
// a new platform, start afresh. Nothing may hold a reference across a reset.

#include <mutex>

namespace nutrition {

void resetSharedInstances();

namespace detail {
void registerSharedInstanceReset(void (*reset)());
}

template <class T>
class SharedInstance {
 public:
  template <class Make>
  static T& get(Make&& make) {
    std::lock_guard lock(mutex());
    if (!instance) {
      instance = make();
      static const bool registered = (detail::registerSharedInstanceReset(&reset), true);
      (void)registered;
    }
    return *instance;
  }

  static void reset() {
    std::lock_guard lock(mutex());
    delete instance;
    instance = nullptr;
  }

 private:
  static std::mutex& mutex() {
    static std::mutex m;
    return m;
  }
  static inline T* instance = nullptr;
};

}  // namespace nutrition
