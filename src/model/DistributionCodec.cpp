// Decoding of the intake distributions, fasting schemes and courses catalogues.

#include "json/JsonReader.h"
#include "model/NutritionCatalogues.h"
#include "model/NutritionDistribution.h"

NUTRITION_JSON_DECODABLE(nutrition::NutritionDistribution)
NUTRITION_JSON_DECODABLE(nutrition::IPDistribution)
NUTRITION_JSON_DECODABLE(nutrition::IntermittentFasting)
NUTRITION_JSON_DECODABLE(nutrition::NutritionDishOrder)
