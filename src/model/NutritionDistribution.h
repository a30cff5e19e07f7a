#pragma once
// How the day's energy is split over the intakes, with the macro split of each intake.

#include <cstdint>
#include <optional>
#include <string>
#include <tuple>
#include <vector>

#include "json/JsonFields.h"
#include "model/SelectedIntake.h"

namespace nutrition {

struct IPDistribution {
  std::optional<std::int64_t> intakeID;
  std::optional<std::int64_t> carbs;
  std::optional<std::int64_t> proteins;
  std::optional<std::int64_t> fats;

  bool operator==(const IPDistribution&) const = default;

  static constexpr auto jsonFields() {
    using D = IPDistribution;
    return std::tuple{json::field("IntakeId", &D::intakeID), json::field("Carbs", &D::carbs),
                      json::field("Proteins", &D::proteins), json::field("Fats", &D::fats)};
  }
};

struct NutritionDistribution {
  std::optional<std::int64_t> distributionByIntakeID;
  std::optional<std::string> distributionByIntakeName;
  std::optional<std::vector<IPDistribution>> ipDistribution;

  bool operator==(const NutritionDistribution&) const = default;

  // One selected intake with course [1] per distributed intake, in order. Lunch (3) and
  // dinner (5) are left out: their courses come from the questionnaire's own answers.
  [[nodiscard]] std::vector<SelectedIntake> getSelectedIntakeForDistribution() const;

  static constexpr auto jsonFields() {
    using D = NutritionDistribution;
    return std::tuple{json::field("DistributionByIntakeId", &D::distributionByIntakeID),
                      json::field("DistributionByIntakeName", &D::distributionByIntakeName),
                      json::field("IPDistribution", &D::ipDistribution)};
  }
};

}  // namespace nutrition
