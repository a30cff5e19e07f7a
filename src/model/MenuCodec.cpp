// Decoding of the weekly menu, its days, intakes and dishes, and the favourite dishes.

#include "json/JsonReader.h"
#include "model/NutritionFavoriteDish.h"
#include "model/NutritionMenu.h"

NUTRITION_JSON_DECODABLE(nutrition::NutritionMenu)
NUTRITION_JSON_DECODABLE(nutrition::NutritionDay)
NUTRITION_JSON_DECODABLE(nutrition::NutritionIntake)
NUTRITION_JSON_DECODABLE(nutrition::NutritionDish)
NUTRITION_JSON_DECODABLE(nutrition::NutritionFavoriteDishPost)
NUTRITION_JSON_DECODABLE(nutrition::NutritionFavoriteDishesGet)
