#pragma once
// Favourite dishes: the body that adds one, and the member's list as the backend returns it.
// Both write "Dish"/"Dishes" before "UserId".

#include <optional>
#include <string>
#include <tuple>
#include <vector>

#include "json/JsonFields.h"
#include "model/NutritionDish.h"

namespace nutrition {

struct NutritionFavoriteDishPost {
  std::optional<std::string> userId;
  std::optional<NutritionDish> dish;

  bool operator==(const NutritionFavoriteDishPost&) const = default;

  static constexpr auto jsonFields() {
    using P = NutritionFavoriteDishPost;
    return std::tuple{json::field("Dish", &P::dish), json::field("UserId", &P::userId)};
  }
};

struct NutritionFavoriteDishesGet {
  std::optional<std::string> userId;
  std::optional<std::vector<NutritionDish>> dishes;

  bool operator==(const NutritionFavoriteDishesGet&) const = default;

  static constexpr auto jsonFields() {
    using G = NutritionFavoriteDishesGet;
    return std::tuple{json::field("Dishes", &G::dishes), json::field("UserId", &G::userId)};
  }
};

}  // namespace nutrition
