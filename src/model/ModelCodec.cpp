#include "model/ModelCodec.h"

#include "json/JsonReader.h"
#include "model/AlertItem.h"
#include "model/AyunoPhase.h"
#include "model/HealthProfile.h"
#include "model/NutritionCatalogues.h"
#include "model/NutritionCredentials.h"
#include "model/NutritionDistribution.h"
#include "model/NutritionFavoriteDish.h"
#include "model/NutritionMenu.h"
#include "model/NutritionPreference.h"
#include "model/NutritionUser.h"
#include "model/PublicProfile.h"
#include "model/WaitScreen.h"

namespace nutrition {

template <class T>
Result<T> decodeJson(std::string_view json) {
  return json::decodeDocument<T>(json);
}

template <class T>
Result<std::vector<T>> decodeJsonArray(std::string_view json) {
  return json::decodeDocument<std::vector<T>>(json);
}

#define NUTRITION_DECODABLE(Record)                             \
  template Result<Record> decodeJson<Record>(std::string_view); \
  template Result<std::vector<Record>> decodeJsonArray<Record>(std::string_view);

NUTRITION_DECODABLE(NutritionUser)
NUTRITION_DECODABLE(NutritionUserResponse)
NUTRITION_DECODABLE(PublicProfile)
NUTRITION_DECODABLE(SelectedIntake)
NUTRITION_DECODABLE(NutritionMenu)
NUTRITION_DECODABLE(NutritionDay)
NUTRITION_DECODABLE(NutritionIntake)
NUTRITION_DECODABLE(NutritionDish)
NUTRITION_DECODABLE(NutritionPreference)
NUTRITION_DECODABLE(NutritionExcluded)
NUTRITION_DECODABLE(PhysicalIntensity)
NUTRITION_DECODABLE(NutritionBalance)
NUTRITION_DECODABLE(NutritionDistribution)
NUTRITION_DECODABLE(IPDistribution)
NUTRITION_DECODABLE(IntermittentFasting)
NUTRITION_DECODABLE(NutritionDishOrder)
NUTRITION_DECODABLE(NutritionCountry)
NUTRITION_DECODABLE(NutritionFavoriteDishPost)
NUTRITION_DECODABLE(NutritionFavoriteDishesGet)
NUTRITION_DECODABLE(WaitScreen)
NUTRITION_DECODABLE(NutritionCredentialsIA)
NUTRITION_DECODABLE(NutritionLoginAuth)
NUTRITION_DECODABLE(AyunoPhase)
NUTRITION_DECODABLE(AlertItem)
NUTRITION_DECODABLE(QuestionaryAnswer)
NUTRITION_DECODABLE(HealthQuestion)
NUTRITION_DECODABLE(QuestionaryQuestion)
NUTRITION_DECODABLE(HealthProfilePanel)
NUTRITION_DECODABLE(HealthProfilePage)

#undef NUTRITION_DECODABLE

}  // namespace nutrition
