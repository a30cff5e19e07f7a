#pragma once
// What the backend answers to the client account's login ("api/auth/login"): an array whose
// first element names the account. NutritionLoginAuth is the shape of a token answer, which the
// current login exchange does not produce.

#include <cstdint>
#include <optional>
#include <string>
#include <tuple>

#include "json/JsonFields.h"

namespace nutrition {

struct NutritionCredentialsIA {
  std::optional<std::int64_t> clientID;
  std::optional<std::string> clientAlias;
  std::optional<std::string> clientName;
  std::optional<bool> enabled;

  bool operator==(const NutritionCredentialsIA&) const = default;

  static constexpr auto jsonFields() {
    using C = NutritionCredentialsIA;
    return std::tuple{
        json::field("ClientId", &C::clientID), json::field("ClientAlias", &C::clientAlias),
        json::field("ClientName", &C::clientName), json::field("Enabled", &C::enabled)};
  }
};

struct NutritionLoginAuth {
  std::optional<std::string> token;

  bool operator==(const NutritionLoginAuth&) const = default;

  static constexpr auto jsonFields() {
    return std::tuple{json::field("token", &NutritionLoginAuth::token)};
  }
};

}  // namespace nutrition
