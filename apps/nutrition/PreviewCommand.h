#pragma once
// `nutrition preview`: the module's live screens in a browser. Runs the real module against the
// embedded sandbox backend (or --base-url), shows the screen on top of the key window in a
// phone-sized page served on 127.0.0.1, and applies the member's taps, typing and wheel
// choices to the core on the main queue; the page follows every change (timers, presentations,
// alerts) until the command is interrupted.

#include <string>
#include <vector>

namespace nutrition::cli {

int runPreview(const std::vector<std::string>& arguments);

// The page the preview serves: the phone frame, its style and the script that polls the
// screen and sends the member's input back.
const char* previewPage();

}  // namespace nutrition::cli
