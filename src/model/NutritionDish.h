#pragma once
// One dish of a generated menu: its course, macros, energy, recipe and images. All macro and
// energy values are whole numbers; a fractional one fails the whole menu.

#include <cstdint>
#include <optional>
#include <string>
#include <tuple>
#include <vector>

#include "json/JsonFields.h"

namespace nutrition {

struct NutritionDish {
  std::optional<std::int64_t> dishID;
  std::optional<std::string> name;
  std::optional<std::int64_t> dishOrderID;
  std::optional<std::string> typeName;
  std::optional<std::int64_t> carbs;
  std::optional<std::int64_t> proteins;
  std::optional<std::int64_t> fats;
  std::optional<std::int64_t> kcal;
  std::optional<std::vector<std::int64_t>> preferences;
  std::optional<std::int64_t> difficulty;
  std::optional<std::string> ingredients;
  std::optional<std::string> recipe;
  std::optional<std::vector<std::string>> binaryUrls;

  bool operator==(const NutritionDish&) const = default;

  static constexpr auto jsonFields() {
    using D = NutritionDish;
    using json::field;
    return std::tuple{
        field("DishId", &D::dishID),
        field("DishName", &D::name),
        field("DishOrderId", &D::dishOrderID),
        field("DishOrderName", &D::typeName),
        field("Carbs", &D::carbs),
        field("Proteins", &D::proteins),
        field("Fats", &D::fats),
        field("Kcal", &D::kcal),
        field("Preferences", &D::preferences),
        field("Difficulty", &D::difficulty),
        field("Ingredients", &D::ingredients),
        field("Recipe", &D::recipe),
        field("BinaryUrl", &D::binaryUrls),
    };
  }
};

}  // namespace nutrition
