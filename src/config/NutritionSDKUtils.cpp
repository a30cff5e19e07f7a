#include "config/NutritionSDKUtils.h"

#include <algorithm>

#include "base/Url.h"

namespace nutrition {

NutritionSDKUtils::NutritionSDKUtils(const Platform& platform, std::string_view deviceLanguage)
    : userDefaults(platform.keyValueStores->suite(kUserDefaultsSuite)),
      sdkLanguage(sdkLanguageForDeviceLanguage(deviceLanguage)),
      http_(platform.http),
      queue_(platform.mainQueue),
      images_(platform.documentsDirectory) {
  for (const Folder folder : kAllFolders)
    createFolder(folder);
}

bool NutritionSDKUtils::isProfileFilled(std::string_view memberID) const {
  const auto members = userDefaults->getStringList(kProfileFilledKey);
  return members && std::find(members->begin(), members->end(), memberID) != members->end();
}

void NutritionSDKUtils::setUserProfileAsFilled(const std::string& memberID) {
  auto members =
      userDefaults->getStringList(kProfileFilledKey).value_or(std::vector<std::string>{});
  members.push_back(memberID);
  userDefaults->set(kProfileFilledKey, std::move(members));
}

void NutritionSDKUtils::downloadImage(const std::string& url, Folder folder,
                                      std::function<void(std::optional<Image>)> completion) const {
  getData(url,
          [this, url, folder, queue = queue_, alive = lifetime_.watch(),
           completion = std::move(completion)](std::optional<std::string> data, std::optional<int>,
                                               const std::optional<Error>&) {
            postIfAlive(queue, alive, [this, url, folder, data = std::move(data), completion] {
              if (!data || !isWholeImage(*data)) {
                completion(std::nullopt);
                return;
              }
              Image image{std::vector<std::uint8_t>(data->begin(), data->end())};
              writeImage(image, url, folder);
              completion(std::move(image));
            });
          });
}

void NutritionSDKUtils::getData(const std::string& url, DataCompletion completion) const {
  if (!isWellFormedURL(url)) return;
  HttpRequest request;
  request.url = url;
  request.maxResponseBytes = kMaxImageResponseBytes;
  http_->send(std::move(request), [completion = std::move(completion)](HttpResponse response) {
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
