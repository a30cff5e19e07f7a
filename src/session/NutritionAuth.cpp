#include "session/NutritionAuth.h"

#include "backend/DataServiceNutrition.h"
#include "backend/NutritionAuthDataservice.h"
#include "base/Saturating.h"
#include "base/SharedInstance.h"
#include "config/NutritionSDKUtils.h"
#include "platform/Platform.h"

namespace nutrition {
namespace {

SelectedIntake intake(std::int64_t id, std::vector<std::int64_t> dishes) {
  return SelectedIntake{id, std::move(dishes)};
}

std::vector<std::int64_t> countryOfConfiguration() {
  return {rawValue(NutritionSDKUtils::sharedInstance().userCountry)};
}

std::int64_t idealTargetWeight(const NutritionUser& user) {
  return saturatingToInt64(user.getIdealWeight());
}

}  // namespace

NutritionAuth& NutritionAuth::sharedInstance() {
  return SharedInstance<NutritionAuth>::get([] { return new NutritionAuth; });
}

NutritionAuth::NutritionAuth()
    : token(Platform::current()->keyValueStores->standard()->getString(kTokenKey)) {}

void NutritionAuth::start(const std::string& memberId, const std::string& clientAppID,
                          const std::string& clientPassword) {
  memberID = memberId;
  appID = clientAppID;
  password = clientPassword;
  std::weak_ptr<MainQueue> queue = Platform::current()->mainQueue;
  NutritionAuthDataservice::sharedInstance().login(
      clientAppID, clientPassword, [queue](std::optional<NutritionCredentialsIA> answer) {
        // The login answers on the HTTP thread; the session is only touched on the main queue.
        postIfAlive(queue, [answer = std::move(answer)] {
          auto& session = NutritionAuth::sharedInstance();
          session.credentials = answer;
          if (!session.memberID.empty()) session.getNutritionUser([](auto) {});
        });
      });
}

std::string NutritionAuth::userId() const {
  const std::string alias = credentials ? credentials->clientAlias.value_or("") : std::string{};
  return memberID + "_" + alias;
}

void NutritionAuth::getNutritionUser(std::function<void(std::optional<NutritionUser>)> completion) {
  const std::string id = userId();
  NutritionAuthDataservice::sharedInstance().getNutritionUser(
      id, [id, completion = std::move(completion)](std::optional<NutritionUserResponse> response) {
        auto& session = NutritionAuth::sharedInstance();
        session.isUnregister = !response.has_value();
        if (response) {
          session.currentUser = NutritionUser(*response);
        } else {
          NutritionUser fresh = NutritionUser::empty();
          fresh.memberID = session.memberID;
          fresh.clientID = session.credentials ? session.credentials->clientID : std::nullopt;
          fresh.userID = id;
          session.currentUser = std::move(fresh);
        }
        completion(session.currentUser);
      });
}

void NutritionAuth::setMemberId(const std::string& memberId) {
  memberID = memberId;
  getNutritionUser([](auto) {});
}

void NutritionAuth::setProfileFields(std::optional<NutritionGender> sex,
                                     std::optional<std::int64_t> height,
                                     std::optional<std::int64_t> weight,
                                     std::optional<Date> birthDate) {
  currentUser->gender = sex;
  currentUser->height = height;
  currentUser->weight = weight;
  currentUser->dateOfBirth = birthDate;
}

void NutritionAuth::updateNutritionUser(std::optional<NutritionGender> sex,
                                        std::optional<std::int64_t> height,
                                        std::optional<std::int64_t> weight,
                                        std::optional<Date> birthDate, bool generateMenu,
                                        bool /*needsWaitingScreens*/) {
  if (currentUser) setProfileFields(sex, height, weight, birthDate);
  if (generateMenu) sendStartingPlan();
}

void NutritionAuth::updateNutritionUser(std::optional<NutritionGender> sex,
                                        std::optional<std::int64_t> height,
                                        std::optional<std::int64_t> weight,
                                        std::optional<Date> birthDate, std::int64_t activityLevel,
                                        std::optional<Date> operationDate, bool generateMenu,
                                        bool /*needsWaitingScreens*/) {
  if (currentUser) {
    setProfileFields(sex, height, weight, birthDate);
    currentUser->physicalIntensityID = activityLevel;
  }
  if (operationDate) {
    // After surgery the phase's plan applies, whatever generateMenu says, unless the member
    // is on it already.
    const auto platform = Platform::current();
    const BariatricoPhase phase = NutritionUser::getPhaseForOperationDate(
        *operationDate, std::chrono::floor<std::chrono::seconds>(platform->clock->now()),
        *platform->calendar);
    if (currentUser && currentUser->dietID == 10 + phaseNumber(phase)) return;
    updateWithPhase(phase);
    return;
  }
  if (generateMenu) sendStartingPlan();
}

void NutritionAuth::sendStartingPlan() {
  setEmptyProfile();
  sendCurrentUser();
}

void NutritionAuth::setEmptyProfile() {
  if (!currentUser) return;
  const auto& utils = NutritionSDKUtils::sharedInstance();
  NutritionUser& user = *currentUser;
  user.distributionByIntakeID = 5;
  user.selectedIntakes = std::vector<SelectedIntake>{
      intake(1, {1}), intake(2, {1}), intake(3, {1, 2, 3}), intake(4, {1}), intake(5, {1, 2, 3})};
  user.dailyKcal = 1800.0;
  user.intermittentFastingID = 0;
  user.desiredBalanceID = 2;
  user.countries = countryOfConfiguration();
  user.dietID = rawValue(utils.selectedDiet);
  user.targetWeight = idealTargetWeight(user);
  user.preferences = std::vector<std::int64_t>{};
}

void NutritionAuth::setPlan(std::int64_t dietID, std::int64_t distribution, double dailyKcal,
                            std::vector<SelectedIntake> intakes) {
  if (!currentUser) return;
  currentUser->dietID = dietID;
  currentUser->distributionByIntakeID = distribution;
  currentUser->dailyKcal = dailyKcal;
  currentUser->selectedIntakes = std::move(intakes);
}

void NutritionAuth::setPhase0() {
  setPlan(10, 5, 630.0,
          {intake(1, {1}), intake(2, {1}), intake(3, {1}), intake(4, {1}), intake(5, {1})});
}

void NutritionAuth::setPhase1() {
  setPlan(11, 6, 400.0, {intake(1, {1}), intake(2, {1}), intake(4, {1})});
}

void NutritionAuth::setPhase2() {
  setPlan(12, 5, 1400.0,
          {intake(1, {1}), intake(2, {1}), intake(3, {1, 2}), intake(4, {1}), intake(5, {1, 2})});
}

void NutritionAuth::setPhase3() {
  setPlan(13, 5, 1500.0,
          {intake(1, {1}), intake(2, {1}), intake(3, {1, 2}), intake(4, {1}), intake(5, {1, 2})});
}

void NutritionAuth::setPhase4() {
  setPlan(14, 5, 1600.0,
          {intake(1, {1}), intake(2, {1}), intake(3, {1, 2}), intake(4, {1}), intake(5, {1, 2})});
}

void NutritionAuth::updateWithPhase(BariatricoPhase phase) {
  switch (phase) {
    case BariatricoPhase::phase0:
      setPhase0();
      break;
    case BariatricoPhase::phase1:
      setPhase1();
      break;
    case BariatricoPhase::phase2:
      setPhase2();
      break;
    case BariatricoPhase::phase3:
      setPhase3();
      break;
    case BariatricoPhase::phase4:
      setPhase4();
      break;
  }
  if (currentUser) {
    currentUser->desiredBalanceID = 2;
    currentUser->countries = countryOfConfiguration();
    currentUser->targetWeight = idealTargetWeight(*currentUser);
  }
  sendCurrentUser();
}

void NutritionAuth::sendCurrentUser() {
  if (!currentUser) return;
  DataServiceNutrition::sharedInstance().updateUser(
      *currentUser, isUnregister, [](std::optional<Error>, std::optional<NutritionUser> user) {
        // A member comes back only from an answer, which is handled on the main queue; without
        // an answer nothing changes.
        if (!user) return;
        const auto platform = Platform::current();
        NutritionAuth::sharedInstance().currentUser = std::move(user);
        platform->keyValueStores->suite(kFastingSuite)->remove(kFastingStartKey);
        const double now =
            std::chrono::duration<double>(platform->clock->now().time_since_epoch()).count();
        platform->keyValueStores->standard()->set(kHoldMenuTimerKey, now + kMenuHoldSeconds);
      });
}

void NutritionAuth::logout() {
  currentUser.reset();
  isUnregister = true;
  memberID.clear();
  appID.clear();
  password.clear();
  Platform::current()->keyValueStores->standard()->remove(kTokenKey);
}

}  // namespace nutrition
