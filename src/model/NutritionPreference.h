#pragma once
// The preference catalogue (allergens, intolerances, principles such as vegan) and the
// excluded-aliment catalogue. Both share PreferenceType; "Intollerance" keeps the backend's
// spelling and any other string fails the whole catalogue.

#include <array>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <tuple>
#include <utility>
#include <vector>

#include "base/RawEnum.h"
#include "json/JsonFields.h"

namespace nutrition {

enum class PreferenceType { allergen, intollerance, principles };

template <>
struct RawValues<PreferenceType> {
  static constexpr std::array table{
      std::pair{PreferenceType::allergen, std::string_view{"Allergen"}},
      std::pair{PreferenceType::intollerance, std::string_view{"Intollerance"}},
      std::pair{PreferenceType::principles, std::string_view{"Principles"}},
  };
};

struct NutritionPreference {
  std::optional<std::int64_t> preferenceID;
  std::optional<std::string> preferenceName;
  std::optional<PreferenceType> preferenceType;
  std::optional<std::vector<std::int64_t>> alimentIDS;

  bool operator==(const NutritionPreference&) const = default;

  static constexpr auto jsonFields() {
    using P = NutritionPreference;
    return std::tuple{json::field("PreferenceId", &P::preferenceID),
                      json::field("PreferenceName", &P::preferenceName),
                      json::field("PreferenceType", &P::preferenceType),
                      json::field("AlimentIds", &P::alimentIDS)};
  }
};

// `preferenceType` is local only: never read from or written to JSON.
struct NutritionExcluded {
  std::optional<std::int64_t> excludedAlimentId;
  std::optional<std::string> excludedAlimentName;
  std::optional<PreferenceType> preferenceType;
  std::optional<std::vector<std::int64_t>> alimentIDS;

  bool operator==(const NutritionExcluded&) const = default;

  static constexpr auto jsonFields() {
    using E = NutritionExcluded;
    return std::tuple{json::field("ExcludedAlimentId", &E::excludedAlimentId),
                      json::field("ExcludedAlimentName", &E::excludedAlimentName),
                      json::field("AlimentIds", &E::alimentIDS)};
  }
};

}  // namespace nutrition
