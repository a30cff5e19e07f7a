#pragma once
// The small catalogues the questionnaire offers: activity levels, weight goals, fasting
// schemes, courses and countries. Activity levels 1 to 4 and balances 1 and 2 have fixed
// meanings in the energy calculation (NutritionUser).

#include <cstdint>
#include <optional>
#include <string>
#include <tuple>

#include "json/JsonFields.h"

namespace nutrition {

struct PhysicalIntensity {
  std::optional<std::string> id;
  std::optional<std::string> physicalIntensityName;
  std::optional<std::int64_t> physicalIntensityID;

  bool operator==(const PhysicalIntensity&) const = default;

  static constexpr auto jsonFields() {
    using P = PhysicalIntensity;
    return std::tuple{json::field("_id", &P::id),
                      json::field("PhysicalIntensityName", &P::physicalIntensityName),
                      json::field("PhysicalIntensityId", &P::physicalIntensityID)};
  }
};

struct NutritionBalance {
  std::optional<std::int64_t> desiredBalanceID;
  std::optional<std::string> desiredBalanceName;

  bool operator==(const NutritionBalance&) const = default;

  static constexpr auto jsonFields() {
    using B = NutritionBalance;
    return std::tuple{json::field("DesiredBalanceId", &B::desiredBalanceID),
                      json::field("DesiredBalanceName", &B::desiredBalanceName)};
  }
};

// A fasting scheme; "Enabled" is required and only enabled schemes are offered.
struct IntermittentFasting {
  std::optional<std::int64_t> intermittentFastingID;
  std::optional<std::string> intermittentFastingName;
  bool enabled = false;

  bool operator==(const IntermittentFasting&) const = default;

  static constexpr auto jsonFields() {
    using F = IntermittentFasting;
    return std::tuple{json::field("IntermittentFastingId", &F::intermittentFastingID),
                      json::field("IntermittentFastingName", &F::intermittentFastingName),
                      json::required("Enabled", &F::enabled)};
  }
};

// A course ("dish order"): starter, main, dessert...
struct NutritionDishOrder {
  std::optional<std::int64_t> dishOrderID;
  std::optional<std::string> dishOrderName;

  bool operator==(const NutritionDishOrder&) const = default;

  static constexpr auto jsonFields() {
    using O = NutritionDishOrder;
    return std::tuple{json::field("DishOrderId", &O::dishOrderID),
                      json::field("DishOrderName", &O::dishOrderName)};
  }
};

struct NutritionCountry {
  std::optional<std::string> countryName;
  std::optional<std::int64_t> countryID;

  bool operator==(const NutritionCountry&) const = default;

  static constexpr auto jsonFields() {
    using C = NutritionCountry;
    return std::tuple{json::field("CountryName", &C::countryName),
                      json::field("CountryId", &C::countryID)};
  }
};

}  // namespace nutrition
