#pragma once
// The rules of the health questionnaire that do not depend on how a question is drawn: which
// questions are shown, what a multiple-selection question answers, how a panel's answers reach
// the member, the vegan/vegetarian check of the second page, and the values derived when the
// last page is saved.

#include <cstddef>
#include <optional>
#include <string>
#include <vector>

#include "logic/AnyValue.h"
#include "model/HealthProfile.h"

namespace nutrition {

// The fasting question is left out unless intermittent fasting is enabled.
bool isQuestionShown(const HealthQuestion& question);

// The scores of the ticked rows, in row order; nothing when no row is ticked.
AnyValue multipleSelectionValue(const std::vector<std::optional<std::int64_t>>& tickedScores);

struct PanelAnswer {
  std::optional<std::string> identifier;  // saved under "" when absent
  AnyValue value;                         // nothing when unanswered
};

// Writes every answer of a panel, in order, answered or not.
void savePanel(const std::vector<PanelAnswer>& answers);

// After a page is saved: the message that refuses it, if any. The second page (index 1) is
// refused while the member's preferences hold both vegan (1) and vegetarian (2).
std::optional<std::string> pageRefusal(std::size_t pageIndex);

// After the last page is saved: the target weight (whole part of the ideal weight) and the
// daily energy.
void applyLastPageValues();

}  // namespace nutrition
