#include "screens/profile/QuestionnaireRules.h"

#include <algorithm>

namespace nutrition {

bool isQuestionShown(const HealthQuestion& question, const NutritionSDKUtils& config) {
  return question.identifier != "intermittentFastingID" || config.intermittentFastingEnable;
}

AnyValue multipleSelectionValue(const std::vector<std::optional<std::int64_t>>& tickedScores) {
  if (tickedScores.empty()) return {};
  return AnyValue(tickedScores);
}

void savePanel(const std::vector<PanelAnswer>& answers, NutritionProfileUtils& profile) {
  for (const auto& answer : answers) {
    profile.updateUserField(answer.identifier.value_or(""), answer.value);
  }
}

std::optional<std::string> pageRefusal(std::size_t pageIndex, const NutritionUser* member,
                                       const StringTables& strings) {
  if (pageIndex != 1 || !member || !member->preferences) return std::nullopt;
  const auto& preferences = *member->preferences;
  const auto has = [&](std::int64_t id) {
    return std::find(preferences.begin(), preferences.end(), id) != preferences.end();
  };
  if (has(1) && has(2)) {
    return strings.localized("No es posible seleccionar vegano y vegetariano simultanemente");
  }
  return std::nullopt;
}

}  // namespace nutrition
