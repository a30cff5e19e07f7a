#include "config/NutritionSDKUtils.h"

#include <algorithm>

#include "backend/BackendRequest.h"
#include "base/SharedInstance.h"
#include "platform/Platform.h"
#include "session/NutritionAuth.h"

namespace nutrition {

NutritionSDKUtils& NutritionSDKUtils::sharedInstance() {
  return SharedInstance<NutritionSDKUtils>::get(
      [] { return new NutritionSDKUtils(*Platform::current()); });
}

NutritionSDKUtils::NutritionSDKUtils(const Platform& platform)
    : userDefaults(platform.keyValueStores->suite(kUserDefaultsSuite)),
      sdkLanguage(sdkLanguageForDeviceLanguage(platform.locale->languageCode())),
      images_(platform.documentsDirectory) {
  for (const Folder folder : kAllFolders)
    createFolder(folder);
}

bool NutritionSDKUtils::isProfileFilled() const {
  const auto members = userDefaults->getStringList(kProfileFilledKey);
  if (!members) return false;
  const std::string& member = NutritionAuth::sharedInstance().memberID;
  return std::find(members->begin(), members->end(), member) != members->end();
}

void NutritionSDKUtils::setUserProfileAsFilled() {
  auto members =
      userDefaults->getStringList(kProfileFilledKey).value_or(std::vector<std::string>{});
  members.push_back(NutritionAuth::sharedInstance().memberID);
  userDefaults->set(kProfileFilledKey, std::move(members));
}

void NutritionSDKUtils::downloadImage(const std::string& url, Folder folder,
                                      std::function<void(std::optional<Image>)> completion) const {
  std::weak_ptr<MainQueue> queue = Platform::current()->mainQueue;
  getData(url, [url, folder, queue, completion = std::move(completion)](
                   std::optional<std::string> data, std::optional<int>, std::optional<Error>) {
    postIfAlive(queue, [url, folder, data = std::move(data), completion] {
      if (!data || !looksLikeImage(*data)) {
        completion(std::nullopt);
        return;
      }
      Image image{std::vector<std::uint8_t>(data->begin(), data->end())};
      NutritionSDKUtils::sharedInstance().writeImage(image, url, folder);
      completion(std::move(image));
    });
  });
}

void NutritionSDKUtils::getData(const std::string& url, DataCompletion completion) {
  if (!isWellFormedURL(url)) return;
  HttpRequest request;
  request.url = url;
  Platform::current()->http->send(std::move(request), [completion = std::move(completion)](
                                                          HttpResponse response) {
    if (response.transportError) {
      completion(std::nullopt, std::nullopt, Error{ErrorCode::transport, *response.transportError});
    } else {
      completion(std::move(response.body), response.status, std::nullopt);
    }
  });
}

std::optional<std::string> NutritionSDKUtils::getSuplementosForPhase(std::int64_t dietID,
                                                                     std::int64_t intakeID) {
  constexpr const char* kSupradyn = "Tomar un comprimido de SUPRADYN";
  constexpr const char* kVegestart = "Tomar un comprimido de VEGESTART COMPLET";
  switch (dietID) {
    case 10:
      if (intakeID == 1) return kSupradyn;
      if (intakeID == 3 || intakeID == 5) return kVegestart;
      return std::nullopt;
    case 11:
      if (intakeID == 1) return kSupradyn;
      if (intakeID == 3) {
        return "Tomar un comprimido de FRESUBIN HPHC o si eres diabético tomar DIVEN DRINK en la "
               "comida y en la cena";
      }
      if (intakeID == 5) {
        return "Tomar un comprimido de FRESUBIN HPHC o si eres diabético tomar DIVEN DRINK";
      }
      return std::nullopt;
    case 12:
    case 13:
      if (intakeID == 1) return kSupradyn;
      return std::nullopt;
    default:
      return std::nullopt;
  }
}

NutritionLanguage sdkLanguageForDeviceLanguage(std::string_view languageCode) {
  if (languageCode == "en") return NutritionLanguage::en;
  if (languageCode == "pt") return NutritionLanguage::pt;
  if (languageCode == "de") return NutritionLanguage::de;
  if (languageCode == "ca") return NutritionLanguage::ca;
  if (languageCode == "it") return NutritionLanguage::it;
  return NutritionLanguage::es;
}

}  // namespace nutrition
