#pragma once
// One day of a generated menu. Days are numbered 1 = Monday to 7 = Sunday ("DayNum").

#include <cstdint>
#include <optional>
#include <tuple>
#include <vector>

#include "json/JsonFields.h"
#include "model/NutritionIntake.h"

namespace nutrition {

struct NutritionDay {
  std::optional<std::int64_t> day;
  std::optional<std::vector<NutritionIntake>> intakes;
  std::optional<std::int64_t> kcalDay;

  bool operator==(const NutritionDay&) const = default;

  static constexpr auto jsonFields() {
    using D = NutritionDay;
    return std::tuple{json::field("DayNum", &D::day), json::field("Intakes", &D::intakes),
                      json::field("KcalDay", &D::kcalDay)};
  }
};

}  // namespace nutrition
