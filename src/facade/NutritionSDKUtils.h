#pragma once
// The configuration record: every setting the host gives through the facade, read by the
// session, the backend clients and the screens. Settings live in memory only; the defaults
// below apply again at every launch.

#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <string_view>

#include "model/NutritionEnums.h"
#include "platform/KeyValueStore.h"
#include "ui/Color.h"
#include "ui/Image.h"

namespace nutrition {

struct Platform;

class NutritionSDKUtils {
 public:
  // Used until the host calls setURL; hosts point NutritionKit at their backend.
  static constexpr std::string_view kDefaultBackendURL = "https://api.nutritionkit.example/";
  static constexpr std::string_view kDefaultPrimaryColor = "EA6E29";
  static constexpr std::string_view kUserDefaultsSuite = "nutritionSDK";

  static NutritionSDKUtils& sharedInstance();

  explicit NutritionSDKUtils(const Platform& platform);

  std::optional<Color> navigationBarColor;
  std::optional<Color> navigationTintColor;
  std::optional<Image> smallLogo;
  Color primaryColor = Color::fromHex(kDefaultPrimaryColor);
  bool prefersLargeTitles = false;
  bool isShort = false;
  DietType selectedDiet = DietType::standard;
  bool intermittentFastingEnable = true;
  std::int64_t waitingSeconds = 5;
  std::string navigationTitle;
  std::shared_ptr<KeyValueStore> userDefaults;
  bool showWaitingScreens = true;
  NutritionUserCountry userCountry = NutritionUserCountry::spain;
  NutritionLanguage sdkLanguage = NutritionLanguage::es;
  bool isSettingsFromMenu = false;
  bool showExcludedAliments = true;
  std::string mainURL{kDefaultBackendURL};

  // The backend's code for the configured language ("es_ES", "en_EN", ...).
  std::string_view languageCode() const { return rawValue(sdkLanguage); }
};

// The starting language for a device language code: en, pt, de, ca and it have their own;
// every other language, French included, starts in Spanish.
NutritionLanguage sdkLanguageForDeviceLanguage(std::string_view languageCode);

}  // namespace nutrition
