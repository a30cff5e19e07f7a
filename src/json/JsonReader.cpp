#include "json/JsonReader.h"

namespace nutrition::json {

bool read(ReadContext& in, Date& out) {
  std::string_view text;
  if (!in.readString(text)) return false;
  const auto date = parseIso8601(text);
  if (!date) return in.failValue("not an ISO 8601 date-time within years 0001 to 9999");
  out = *date;
  return true;
}

}  // namespace nutrition::json
