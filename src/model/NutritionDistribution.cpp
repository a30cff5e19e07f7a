#include "model/NutritionDistribution.h"

namespace nutrition {

std::vector<SelectedIntake> NutritionDistribution::getSelectedIntakeForDistribution() const {
  std::vector<SelectedIntake> selected;
  if (!ipDistribution) return selected;
  for (const auto& entry : *ipDistribution) {
    if (entry.intakeID == kLunchIntake || entry.intakeID == kDinnerIntake) continue;
    selected.push_back(SelectedIntake{entry.intakeID, std::vector<std::int64_t>{1}});
  }
  return selected;
}

}  // namespace nutrition
