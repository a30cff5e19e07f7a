#pragma once
// The short profile the facade hands to the host app. Unlike the backend records its JSON keys
// are lower camel case.

#include <cstdint>
#include <optional>
#include <string>
#include <tuple>

#include "base/Date.h"
#include "json/JsonFields.h"
#include "model/NutritionEnums.h"

namespace nutrition {

struct PublicProfile {
  std::optional<std::string> name;
  std::optional<std::string> lastName;
  std::optional<std::int64_t> height;
  std::optional<std::int64_t> weight;
  std::optional<NutritionGender> gender;
  std::optional<Date> birthDate;

  bool operator==(const PublicProfile&) const = default;

  static constexpr auto jsonFields() {
    using P = PublicProfile;
    return std::tuple{json::field("name", &P::name),     json::field("lastName", &P::lastName),
                      json::field("height", &P::height), json::field("weight", &P::weight),
                      json::field("gender", &P::gender), json::field("birthDate", &P::birthDate)};
  }
};

}  // namespace nutrition
