#pragma once
// The sandbox backend's seed: client accounts, the catalogues in every language, and the dish
// library. The data files under sandbox/data are compiled into the program, so the sandbox runs
// from anywhere.

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <tuple>
#include <vector>

#include "json/JsonFields.h"
#include "model/NutritionEnums.h"

namespace nutrition::sandbox {

// A text in the seven languages; a missing translation falls back to Spanish.
struct LocalizedText {
  std::optional<std::string> es, en, pt, de, ca, it, fr;

  const std::string& in(NutritionLanguage language) const;

  static constexpr auto jsonFields() {
    using T = LocalizedText;
    using json::field;
    return std::tuple{field("es", &T::es), field("en", &T::en), field("pt", &T::pt),
                      field("de", &T::de), field("ca", &T::ca), field("it", &T::it),
                      field("fr", &T::fr)};
  }
};

struct SeedAccount {
  std::int64_t clientId = 0;
  std::string clientAlias;
  std::string clientName;
  bool enabled = true;
  std::string password;

  static constexpr auto jsonFields() {
    using A = SeedAccount;
    using json::required;
    return std::tuple{required("clientId", &A::clientId), required("clientAlias", &A::clientAlias),
                      required("clientName", &A::clientName), required("enabled", &A::enabled),
                      required("password", &A::password)};
  }
};

// One intake's share of a distribution: percentages of the day's carbohydrate, protein and fat.
struct SeedSplit {
  std::int64_t intake = 0;
  std::int64_t carbs = 0;
  std::int64_t proteins = 0;
  std::int64_t fats = 0;

  static constexpr auto jsonFields() {
    using S = SeedSplit;
    using json::required;
    return std::tuple{required("intake", &S::intake), required("carbs", &S::carbs),
                      required("proteins", &S::proteins), required("fats", &S::fats)};
  }
};

// An entry of any catalogue; each catalogue uses the optional fields it needs.
struct SeedEntry {
  std::int64_t id = 0;
  LocalizedText name;
  std::optional<std::string> type;
  std::optional<std::vector<std::int64_t>> aliments;
  std::optional<std::string> documentId;
  std::optional<bool> enabled;
  std::optional<std::vector<SeedSplit>> split;

  static constexpr auto jsonFields() {
    using E = SeedEntry;
    using json::field;
    return std::tuple{json::required("id", &E::id),
                      json::required("name", &E::name),
                      field("type", &E::type),
                      field("aliments", &E::aliments),
                      field("documentId", &E::documentId),
                      field("enabled", &E::enabled),
                      field("split", &E::split)};
  }
};

struct SeedCatalogues {
  std::vector<SeedEntry> preferences, excludedAliments, physicalIntensities, balances, fastings,
      dishOrders, intakes, distributions;

  static constexpr auto jsonFields() {
    using C = SeedCatalogues;
    using json::required;
    return std::tuple{required("preferences", &C::preferences),
                      required("excludedAliments", &C::excludedAliments),
                      required("physicalIntensities", &C::physicalIntensities),
                      required("balances", &C::balances),
                      required("fastings", &C::fastings),
                      required("dishOrders", &C::dishOrders),
                      required("intakes", &C::intakes),
                      required("distributions", &C::distributions)};
  }
};

struct SeedDish {
  std::int64_t id = 0;
  std::int64_t course = 0;            // dish order
  std::vector<std::int64_t> intakes;  // the intakes it suits
  LocalizedText name, ingredients, recipe;
  std::int64_t difficulty = 1;
  std::int64_t carbs = 0, proteins = 0, fats = 0, kcal = 0;  // one standard portion
  std::vector<std::int64_t> conflictsPreferences;
  std::vector<std::int64_t> conflictsExcluded;

  static constexpr auto jsonFields() {
    using D = SeedDish;
    using json::required;
    return std::tuple{required("id", &D::id),
                      required("course", &D::course),
                      required("intakes", &D::intakes),
                      required("name", &D::name),
                      required("ingredients", &D::ingredients),
                      required("recipe", &D::recipe),
                      required("difficulty", &D::difficulty),
                      required("carbs", &D::carbs),
                      required("proteins", &D::proteins),
                      required("fats", &D::fats),
                      required("kcal", &D::kcal),
                      required("conflictsPreferences", &D::conflictsPreferences),
                      required("conflictsExcluded", &D::conflictsExcluded)};
  }
};

struct SeedData {
  std::vector<SeedAccount> accounts;
  SeedCatalogues catalogues;
  std::vector<SeedDish> dishes;

  // The seed compiled into the program; a broken seed stops the program.
  static const SeedData& embedded();

  const SeedDish* dish(std::int64_t id) const;
  const SeedEntry* entry(const std::vector<SeedEntry>& catalogue, std::int64_t id) const;
};

// The language a request asks for; anything unknown, or nothing, is Spanish.
NutritionLanguage requestLanguage(std::string_view code);

}  // namespace nutrition::sandbox
