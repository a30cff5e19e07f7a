// Decoding of the favourite dishes and the login answers.

#include "json/JsonReader.h"
#include "model/NutritionCredentials.h"
#include "model/NutritionFavoriteDish.h"

NUTRITION_JSON_DECODABLE(nutrition::NutritionFavoriteDishPost)
NUTRITION_JSON_DECODABLE(nutrition::NutritionFavoriteDishesGet)
NUTRITION_JSON_DECODABLE(nutrition::NutritionCredentialsIA)
NUTRITION_JSON_DECODABLE(nutrition::NutritionLoginAuth)
