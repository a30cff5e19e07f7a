#pragma once
// Test doubles for the platform bundle: a clock the test sets and steps, and a bundle of fakes
// for the test's life (a scripted HTTP client, a manual main queue on the fake clock,
// in-memory stores, a documents folder of its own). Unit tests build services from
// `bundle()` directly; end-to-end tests install it, so the singletons reach a fresh Core built
// from it, and the previous bundle comes back at the end.

#include <filesystem>
#include <memory>
#include <string>

#include "base/Date.h"
#include "platform/Platform.h"
#include "support/ScriptedHttpClient.h"

namespace nutrition::test {

class FakeClock final : public Clock {
 public:
  explicit FakeClock(TimePoint start) : now_(start) {}
  TimePoint now() const override { return now_; }
  void set(TimePoint now) { now_ = now; }
  void advance(std::chrono::system_clock::duration step) { now_ += step; }

 private:
  TimePoint now_;
};

// A UTC instant from its calendar fields.
Date utc(int year, unsigned month, unsigned day, int hour = 0, int minute = 0, int second = 0);

class TestPlatform {
 public:
  struct Options {
    Date now = utc(2026, 11, 21, 12);
    std::string language = "es";
    std::shared_ptr<const Calendar> calendar;  // UTC when empty
    std::shared_ptr<HttpClient> http;          // a ScriptedHttpClient when empty
    bool realResources = false;                // the project's resources/ directory
    bool install = false;                      // installed for the test's life
  };

  TestPlatform() : TestPlatform(Options{}) {}
  explicit TestPlatform(Options options);
  ~TestPlatform();
  TestPlatform(const TestPlatform&) = delete;
  TestPlatform& operator=(const TestPlatform&) = delete;

  const Platform& bundle() const { return *platform_; }
  std::shared_ptr<const Platform> shared() const { return platform_; }
  FakeClock& clock() { return *clock_; }
  // Now as the stores keep instants: seconds since 1970.
  double nowSeconds() const;
  KeyValueStores& stores() { return *stores_; }
  ManualMainQueue& queue() { return *queue_; }
  // The scripted client, when the test did not bring its own.
  ScriptedHttpClient& http() { return *scripted_; }
  const std::filesystem::path& documents() const { return documents_; }

 private:
  std::shared_ptr<FakeClock> clock_;
  std::shared_ptr<InMemoryKeyValueStores> stores_;
  std::shared_ptr<ManualMainQueue> queue_;
  std::shared_ptr<ScriptedHttpClient> scripted_;
  std::filesystem::path documents_;
  std::shared_ptr<const Platform> platform_;
  std::shared_ptr<const Platform> previous_;
};

}  // namespace nutrition::test
