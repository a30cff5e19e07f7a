#pragma once
// The rules of the health questionnaire that do not depend on how a question is drawn: which
// questions are shown, what a multiple-selection question answers, how a panel's answers reach
// the member, the vegan/vegetarian check of the second page, and the values derived when the
// last page is saved.

#include <cstddef>
#include <optional>
#include <string>
#include <vector>

#include "config/NutritionSDKUtils.h"
#include "logic/AnyValue.h"
#include "logic/NutritionProfileUtils.h"
#include "model/HealthProfile.h"
#include "model/NutritionUser.h"
#include "text/StringTables.h"

namespace nutrition {

// The fasting question is left out unless intermittent fasting is enabled.
bool isQuestionShown(const HealthQuestion& question, const NutritionSDKUtils& config);

// The scores of the ticked rows, in row order; nothing when no row is ticked.
AnyValue multipleSelectionValue(const std::vector<std::optional<std::int64_t>>& tickedScores);

struct PanelAnswer {
  std::optional<std::string> identifier;  // saved under "" when absent
  AnyValue value;                         // nothing when unanswered
};

// Writes every answer of a panel, in order, answered or not.
void savePanel(const std::vector<PanelAnswer>& answers, NutritionProfileUtils& profile);

// After a page is saved: the message that refuses it, if any. The second page (index 1) is
// refused while `member`'s preferences hold both vegan (1) and vegetarian (2).
std::optional<std::string> pageRefusal(std::size_t pageIndex, const NutritionUser* member,
                                       const StringTables& strings);

}  // namespace nutrition
