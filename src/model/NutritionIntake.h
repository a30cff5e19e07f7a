#pragma once
// One intake of a menu day (breakfast, lunch...) with its dishes. The intake catalogue reuses
// this record with only "IntakeId" and "IntakeName" filled.

#include <cstdint>
#include <optional>
#include <string>
#include <tuple>
#include <vector>

#include "json/JsonFields.h"
#include "model/NutritionDish.h"

namespace nutrition {

struct NutritionIntake {
  std::optional<std::int64_t> intakeId;
  std::optional<std::string> name;
  std::optional<std::int64_t> day;
  std::optional<std::vector<NutritionDish>> dishes;

  bool operator==(const NutritionIntake&) const = default;

  // Sum of the dishes' kcal (absent counts 0); saturates instead of overflowing.
  [[nodiscard]] std::int64_t getTotalKcal() const;

  static constexpr auto jsonFields() {
    using I = NutritionIntake;
    return std::tuple{json::field("IntakeId", &I::intakeId), json::field("IntakeName", &I::name),
                      json::field("DayNum", &I::day), json::field("Dishes", &I::dishes)};
  }
};

}  // namespace nutrition
