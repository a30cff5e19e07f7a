#include "config/NutritionSDKUtils.h"

#include <gtest/gtest.h>

#include "support/TestPlatform.h"

namespace nutrition {
namespace {

TEST(NutritionSDKUtils, StartsWithTheDocumentedDefaults) {
  test::TestPlatform platform;
  const NutritionSDKUtils& utils = NutritionSDKUtils::sharedInstance();
  EXPECT_FALSE(utils.navigationBarColor.has_value());
  EXPECT_FALSE(utils.navigationTintColor.has_value());
  EXPECT_FALSE(utils.smallLogo.has_value());
  EXPECT_EQ(utils.primaryColor, (Color{0xEA, 0x6E, 0x29, 0xFF}));
  EXPECT_FALSE(utils.prefersLargeTitles);
  EXPECT_FALSE(utils.isShort);
  EXPECT_EQ(utils.selectedDiet, DietType::standard);
  EXPECT_TRUE(utils.intermittentFastingEnable);
  EXPECT_EQ(utils.waitingSeconds, 5);
  EXPECT_EQ(utils.navigationTitle, "");
  EXPECT_TRUE(utils.showWaitingScreens);
  EXPECT_EQ(utils.userCountry, NutritionUserCountry::spain);
  EXPECT_EQ(utils.sdkLanguage, NutritionLanguage::es);
  EXPECT_FALSE(utils.isSettingsFromMenu);
  EXPECT_TRUE(utils.showExcludedAliments);
  EXPECT_TRUE(utils.mainURL.starts_with("https://"));
  EXPECT_TRUE(utils.mainURL.ends_with("/"));

  // Its store is the "nutritionSDK" suite of the platform.
  ASSERT_NE(utils.userDefaults, nullptr);
  utils.userDefaults->set("profileFilledUsers", std::vector<std::string>{"m1"});
  EXPECT_EQ(platform.stores().suite("nutritionSDK")->getStringList("profileFilledUsers"),
            std::vector<std::string>{"m1"});
}

TEST(NutritionSDKUtils, LanguageComesFromTheDeviceAndFrenchStartsInSpanish) {
  const std::vector<std::pair<std::string, std::string_view>> cases{
      {"es", "es_ES"}, {"en", "en_EN"}, {"pt", "pt_PT"}, {"de", "de_DE"}, {"ca", "ca_ES"},
      {"it", "it_IT"}, {"fr", "es_ES"}, {"ja", "es_ES"}, {"", "es_ES"},
  };
  for (const auto& [device, code] : cases) {
    SCOPED_TRACE(device);
    test::TestPlatform platform({.language = device});
    EXPECT_EQ(NutritionSDKUtils::sharedInstance().languageCode(), code);
  }
}

TEST(NutritionSDKUtils, SettingsDoNotOutliveTheInstance) {
  {
    test::TestPlatform platform;
    NutritionSDKUtils::sharedInstance().mainURL = "http://127.0.0.1:1/";
    NutritionSDKUtils::sharedInstance().sdkLanguage = NutritionLanguage::fr;
    EXPECT_EQ(NutritionSDKUtils::sharedInstance().languageCode(), "fr_FR");
  }
  test::TestPlatform platform;
  EXPECT_EQ(NutritionSDKUtils::sharedInstance().mainURL, NutritionSDKUtils::kDefaultBackendURL);
  EXPECT_EQ(NutritionSDKUtils::sharedInstance().sdkLanguage, NutritionLanguage::es);
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
