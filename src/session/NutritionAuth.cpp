#include "session/NutritionAuth.h"

#include "base/Saturating.h"

namespace nutrition {
namespace {

SelectedIntake intake(std::int64_t id, std::vector<std::int64_t> dishes) {
  return SelectedIntake{id, std::move(dishes)};
}

std::int64_t idealTargetWeight(const NutritionUser& user) {
  return saturatingToInt64(user.getIdealWeight());
}

}  // namespace

NutritionAuth::NutritionAuth(const Platform& platform, const NutritionAuthDataservice& authService,
                             const DataServiceNutrition& dataService,
                             const NutritionSDKUtils& config)
    : token(platform.keyValueStores->standard()->getString(kTokenKey)),
      authService_(authService),
      dataService_(dataService),
      config_(config),
      clock_(platform.clock),
      calendar_(platform.calendar),
      standard_(platform.keyValueStores->standard()),
      fastingStore_(platform.keyValueStores->suite(kFastingSuite)),
      queue_(platform.mainQueue) {}

void NutritionAuth::start(const std::string& memberId, const std::string& clientAppID,
                          const std::string& clientPassword) {
  memberID = memberId;
  appID = clientAppID;
  password = clientPassword;
  authService_.login(clientAppID, clientPassword,
                     [this, queue = queue_,
                      alive = lifetime_.watch()](std::optional<NutritionCredentialsIA> answer) {
                       // The login answers on the HTTP thread; the session is only touched on
                       // the main queue.
                       postIfAlive(queue, alive, [this, answer = std::move(answer)] {
                         credentials = answer;
                         if (!memberID.empty()) getNutritionUser([](auto) {});
                       });
                     });
}

std::string NutritionAuth::userId() const {
  const std::string alias = credentials ? credentials->clientAlias.value_or("") : std::string{};
  return memberID + "_" + alias;
}

void NutritionAuth::getNutritionUser(std::function<void(std::optional<NutritionUser>)> completion) {
  const std::string id = userId();
  authService_.getNutritionUser(
      id, [this, id, alive = lifetime_.watch(),
           completion = std::move(completion)](std::optional<NutritionUserResponse> response) {
        if (alive.expired()) return;
        isUnregister = !response.has_value();
        if (response) {
          currentUser = NutritionUser(*response);
        } else {
          NutritionUser fresh = NutritionUser::empty();
          fresh.memberID = memberID;
          fresh.clientID = credentials ? credentials->clientID : std::nullopt;
          fresh.userID = id;
          currentUser = std::move(fresh);
        }
        completion(currentUser);
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
    const BariatricoPhase phase =
        NutritionUser::getPhaseForOperationDate(*operationDate, currentDate(*clock_), *calendar_);
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
  NutritionUser& user = *currentUser;
  user.distributionByIntakeID = 5;
  user.selectedIntakes = std::vector<SelectedIntake>{
      intake(1, {1}), intake(2, {1}), intake(3, {1, 2, 3}), intake(4, {1}), intake(5, {1, 2, 3})};
  user.dailyKcal = 1800.0;
  user.intermittentFastingID = 0;
  user.desiredBalanceID = 2;
  user.countries = std::vector<std::int64_t>{rawValue(config_.userCountry)};
  user.dietID = rawValue(config_.selectedDiet);
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
    currentUser->countries = std::vector<std::int64_t>{rawValue(config_.userCountry)};
    currentUser->targetWeight = idealTargetWeight(*currentUser);
  }
  sendCurrentUser();
}

void NutritionAuth::sendCurrentUser() {
  if (!currentUser) return;
  dataService_.updateUser(*currentUser, isUnregister,
                          [this, alive = lifetime_.watch()](const std::optional<Error>&,
                                                            std::optional<NutritionUser> user) {
                            // A member comes back only from an answer, which is handled on the main
                            // queue; without an answer nothing changes.
                            if (!user || alive.expired()) return;
                            currentUser = std::move(user);
                            fastingStore_->remove(kFastingStartKey);
                            standard_->set(kHoldMenuTimerKey,
                                           secondsSince1970(*clock_) + kMenuHoldSeconds);
                          });
}

void NutritionAuth::logout() {
  currentUser.reset();
  isUnregister = true;
  memberID.clear();
  appID.clear();
  password.clear();
  standard_->remove(kTokenKey);
}

}  // namespace nutrition
