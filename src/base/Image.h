#pragma once
// An image as encoded bytes (PNG or JPEG); each platform decodes it for display.

#include <cstdint>
#include <vector>

namespace nutrition {

struct Image {
  std::vector<std::uint8_t> data;

  bool operator==(const Image&) const = default;
};

}  // namespace nutrition
