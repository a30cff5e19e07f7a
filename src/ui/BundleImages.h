#pragma once
// The images of the module's bundle that screens name in code. Each ships under
// resources/images at 1x, 2x and 3x; so do the images the resource files name (phase icons,
// waiting screens, info icons) and the check images of list answers, "<identifier>_<score>".

#include <array>
#include <cstdint>
#include <string>
#include <string_view>

namespace nutrition {

inline constexpr std::string_view kAyunoSectionImage = "ayuno-section";
inline constexpr std::string_view kFoodImage = "food";
inline constexpr std::string_view kPlaceholderMenuImage = "placeholder_menu";
inline constexpr std::string_view kFavoriteOnImage = "favorite-on";
inline constexpr std::string_view kFavoriteOffImage = "favorite-off";
inline constexpr std::string_view kBackImage = "back-image";
inline constexpr std::string_view kBackRecetaImage = "back-receta";

inline constexpr std::array kScreenImages{
    kAyunoSectionImage, kFoodImage, kPlaceholderMenuImage, kFavoriteOnImage,
    kFavoriteOffImage,  kBackImage, kBackRecetaImage};

// The check image of the answer scored `score` of the question `identifier`.
inline std::string checkImageName(std::string_view identifier, std::int64_t score) {
  return std::string(identifier) + "_" + std::to_string(score);
}

}  // namespace nutrition
