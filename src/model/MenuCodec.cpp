// Decoding of the weekly menu, its days, intakes and dishes.

#include "json/JsonReader.h"
#include "model/NutritionMenu.h"

NUTRITION_JSON_DECODABLE(nutrition::NutritionMenu)
NUTRITION_JSON_DECODABLE(nutrition::NutritionDay)
NUTRITION_JSON_DECODABLE(nutrition::NutritionIntake)
NUTRITION_JSON_DECODABLE(nutrition::NutritionDish)
