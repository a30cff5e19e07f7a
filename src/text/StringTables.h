#pragma once
// Every user-facing text is looked up in the "NutritionStrings" table of the module's
// resources, keyed by its Spanish text, in the device's language. A missing table or entry
// gives the Spanish text itself.
//
// The device's table is read and parsed once, when the tables are made (once per core), so a
// lookup is one hash probe. The language is the device's, fixed for the tables' life; the
// host's language setting only picks what is sent to the backend.
//
//   StringTables strings(resources, "en");
//   strings.localized("Hoy");   // "Today"

#include <memory>
#include <string>
#include <string_view>
#include <unordered_map>

#include "platform/ResourceBundle.h"

namespace nutrition {

inline constexpr std::string_view kStringsTable = "NutritionStrings";

class StringTables {
 public:
  // `deviceLanguage` is an ISO 639 code ("fr"); one the module has no table for reads Spanish.
  StringTables(const ResourceBundle& resources, std::string_view deviceLanguage);

  std::string localized(std::string_view spanishText) const;
  // The table's language: "es", "en", "pt", "de", "ca", "it" or "fr".
  std::string_view language() const { return language_; }

 private:
  struct Hash {
    using is_transparent = void;
    std::size_t operator()(std::string_view text) const {
      return std::hash<std::string_view>{}(text);
    }
  };

  std::string_view language_;
  std::unordered_map<std::string, std::string, Hash, std::equal_to<>> entries_;
};

// The table language for a device language code: one of es, en, pt, de, ca, it, fr; Spanish
// for any other.
std::string_view stringsLanguage(std::string_view deviceLanguage);

}  // namespace nutrition
