#pragma once
// JSON text to records and back, for every backend record and every record of the shipped
// resources (questionnaire, fasting phases, information items, waiting screens).
//
//   auto users = decodeJsonArray<NutritionUserResponse>(body);   // Result<std::vector<...>>
//   auto body = encodeJson(user);                                // Result<std::string>
//
// Decoding is compiled once per record family, in the model's *Codec.cpp sources (member, menu,
// favourites and login, catalogues, distributions, questionnaire, resources), which keeps each
// of them quick to compile; a record missing from them does not link.

#include <string_view>
#include <vector>

#include "base/Result.h"
#include "json/JsonDecode.h"
#include "json/JsonEncode.h"

namespace nutrition {

template <class T>
Result<T> decodeJson(std::string_view json) {
  return json::decodeDocument<T>(json);
}

template <class T>
Result<std::vector<T>> decodeJsonArray(std::string_view json) {
  return json::decodeDocument<std::vector<T>>(json);
}

using json::encodeJson;

}  // namespace nutrition
