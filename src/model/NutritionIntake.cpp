#include "model/NutritionIntake.h"

#include "base/Saturating.h"

namespace nutrition {

std::int64_t NutritionIntake::getTotalKcal() const {
  std::int64_t total = 0;
  if (!dishes) return total;
  for (const auto& dish : *dishes)
    total = saturatingAdd(total, dish.kcal.value_or(0));
  return total;
}

}  // namespace nutrition
