#pragma once
// JSON text to records and back, for every backend record and every record of the shipped
// resources (questionnaire, fasting phases, information items, waiting screens).
//
//   auto users = decodeJsonArray<NutritionUserResponse>(body);   // Result<std::vector<...>>
//   auto body = encodeJson(user);                                // Result<std::string>
//
// Decoding is instantiated for the model's records in ModelCodec.cpp, the one model source
// that includes simdjson.

#include <string_view>
#include <vector>

#include "base/Result.h"
#include "json/JsonEncode.h"

namespace nutrition {

template <class T>
Result<T> decodeJson(std::string_view json);

template <class T>
Result<std::vector<T>> decodeJsonArray(std::string_view json);

using json::encodeJson;

}  // namespace nutrition
