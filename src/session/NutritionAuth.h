#pragma once
// The session: who is logged in (the host's client account and its member), the member's
// record, the login sequence, profile updates and the bariatric phase plans.
//
// States: not logged in (no credentials) -> logged in without member -> member known
// (`currentUser` from the backend, `isUnregister` false) or member new (`currentUser` an empty
// record with the ids filled in, `isUnregister` true). All state is touched on the main queue.

#include <functional>
#include <memory>
#include <optional>
#include <string>

#include "backend/DataServiceNutrition.h"
#include "backend/NutritionAuthDataservice.h"
#include "base/Date.h"
#include "base/Lifetime.h"
#include "config/NutritionSDKUtils.h"
#include "model/BariatricoPhase.h"
#include "model/NutritionCredentials.h"
#include "model/NutritionUser.h"
#include "platform/Platform.h"

namespace nutrition {

class NutritionAuth {
 public:
  static constexpr const char* kTokenKey = "training_auth_token";
  static constexpr const char* kHoldMenuTimerKey = "hold_menu_timer";
  static constexpr const char* kFastingSuite = "NutritionPreferences";
  static constexpr const char* kFastingStartKey = "ayuno_timer";
  // How long the menu screens wait for the backend to build a menu after a profile change.
  static constexpr double kMenuHoldSeconds = 5.0;

  static NutritionAuth& sharedInstance();

  // Reads the stored token from the standard store of `platform`.
  NutritionAuth(const Platform& platform, const NutritionAuthDataservice& authService,
                const DataServiceNutrition& dataService, const NutritionSDKUtils& config);

  std::optional<std::string> token;
  bool isUnregister = true;
  std::string memberID;
  std::string appID;
  std::string password;
  std::optional<NutritionCredentialsIA> credentials;
  std::optional<NutritionUser> currentUser;
  std::optional<NutritionUser> tempUser;

  // Logs the client account in, then downloads the member unless `memberId` is empty.
  void start(const std::string& memberId, const std::string& appID, const std::string& password);
  // The id the backend knows the member by: memberID + "_" + the client alias.
  [[nodiscard]] std::string userId() const;
  // Downloads the member and makes it (or, when unknown, an empty new-member record) current.
  void getNutritionUser(std::function<void(std::optional<NutritionUser>)> completion);
  void setMemberId(const std::string& memberId);

  void updateNutritionUser(std::optional<NutritionGender> sex, std::optional<std::int64_t> height,
                           std::optional<std::int64_t> weight, std::optional<Date> birthDate,
                           bool generateMenu, bool needsWaitingScreens);
  void updateNutritionUser(std::optional<NutritionGender> sex, std::optional<std::int64_t> height,
                           std::optional<std::int64_t> weight, std::optional<Date> birthDate,
                           std::int64_t activityLevel, std::optional<Date> operationDate,
                           bool generateMenu, bool needsWaitingScreens);

  // Writes the starting plan into the current user.
  void setEmptyProfile();
  void setPhase0();
  void setPhase1();
  void setPhase2();
  void setPhase3();
  void setPhase4();
  // Writes the phase's plan and the common fields, and sends the member.
  void updateWithPhase(BariatricoPhase phase);

  void logout();

 private:
  void setProfileFields(std::optional<NutritionGender> sex, std::optional<std::int64_t> height,
                        std::optional<std::int64_t> weight, std::optional<Date> birthDate);
  void setPlan(std::int64_t dietID, std::int64_t distribution, double dailyKcal,
               std::vector<SelectedIntake> intakes);
  void sendStartingPlan();
  // Sends the current user (POST while the member is new) and, when a member comes back,
  // makes it current, clears the fast and holds the menu screens.
  void sendCurrentUser();

  const NutritionAuthDataservice& authService_;
  const DataServiceNutrition& dataService_;
  const NutritionSDKUtils& config_;
  std::shared_ptr<const Clock> clock_;
  std::shared_ptr<const Calendar> calendar_;
  std::shared_ptr<KeyValueStore> standard_;
  std::shared_ptr<KeyValueStore> fastingStore_;
  std::weak_ptr<MainQueue> queue_;
  Lifetime lifetime_;
};

}  // namespace nutrition
