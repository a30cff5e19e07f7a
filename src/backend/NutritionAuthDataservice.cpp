#include "backend/NutritionAuthDataservice.h"

#include "backend/BackendRequest.h"
#include "base/Log.h"
#include "base/SharedInstance.h"
#include "config/NutritionSDKUtils.h"
#include "json/JsonWriter.h"
#include "model/ModelCodec.h"
#include "platform/Platform.h"

namespace nutrition {

NutritionAuthDataservice& NutritionAuthDataservice::sharedInstance() {
  return SharedInstance<NutritionAuthDataservice>::get([] { return new NutritionAuthDataservice; });
}

NutritionAuthDataservice::NutritionAuthDataservice()
    : baseURLDev(NutritionSDKUtils::sharedInstance().mainURL) {}

void NutritionAuthDataservice::login(
    const std::string& appID, const std::string& password,
    std::function<void(std::optional<NutritionCredentialsIA>)> completion) {
  json::JsonWriter body;
  body.beginObject();
  body.key("ClientAlias");
  body.string(appID);
  body.key("Password");
  body.string(password);
  body.endObject();

  BackendRequest request{"POST", "api/auth/login", {}, body.take()};
  sendBackendRequest(request, [completion = std::move(completion)](HttpResponse response) {
    if (response.transportError) {
      log(LogLevel::warning, "login got no answer: " + *response.transportError);
      return;
    }
    auto accounts = decodeJsonArray<NutritionCredentialsIA>(response.body);
    if (!accounts.ok()) {
      log(LogLevel::warning, "login answer does not decode: " + accounts.error().message);
      completion(std::nullopt);
      return;
    }
    completion(accounts->empty() ? std::nullopt : std::optional(accounts->front()));
  });
}

void NutritionAuthDataservice::getNutritionUser(
    const std::string& userId,
    std::function<void(std::optional<NutritionUserResponse>)> completion) {
  const auto& utils = NutritionSDKUtils::sharedInstance();
  BackendRequest request{
      "GET", "api/user", {{"Language", std::string(utils.languageCode())}, {"UserId", userId}}, {}};
  std::weak_ptr<MainQueue> queue = Platform::current()->mainQueue;
  sendBackendRequest(request, [queue, completion = std::move(completion)](HttpResponse response) {
    postIfAlive(queue, [response = std::move(response), completion] {
      if (response.transportError) {
        log(LogLevel::warning, "user download got no answer: " + *response.transportError);
        completion(std::nullopt);
        return;
      }
      auto users = decodeJsonArray<NutritionUserResponse>(response.body);
      if (!users.ok()) {
        log(LogLevel::warning, "user answer does not decode: " + users.error().message);
        completion(std::nullopt);
        return;
      }
      completion(users->empty() ? std::nullopt : std::optional(users->front()));
    });
  });
}

}  // namespace nutrition
