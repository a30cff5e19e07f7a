#include "facade/NutritionSDKUtils.h"

#include "base/SharedInstance.h"
#include "platform/Platform.h"

namespace nutrition {

NutritionSDKUtils& NutritionSDKUtils::sharedInstance() {
  return SharedInstance<NutritionSDKUtils>::get(
      [] { return new NutritionSDKUtils(*Platform::current()); });
}

NutritionSDKUtils::NutritionSDKUtils(const Platform& platform)
    : userDefaults(platform.keyValueStores->suite(kUserDefaultsSuite)),
      sdkLanguage(sdkLanguageForDeviceLanguage(platform.locale->languageCode())) {}

NutritionLanguage sdkLanguageForDeviceLanguage(std::string_view languageCode) {
  if (languageCode == "en") return NutritionLanguage::en;
  if (languageCode == "pt") return NutritionLanguage::pt;
  if (languageCode == "de") return NutritionLanguage::de;
  if (languageCode == "ca") return NutritionLanguage::ca;
  if (languageCode == "it") return NutritionLanguage::it;
  return NutritionLanguage::es;
}

}  // namespace nutrition
