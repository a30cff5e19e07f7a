#pragma once
// The configuration record: every setting the host gives through the facade, read by the
// session, the backend clients and the screens. Settings live in memory only; the defaults
// below apply again at every launch. It also offers the small persistence helpers: which
// members filled in their profile, the local image folders and cache, and the supplement
// advice of the bariatric phases.

#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <string_view>

#include "base/Color.h"
#include "base/Image.h"
#include "base/Lifetime.h"
#include "base/Result.h"
#include "config/ImageCache.h"
#include "model/NutritionEnums.h"
#include "platform/Platform.h"

namespace nutrition {

class NutritionSDKUtils {
 public:
  // Used until the host calls setURL; hosts point NutritionKit at their backend.
  static constexpr std::string_view kDefaultBackendURL = "https://api.nutritionkit.example/";
  static constexpr std::string_view kDefaultPrimaryColor = "EA6E29";
  static constexpr std::string_view kUserDefaultsSuite = "nutritionSDK";
  static constexpr std::string_view kProfileFilledKey = "profileFilledUsers";

  static NutritionSDKUtils& sharedInstance();

  // Takes the "nutritionSDK" suite, the HTTP client and main queue for image downloads and the
  // documents folder from `platform`, starts in the language `deviceLanguage` maps to, and
  // creates the six local folders.
  NutritionSDKUtils(const Platform& platform, std::string_view deviceLanguage);

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
  [[nodiscard]] std::string_view languageCode() const { return rawValue(sdkLanguage); }

  // Whether `memberID` (the session's member) is recorded as having filled in the profile.
  [[nodiscard]] bool isProfileFilled(std::string_view memberID) const;
  // Records `memberID` (duplicates are kept).
  void setUserProfileAsFilled(const std::string& memberID);

  void createFolder(Folder folder) const { images_.createFolder(folder); }
  [[nodiscard]] std::string getURLForFolder(Folder folder) const {
    return images_.folderURL(folder);
  }
  [[nodiscard]] bool existImage(std::string_view urlImage, Folder folder) const {
    return images_.exists(urlImage, folder);
  }
  void writeImage(const Image& image, std::string_view url, Folder folder) const {
    images_.write(image, url, folder);
  }
  [[nodiscard]] std::optional<Image> getImage(std::string_view url, Folder folder) const {
    return images_.read(url, folder);
  }
  // Downloads an image and caches it; the completion runs on the main queue with the image, or
  // nothing when no whole image came.
  void downloadImage(const std::string& url, Folder folder,
                     std::function<void(std::optional<Image>)> completion) const;

  using DataCompletion = std::function<void(std::optional<std::string> data,
                                            std::optional<int> status, std::optional<Error>)>;
  // A plain GET; the completion runs on the HTTP client's thread. A string that is no URL
  // sends nothing.
  void getData(const std::string& url, DataCompletion completion) const;

  // The supplement a bariatric diet (dietID 10 to 13) prescribes for an intake.
  static std::optional<std::string> getSuplementosForPhase(std::int64_t dietID,
                                                           std::int64_t intakeID);

 private:
  std::shared_ptr<HttpClient> http_;
  std::weak_ptr<MainQueue> queue_;
  ImageCache images_;
  Lifetime lifetime_;
};

// The starting language for a device language code: en, pt, de, ca and it have their own;
// every other language, French included, starts in Spanish.
NutritionLanguage sdkLanguageForDeviceLanguage(std::string_view languageCode);

}  // namespace nutrition
