#pragma once
// The member commands of `nutrition`: the menu of today or of the whole week, the fasting
// clock, and the health questionnaire with the answers each question offers.

#include <string>
#include <vector>

namespace nutrition::cli {

int runToday(const std::vector<std::string>& arguments);
int runWeek(const std::vector<std::string>& arguments);
// fasting start [--scheme 1|2|3] | status | end
int runFasting(const std::vector<std::string>& arguments);
int runQuestionnaire(const std::vector<std::string>& arguments);

}  // namespace nutrition::cli
