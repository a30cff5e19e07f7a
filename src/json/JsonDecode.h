#pragma once
// The entry point for decoding a whole JSON text, declared apart from its definition (in
// JsonReader.h) so that callers stay light: the model's codec sources instantiate it for every
// record, list of records and string table the module reads.
//
// T is a record with jsonFields(), std::vector<T>, std::map<std::string, T, std::less<>>,
// std::string, std::int64_t, double, bool, Date or a raw-valued enumeration. A text that is not
// valid JSON anywhere fails as a whole, as does a value of the wrong type; the error message
// names where reading stopped ("[0].Days[1].Intakes[0].Dishes[0].Kcal").

#include <string_view>

#include "base/Result.h"

namespace nutrition::json {

template <class T>
Result<T> decodeDocument(std::string_view text);

}  // namespace nutrition::json
