#pragma once
// `nutrition` with no command: the main job. Starts the embedded sandbox backend (or uses the
// backend given with --base-url), starts a session for a demo member, fills in the member's
// profile so the backend creates it, and prints the exchange, the profile, the ideal weight and
// daily energy, and today's menu once the backend has built it.

#include <string>
#include <vector>

namespace nutrition::cli {

int runDemo(const std::vector<std::string>& arguments);

}  // namespace nutrition::cli
