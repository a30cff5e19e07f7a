#pragma once
// One phase of a fast, as the shipped table "fasesAyuno" lists them: what the body is doing
// from `hour` hours on. JSON keys are the field names.

#include <cstdint>
#include <optional>
#include <string>
#include <tuple>

#include "json/JsonFields.h"

namespace nutrition {

struct AyunoPhase {
  std::optional<std::string> name;
  std::optional<std::string> timeInfo;
  std::optional<std::string> image;
  std::optional<std::int64_t> hour;
  std::optional<std::string> helpText;

  bool operator==(const AyunoPhase&) const = default;

  static constexpr auto jsonFields() {
    using P = AyunoPhase;
    return std::tuple{json::field("name", &P::name), json::field("timeInfo", &P::timeInfo),
                      json::field("image", &P::image), json::field("hour", &P::hour),
                      json::field("helpText", &P::helpText)};
  }
};

}  // namespace nutrition
