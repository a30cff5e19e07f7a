// Every image a screen or a resource names ships in the bundle at 1x, 2x and 3x, each a PNG
// whose 2x and 3x sizes are twice and three times the 1x size.

#include <gtest/gtest.h>

#include <cstdint>
#include <filesystem>
#include <optional>

#include "base/File.h"
#include "tools/imagegen/ImageNames.h"
#include "views/Geometry.h"

namespace nutrition {
namespace {

const std::filesystem::path kResources = NUTRITION_RESOURCES_DIR;

// The pixel size in a PNG's header; nothing when the file is missing or not a PNG.
std::optional<Size> pngSize(const std::filesystem::path& file) {
  const auto bytes = readFile(file);
  static constexpr unsigned char kSignature[] = {0x89, 'P', 'N', 'G', '\r', '\n', 0x1A, '\n'};
  if (!bytes || bytes->size() < 24 ||
      bytes->compare(0, 8, reinterpret_cast<const char*>(kSignature), 8) != 0 ||
      bytes->compare(12, 4, "IHDR") != 0) {
    return std::nullopt;
  }
  auto word = [&](std::size_t at) {
    std::uint32_t value = 0;
    for (std::size_t i = 0; i < 4; ++i)
      value = value << 8 | static_cast<unsigned char>((*bytes)[at + i]);
    return static_cast<double>(value);
  };
  return Size{word(16), word(20)};
}

TEST(BundleImages, EveryNamedImageShipsAtThreeScales) {
  const auto required = imagegen::requiredImages(kResources);
  ASSERT_GT(required.size(), 20u);
  bool checks = false;
  for (const auto& image : required) {
    SCOPED_TRACE(image.name);
    checks |= image.kind == imagegen::ImageKind::check;
    const auto one = pngSize(kResources / "images" / (image.name + ".png"));
    ASSERT_TRUE(one.has_value()) << "missing or not a PNG";
    for (int scale : {2, 3}) {
      const auto scaled =
          pngSize(kResources / "images" / (image.name + "@" + std::to_string(scale) + "x.png"));
      ASSERT_TRUE(scaled.has_value()) << "missing at " << scale << "x";
      EXPECT_EQ(scaled->width, one->width * scale);
      EXPECT_EQ(scaled->height, one->height * scale);
    }
  }
  EXPECT_TRUE(checks) << "no check image of a list question";
}

}  // namespace
}  // namespace nutrition
