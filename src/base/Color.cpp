#include "base/Color.h"

#include <optional>

namespace nutrition {
namespace {

std::optional<std::uint8_t> hexDigit(char c) {
  if (c >= '0' && c <= '9') return static_cast<std::uint8_t>(c - '0');
  if (c >= 'a' && c <= 'f') return static_cast<std::uint8_t>(c - 'a' + 10);
  if (c >= 'A' && c <= 'F') return static_cast<std::uint8_t>(c - 'A' + 10);
  return std::nullopt;
}

std::string_view trim(std::string_view text) {
  constexpr std::string_view kSpace = " \t\r\n";
  const auto first = text.find_first_not_of(kSpace);
  if (first == std::string_view::npos) return {};
  return text.substr(first, text.find_last_not_of(kSpace) - first + 1);
}

}  // namespace

Color Color::fromHex(std::string_view hex) {
  hex = trim(hex);
  if (hex.starts_with('#')) hex.remove_prefix(1);
  if (hex.size() != 3 && hex.size() != 6 && hex.size() != 8) return Color{};

  std::uint8_t nibbles[8] = {};
  for (std::size_t i = 0; i < hex.size(); ++i) {
    const auto digit = hexDigit(hex[i]);
    if (!digit) return Color{};
    nibbles[i] = *digit;
  }
  const auto pair = [&](std::size_t i) {
    return static_cast<std::uint8_t>(nibbles[i] << 4 | nibbles[i + 1]);
  };
  if (hex.size() == 3) {
    const auto doubled = [&](std::size_t i) { return static_cast<std::uint8_t>(nibbles[i] * 17); };
    return Color{doubled(0), doubled(1), doubled(2), 255};
  }
  return Color{pair(0), pair(2), pair(4), hex.size() == 8 ? pair(6) : std::uint8_t{255}};
}

}  // namespace nutrition
