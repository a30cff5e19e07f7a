#pragma once
// One intake of the day that the member chose, with the courses (dish orders) taken in it.

#include <cstdint>
#include <optional>
#include <tuple>
#include <vector>

#include "json/JsonFields.h"

namespace nutrition {

// Intake numbers with a rule of their own: lunch and dinner take their courses from the
// questionnaire's "lunchDishes" and "dinnerDishes" answers.
inline constexpr std::int64_t kLunchIntake = 3;
inline constexpr std::int64_t kDinnerIntake = 5;

struct SelectedIntake {
  std::optional<std::int64_t> intake;
  std::optional<std::vector<std::int64_t>> dishes;

  bool operator==(const SelectedIntake&) const = default;

  static constexpr auto jsonFields() {
    return std::tuple{json::field("Intake", &SelectedIntake::intake),
                      json::field("Dishes", &SelectedIntake::dishes)};
  }
};

}  // namespace nutrition
