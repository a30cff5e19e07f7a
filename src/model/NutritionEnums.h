#pragma once
// The small enumerations of the member record, each tied to the raw value the backend uses.
// Constructing from an unknown raw value yields no case (fromRawValue returns nullopt).

#include <array>
#include <cstdint>
#include <string_view>
#include <utility>

#include "base/RawEnum.h"

namespace nutrition {

enum class NutritionGender { male, female };

// The index of a language (0 to 6) is its underlying value.
enum class NutritionLanguage : std::uint8_t { es, en, pt, de, ca, it, fr };

enum class NutritionUserCountry {
  spain,
  portugal,
  colombia,
  uk,
  france,
  usa,
  germany,
  italy,
  cataluna,
  spainEUS,
  usa2,
};

enum class DietType { standard, diabetes };

template <>
struct RawValues<NutritionGender> {
  static constexpr std::array table{
      std::pair{NutritionGender::male, std::string_view{"Male"}},
      std::pair{NutritionGender::female, std::string_view{"Female"}},
  };
};

template <>
struct RawValues<NutritionLanguage> {
  static constexpr std::array table{
      std::pair{NutritionLanguage::es, std::string_view{"es_ES"}},
      std::pair{NutritionLanguage::en, std::string_view{"en_EN"}},
      std::pair{NutritionLanguage::pt, std::string_view{"pt_PT"}},
      std::pair{NutritionLanguage::de, std::string_view{"de_DE"}},
      std::pair{NutritionLanguage::ca, std::string_view{"ca_ES"}},
      std::pair{NutritionLanguage::it, std::string_view{"it_IT"}},
      std::pair{NutritionLanguage::fr, std::string_view{"fr_FR"}},
  };
};

template <>
struct RawValues<NutritionUserCountry> {
  using C = NutritionUserCountry;
  static constexpr std::array table{
      std::pair{C::spain, std::int64_t{1}},     std::pair{C::portugal, std::int64_t{2}},
      std::pair{C::colombia, std::int64_t{3}},  std::pair{C::uk, std::int64_t{4}},
      std::pair{C::france, std::int64_t{5}},    std::pair{C::usa, std::int64_t{9}},
      std::pair{C::germany, std::int64_t{10}},  std::pair{C::italy, std::int64_t{11}},
      std::pair{C::cataluna, std::int64_t{12}}, std::pair{C::spainEUS, std::int64_t{13}},
      std::pair{C::usa2, std::int64_t{14}},
  };
};

template <>
struct RawValues<DietType> {
  static constexpr std::array table{
      std::pair{DietType::standard, std::int64_t{1}},
      std::pair{DietType::diabetes, std::int64_t{8}},
  };
};

// Every language in index order.
constexpr std::array<NutritionLanguage, 7> allNutritionLanguages() {
  std::array<NutritionLanguage, 7> all{};
  for (std::size_t i = 0; i < all.size(); ++i)
    all[i] = RawValues<NutritionLanguage>::table[i].first;
  return all;
}

constexpr std::uint8_t languageIndex(NutritionLanguage language) {
  return static_cast<std::uint8_t>(language);
}

}  // namespace nutrition
