#pragma once
// The one way the core writes to the log, and the one way it stops. Hosts and tests may
// redirect the log; by default lines go to standard error. Never pass a password or a request
// body that holds one.

#include <functional>
#include <string_view>

namespace nutrition {

enum class LogLevel { debug, info, warning, error };

using LogSink = std::function<void(LogLevel, std::string_view)>;

void log(LogLevel level, std::string_view message);

// Replaces the sink and returns the previous one; an empty sink silences the log.
LogSink setLogSink(LogSink sink);

// A programming error or a broken shipped resource: logs `message` as an error, writes it to
// standard error as well (a host's sink may be gone by then) and stops the program. Never
// called on data from the network, the stores or the clock.
[[noreturn]] void fatal(std::string_view message);

}  // namespace nutrition
