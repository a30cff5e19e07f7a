#include "base/Log.h"

#include <cstdio>
#include <cstdlib>
#include <mutex>
#include <string>

namespace nutrition {
namespace {

std::mutex& sinkMutex() {
  static std::mutex mutex;
  return mutex;
}

void writeToStderr(LogLevel level, std::string_view message) {
  static constexpr const char* kNames[] = {"debug", "info", "warning", "error"};
  std::fprintf(stderr, "[NutritionKit %s] %.*s\n", kNames[static_cast<int>(level)],
               static_cast<int>(message.size()), message.data());
}

LogSink& currentSink() {
  static LogSink sink = writeToStderr;
  return sink;
}

}  // namespace

void log(LogLevel level, std::string_view message) {
  std::lock_guard lock(sinkMutex());
  if (currentSink()) currentSink()(level, message);
}

LogSink setLogSink(LogSink sink) {
  std::lock_guard lock(sinkMutex());
  std::swap(currentSink(), sink);
  return sink;
}

void fatal(std::string_view message) {
  log(LogLevel::error, message);
  std::fprintf(stderr, "NutritionKit: fatal: %.*s\n", static_cast<int>(message.size()),
               message.data());
  std::abort();
}

}  // namespace nutrition
