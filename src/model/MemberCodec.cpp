// Decoding of the member records.

#include "json/JsonReader.h"
#include "model/NutritionUser.h"
#include "model/NutritionUserResponse.h"
#include "model/PublicProfile.h"
#include "model/SelectedIntake.h"

NUTRITION_JSON_DECODABLE(nutrition::NutritionUser)
NUTRITION_JSON_DECODABLE(nutrition::NutritionUserResponse)
NUTRITION_JSON_DECODABLE(nutrition::PublicProfile)
NUTRITION_JSON_DECODABLE(nutrition::SelectedIntake)
