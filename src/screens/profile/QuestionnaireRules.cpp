#include "screens/profile/QuestionnaireRules.h"

#include <algorithm>

#include "config/NutritionSDKUtils.h"
#include "logic/NutritionProfileUtils.h"
#include "session/NutritionAuth.h"
#include "text/Localization.h"

namespace nutrition {

bool isQuestionShown(const HealthQuestion& question) {
  return question.identifier != "intermittentFastingID" ||
         NutritionSDKUtils::sharedInstance().intermittentFastingEnable;
}

AnyValue multipleSelectionValue(const std::vector<std::optional<std::int64_t>>& tickedScores) {
  if (tickedScores.empty()) return {};
  return AnyValue(tickedScores);
}

void savePanel(const std::vector<PanelAnswer>& answers) {
  auto& profile = NutritionProfileUtils::sharedInstance();
  for (const auto& answer : answers) {
    profile.updateUserField(answer.identifier.value_or(""), answer.value);
  }
}

std::optional<std::string> pageRefusal(std::size_t pageIndex) {
  if (pageIndex != 1) return std::nullopt;
  const auto& user = NutritionAuth::sharedInstance().currentUser;
  if (!user || !user->preferences) return std::nullopt;
  const auto& preferences = *user->preferences;
  const auto has = [&](std::int64_t id) {
    return std::find(preferences.begin(), preferences.end(), id) != preferences.end();
  };
  if (has(1) && has(2)) {
    return localized("No es posible seleccionar vegano y vegetariano simultanemente");
  }
  return std::nullopt;
}

void applyLastPageValues() {
  auto& user = NutritionAuth::sharedInstance().currentUser;
  if (user) user->setTargetWeightAndDailyKcal();
}

}  // namespace nutrition
