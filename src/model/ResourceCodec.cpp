// Decoding of the shipped resources: questionnaire, fasting phases, information items, waiting
// screens and the string tables (objects of texts keyed by text).

#include <map>
#include <string>

#include "json/JsonReader.h"
#include "model/AlertItem.h"
#include "model/AyunoPhase.h"
#include "model/HealthProfile.h"
#include "model/WaitScreen.h"

NUTRITION_JSON_DECODABLE(nutrition::WaitScreen)
NUTRITION_JSON_DECODABLE(nutrition::AyunoPhase)
NUTRITION_JSON_DECODABLE(nutrition::AlertItem)
NUTRITION_JSON_DECODABLE(nutrition::QuestionaryAnswer)
NUTRITION_JSON_DECODABLE(nutrition::HealthQuestion)
NUTRITION_JSON_DECODABLE(nutrition::QuestionaryQuestion)
NUTRITION_JSON_DECODABLE(nutrition::HealthProfilePanel)
NUTRITION_JSON_DECODABLE(nutrition::HealthProfilePage)
NUTRITION_JSON_DECODABLE(std::string)

using StringTable = std::map<std::string, std::string, std::less<>>;
template nutrition::Result<StringTable> nutrition::json::decodeDocument<StringTable>(
    std::string_view);
