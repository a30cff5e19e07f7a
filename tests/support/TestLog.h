#pragma once
// The test binary's log: what the module logs during a test is kept, not printed, and shown
// only when the test fails; tests can look at it.

#include <string>
#include <string_view>
#include <vector>

namespace nutrition::test {

// The lines logged since the running test started, as "level: message".
std::vector<std::string> loggedLines();
// Whether a line logged since the running test started contains `fragment`.
bool logged(std::string_view fragment);

}  // namespace nutrition::test
