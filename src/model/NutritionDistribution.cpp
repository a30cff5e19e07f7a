#include "model/NutritionDistribution.h"

namespace nutrition {

std::vector<SelectedIntake> NutritionDistribution::getSelectedIntakeForDistribution() const {
  constexpr std::int64_t kLunch = 3;
  constexpr std::int64_t kDinner = 5;
  std::vector<SelectedIntake> selected;
  if (!ipDistribution) return selected;
  for (const auto& entry : *ipDistribution) {
    if (entry.intakeID == kLunch || entry.intakeID == kDinner) continue;
    selected.push_back(SelectedIntake{entry.intakeID, std::vector<std::int64_t>{1}});
  }
  return selected;
}

}  // namespace nutrition
