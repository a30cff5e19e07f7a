// Decoding of the backend's preference, aliment, activity, balance and country catalogues.

#include "json/JsonReader.h"
#include "model/NutritionCatalogues.h"
#include "model/NutritionPreference.h"

NUTRITION_JSON_DECODABLE(nutrition::NutritionPreference)
NUTRITION_JSON_DECODABLE(nutrition::NutritionExcluded)
NUTRITION_JSON_DECODABLE(nutrition::PhysicalIntensity)
NUTRITION_JSON_DECODABLE(nutrition::NutritionBalance)
NUTRITION_JSON_DECODABLE(nutrition::NutritionCountry)
