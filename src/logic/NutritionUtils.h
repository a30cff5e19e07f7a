#pragma once
// The holder of the member's downloaded nutrition data: the weekly menu, the catalogues, the
// favourites, and what the menu screens have selected.

#include <cstdint>
#include <optional>
#include <vector>

#include "model/NutritionCatalogues.h"
#include "model/NutritionDistribution.h"
#include "model/NutritionMenu.h"
#include "model/NutritionPreference.h"

namespace nutrition {

class NutritionUtils {
 public:
  static NutritionUtils& sharedInstance();

  std::optional<NutritionMenu> weeklyMenu;
  std::vector<NutritionIntake> favoriteIntakes;
  std::optional<std::int64_t> selectedDay;
  std::optional<std::int64_t> selectedIntake;
  std::optional<std::int64_t> selectedDish;
  std::optional<std::vector<NutritionExcluded>> excludedAliments;
  std::optional<std::vector<NutritionPreference>> preferences;
  std::optional<std::vector<NutritionBalance>> balances;
  std::optional<std::vector<NutritionCountry>> countries;
  std::optional<std::vector<PhysicalIntensity>> physicalIntensity;
  std::optional<std::vector<NutritionDistribution>> distributions;
  std::optional<std::vector<NutritionIntake>> intakes;
  std::optional<std::vector<IntermittentFasting>> fastings;
  std::optional<std::vector<NutritionDishOrder>> dishOrders;
  std::optional<std::vector<NutritionDish>> favoriteDishes;
  bool isEmbedViewController = false;
};

}  // namespace nutrition
