#pragma once
// The member commands of `nutrition`: the menu of today or of the whole week, the fasting
// clock.

#include <cstdint>
#include <memory>
#include <string>
#include <vector>

namespace nutrition::cli {

class CliSession;

// Opens a session for the member, creating its profile when the backend does not know it;
// nothing (usage or failure printed) otherwise.
std::unique_ptr<CliSession> openMember(const std::vector<std::string>& arguments,
                                       const char* usage);
// Gives the member the fasting scheme `wanted` on the backend when it has none.
bool ensureScheme(CliSession& cli, std::int64_t wanted);

int runToday(const std::vector<std::string>& arguments);
int runWeek(const std::vector<std::string>& arguments);
// fasting [--watch N] | phase | start [--scheme 1|2|3] | status | end
int runFasting(const std::vector<std::string>& arguments);
// The fasting screen as the member sees it, re-rendered by its own timer with --watch N.
int runFastingScreen(const std::vector<std::string>& arguments);
// The pop-up of the current fasting phase.
int runFastingPhase(const std::vector<std::string>& arguments);

}  // namespace nutrition::cli
