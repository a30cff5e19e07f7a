#pragma once
// A colour of the themed screens, made from the hexadecimal strings the host passes in.
//
// Accepted forms, case-insensitive, with an optional leading "#" and surrounding white space
// ignored: "RRGGBB" (opaque), "RRGGBBAA" (last pair is alpha) and the short "RGB" (each digit
// doubled, opaque). Anything else (empty, another length, a non-hex character) gives opaque
// black, so a bad setting is visible on screen and never fails.

#include <cmath>
#include <cstdint>
#include <string_view>

namespace nutrition {

struct Color {
  std::uint8_t red = 0;
  std::uint8_t green = 0;
  std::uint8_t blue = 0;
  std::uint8_t alpha = 255;

  bool operator==(const Color&) const = default;

  static Color fromHex(std::string_view hex);

  // The same colour at `opacity` (0 to 1, clamped), rounded to the nearest step.
  [[nodiscard]] Color withAlpha(double opacity) const {
    const double clamped = opacity < 0 ? 0 : (opacity > 1 ? 1 : opacity);
    return {red, green, blue, static_cast<std::uint8_t>(std::lround(clamped * 255))};
  }
};

}  // namespace nutrition
