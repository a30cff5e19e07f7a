// Decoding of the small shipped resources: fasting phases, information items, waiting screens
// and the string tables (objects of texts keyed by text).

#include <map>
#include <string>

#include "json/JsonReader.h"
#include "model/AlertItem.h"
#include "model/AyunoPhase.h"
#include "model/WaitScreen.h"

NUTRITION_JSON_DECODABLE(nutrition::WaitScreen)
NUTRITION_JSON_DECODABLE(nutrition::AyunoPhase)
NUTRITION_JSON_DECODABLE(nutrition::AlertItem)
NUTRITION_JSON_DECODABLE(std::string)

using StringTable = std::map<std::string, std::string, std::less<>>;
template nutrition::Result<StringTable> nutrition::json::decodeDocument<StringTable>(
    std::string_view);
