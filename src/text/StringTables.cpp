#include "text/StringTables.h"

#include <array>
#include <map>

#include "base/Log.h"
#include "json/JsonReader.h"

namespace nutrition {

std::string_view stringsLanguage(std::string_view deviceLanguage) {
  static constexpr std::array<std::string_view, 7> kLanguages{"es", "en", "pt", "de",
                                                              "ca", "it", "fr"};
  for (const auto language : kLanguages) {
    if (language == deviceLanguage) return language;
  }
  return "es";
}

StringTables::StringTables(const ResourceBundle& resources, std::string_view deviceLanguage)
    : language_(stringsLanguage(deviceLanguage)) {
  // The keys are the Spanish texts: Spanish needs no table.
  if (language_ == "es") return;
  const std::string name = "strings/" + std::string(kStringsTable) + "." + std::string(language_);
  const auto bytes = resources.resource(name, "json");
  if (!bytes) return;
  auto table = json::decodeDocument<std::map<std::string, std::string, std::less<>>>(*bytes);
  if (!table.ok()) fatal(name + ".json is malformed: " + table.error().message);
  entries_.reserve(table->size());
  for (auto& [key, value] : *table)
    entries_.emplace(key, std::move(value));
}

std::string StringTables::localized(std::string_view spanishText) const {
  const auto found = entries_.find(spanishText);
  return found == entries_.end() ? std::string(spanishText) : found->second;
}

}  // namespace nutrition
