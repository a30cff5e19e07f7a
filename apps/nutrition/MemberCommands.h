#pragma once
// The member commands of `nutrition`: the menu of today or of the whole week, the fasting
// clock.

#include <cstdint>
#include <memory>
#include <string>
#include <vector>

namespace nutrition {
class Window;
}

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
// menu [--day N] | intake I | alternative I D | favorite I D: the weekly menu home and the
// intake screens, driven as a member taps them.
int runMenu(const std::vector<std::string>& arguments);

// A key window whose root stands for the host's own screen; the module presents on it.
std::shared_ptr<Window> openKeyWindow(const CliSession& cli);
// Shows the weekly menu home on `window` once the member's menu is built, and prints it.
bool printMenuHome(CliSession& cli, Window& window);

}  // namespace nutrition::cli
