#pragma once
// Names of the module's shipped resources.

#include <string_view>

#include "text/StringTables.h"

namespace nutrition::NutritionConfigs {

// The regular font of the screens (a file of the resource bundle).
inline constexpr std::string_view FONT_REGULAR = "DejaVuSans";
// The module's resource bundle, and the table all user-facing texts are looked up in.
inline constexpr std::string_view NUTRITION_BUNDLE = "NutritionKit";
inline constexpr std::string_view STRINGS_TABLE = kStringsTable;

}  // namespace nutrition::NutritionConfigs
