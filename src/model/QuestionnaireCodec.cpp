// Decoding of the health questionnaire resources.

#include "json/JsonReader.h"
#include "model/HealthProfile.h"

NUTRITION_JSON_DECODABLE(nutrition::QuestionaryAnswer)
NUTRITION_JSON_DECODABLE(nutrition::HealthQuestion)
NUTRITION_JSON_DECODABLE(nutrition::QuestionaryQuestion)
NUTRITION_JSON_DECODABLE(nutrition::HealthProfilePanel)
NUTRITION_JSON_DECODABLE(nutrition::HealthProfilePage)
