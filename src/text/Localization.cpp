#include "text/Localization.h"

#include <array>

#include "config/NutritionConfigs.h"
#include "platform/Platform.h"

namespace nutrition {

std::string_view stringsLanguage(std::string_view deviceLanguage) {
  static constexpr std::array<std::string_view, 7> kLanguages{"es", "en", "pt", "de",
                                                              "ca", "it", "fr"};
  for (const auto language : kLanguages) {
    if (language == deviceLanguage) return language;
  }
  return "es";
}

std::string localized(std::string_view spanishText) {
  const auto platform = Platform::current();
  const auto language = stringsLanguage(platform->locale->languageCode());
  if (language == "es") return std::string(spanishText);
  const auto table = platform->resources->strings(NutritionConfigs::STRINGS_TABLE, language);
  if (!table) return std::string(spanishText);
  const auto found = table->find(spanishText);
  return found == table->end() ? std::string(spanishText) : found->second;
}

}  // namespace nutrition
