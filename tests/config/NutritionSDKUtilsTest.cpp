#include "config/NutritionSDKUtils.h"

#include <gtest/gtest.h>

#include "support/TestPlatform.h"

namespace nutrition {
namespace {

TEST(NutritionSDKUtils, LanguageComesFromTheDeviceAndFrenchStartsInSpanish) {
  const std::vector<std::pair<std::string, std::string_view>> cases{
      {"en", "en_EN"}, {"ca", "ca_ES"}, {"fr", "es_ES"}, {"ja", "es_ES"}, {"", "es_ES"}};
  test::TestPlatform platform;
  for (const auto& [device, code] : cases) {
    SCOPED_TRACE(device);
    EXPECT_EQ(NutritionSDKUtils(platform.bundle(), device).languageCode(), code);
  }
}

TEST(Color, AcceptsTheDocumentedHexFormsAndGivesBlackOtherwise) {
  const Color black{0, 0, 0, 255};
  const std::vector<std::pair<std::string, Color>> cases{
      {"EA6E29", {0xEA, 0x6E, 0x29, 0xFF}},
      {"ea6e29", {0xEA, 0x6E, 0x29, 0xFF}},
      {"#EA6E29", {0xEA, 0x6E, 0x29, 0xFF}},
      {" 00ff0080\n", {0x00, 0xFF, 0x00, 0x80}},
      {"#f80", {0xFF, 0x88, 0x00, 0xFF}},
      {"", black},
      {"#", black},
      {"EA6E2", black},
      {"EA6E29F", black},
      {"GG0000", black},
      {"0x1234", black},
      {"##EA6E29", black},
      {"EA6E29FF00", black},
  };
  for (const auto& [hex, color] : cases) {
    SCOPED_TRACE(hex);
    EXPECT_EQ(Color::fromHex(hex), color);
  }
}

}  // namespace
}  // namespace nutrition
