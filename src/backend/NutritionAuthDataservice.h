#pragma once
// The two calls that come before everything else: the client account's login and the
// download of the member's record. Used by the session.

#include <functional>
#include <memory>
#include <optional>
#include <string>

#include "config/NutritionSDKUtils.h"
#include "model/NutritionCredentials.h"
#include "model/NutritionUserResponse.h"
#include "platform/Platform.h"

namespace nutrition {

class NutritionAuthDataservice {
 public:
  static NutritionAuthDataservice& sharedInstance();

  // Sends with the platform's HTTP client to the configuration's base URL, read afresh for
  // every request; answers reach the main queue of `platform`.
  NutritionAuthDataservice(const Platform& platform, const NutritionSDKUtils& config);

  // Posts the client account to "api/auth/login". The completion gets the first account of the
  // answer (none for "[]" or an answer that does not decode) and runs on the HTTP client's
  // thread; without any answer (a transport failure) it is never called.
  void login(const std::string& appID, const std::string& password,
             std::function<void(std::optional<NutritionCredentialsIA>)> completion) const;

  // Reads the member from "api/user". The completion runs on the main queue with the first
  // record of the answer, or none when there is none, no answer, or it does not decode.
  void getNutritionUser(const std::string& userId,
                        std::function<void(std::optional<NutritionUserResponse>)> completion) const;

  // The base URL when this service was made; requests read the configured one afresh.
  std::string baseURLDev;

 private:
  std::shared_ptr<HttpClient> http_;
  std::weak_ptr<MainQueue> queue_;
  const NutritionSDKUtils& config_;
};

}  // namespace nutrition
