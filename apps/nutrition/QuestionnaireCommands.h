#pragma once
// `nutrition questionnaire`: the profile editor in the terminal. Without options it prints
// each page as the editor shows it, with the answers its buttons, rows and wheels offer; with
// `--answers FILE` it answers the pages from the file as a member would tap them, printing
// each page and each notice, and sends the profile.

#include <string>
#include <vector>

namespace nutrition::cli {

// Exit code 0 when the pages were shown or the profile was sent, 1 when the editor stopped
// with a notice (or the session could not open), 2 for a bad file or option.
int runQuestionnaire(const std::vector<std::string>& arguments);

}  // namespace nutrition::cli
