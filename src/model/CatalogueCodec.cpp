// Decoding of the backend's catalogues.

#include "json/JsonReader.h"
#include "model/NutritionCatalogues.h"
#include "model/NutritionDistribution.h"
#include "model/NutritionPreference.h"

NUTRITION_JSON_DECODABLE(nutrition::NutritionPreference)
NUTRITION_JSON_DECODABLE(nutrition::NutritionExcluded)
NUTRITION_JSON_DECODABLE(nutrition::PhysicalIntensity)
NUTRITION_JSON_DECODABLE(nutrition::NutritionBalance)
NUTRITION_JSON_DECODABLE(nutrition::NutritionDistribution)
NUTRITION_JSON_DECODABLE(nutrition::IPDistribution)
NUTRITION_JSON_DECODABLE(nutrition::IntermittentFasting)
NUTRITION_JSON_DECODABLE(nutrition::NutritionDishOrder)
NUTRITION_JSON_DECODABLE(nutrition::NutritionCountry)
