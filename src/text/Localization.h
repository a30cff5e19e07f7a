#pragma once
// Every user-facing text is looked up in the "NutritionStrings" table of the module's
// resources, keyed by its Spanish text, in the device's language; a missing table or entry
// gives the Spanish text itself.

#include <string>
#include <string_view>

namespace nutrition {

std::string localized(std::string_view spanishText);

// The table language for a device language code: one of es, en, pt, de, ca, it, fr; Spanish
// for any other.
std::string_view stringsLanguage(std::string_view deviceLanguage);

}  // namespace nutrition
