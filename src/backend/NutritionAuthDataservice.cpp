#include "backend/NutritionAuthDataservice.h"

#include "backend/BackendRequest.h"
#include "base/Log.h"
#include "json/JsonWriter.h"
#include "model/ModelCodec.h"

namespace nutrition {

NutritionAuthDataservice::NutritionAuthDataservice(const Platform& platform,
                                                   const NutritionSDKUtils& config)
    : baseURLDev(config.mainURL),
      http_(platform.http),
      queue_(platform.mainQueue),
      config_(config) {}

void NutritionAuthDataservice::login(
    const std::string& appID, const std::string& password,
    std::function<void(std::optional<NutritionCredentialsIA>)> completion) const {
  json::JsonWriter body;
  body.beginObject();
  body.key("ClientAlias");
  body.string(appID);
  body.key("Password");
  body.string(password);
  body.endObject();

  const BackendRequest request{"POST", "api/auth/login", {}, body.take()};
  sendBackendRequest(
      *http_, config_.mainURL, request,
      [completion = std::move(completion)](HttpResponse response) {
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
    std::function<void(std::optional<NutritionUserResponse>)> completion) const {
  const BackendRequest request{
      "GET",
      "api/user",
      {{"Language", std::string(config_.languageCode())}, {"UserId", userId}},
      {}};
  sendBackendRequest(
      *http_, config_.mainURL, request,
      [queue = queue_, completion = std::move(completion)](HttpResponse response) {
        // The completion touches nothing of this service: it may outlive it.
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
