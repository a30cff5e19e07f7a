#pragma once
// The bodies the codec benchmarks read and write: a full weekly menu as "api/menu" answers it
// (7 days of 5 intakes of 3 dishes, each with its recipe, ingredients and three image
// addresses, in Spanish) and a member record.

#include <string>
#include <vector>

#include "model/NutritionMenu.h"
#include "model/NutritionUser.h"

namespace nutrition::bench {

const std::vector<NutritionMenu>& weeklyMenu();
const std::string& weeklyMenuJson();

const NutritionUser& member();
const std::string& memberJson();

}  // namespace nutrition::bench
