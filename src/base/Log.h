#pragma once
// The one way the core writes to the log. Hosts and tests may redirect it; by default lines go
// to standard error. Never pass a password or a request body that holds one.

#include <functional>
#include <string_view>

namespace nutrition {

enum class LogLevel { debug, info, warning, error };

using LogSink = std::function<void(LogLevel, std::string_view)>;

void log(LogLevel level, std::string_view message);

// Replaces the sink and returns the previous one; an empty sink silences the log.
LogSink setLogSink(LogSink sink);

}  // namespace nutrition
