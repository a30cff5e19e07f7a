#include "facade/NutritionSDK.h"

#include "facade/Core.h"
#include "screens/fasting/PhaseAlertViewController.h"

namespace nutrition {

void NutritionSDK::start(const std::string& memberId, const std::string& appID,
                         const std::string& appPassword) {
  app_id = appID;
  password = appPassword;
  core_.session().start(memberId, appID, appPassword);
}

void NutritionSDK::startSession(const std::string& appID, const std::string& appPassword) {
  start("", appID, appPassword);
}

void NutritionSDK::setMemberId(const std::string& memberId) {
  core_.session().setMemberId(memberId);
}

void NutritionSDK::logout() {
  core_.session().logout();
}

void NutritionSDK::setURL(const std::string& url) {
  core_.config().mainURL = url;
}
void NutritionSDK::setMainColor(const std::string& color) {
  core_.config().primaryColor = Color::fromHex(color);
}
void NutritionSDK::setNavigationBarColor(const std::string& color) {
  core_.config().navigationBarColor = Color::fromHex(color);
}
void NutritionSDK::setNavigationTintColor(const std::string& color) {
  core_.config().navigationTintColor = Color::fromHex(color);
}
void NutritionSDK::setNavigationTitle(const std::string& title) {
  core_.config().navigationTitle = title;
}
void NutritionSDK::preferLargeTitlte(bool prefersLargeTitles) {
  core_.config().prefersLargeTitles = prefersLargeTitles;
}
void NutritionSDK::setLanguage(NutritionLanguage language) {
  core_.config().sdkLanguage = language;
}
void NutritionSDK::setCountry(NutritionUserCountry country) {
  core_.config().userCountry = country;
}
void NutritionSDK::setDietType(DietType diet) {
  core_.config().selectedDiet = diet;
}
void NutritionSDK::setShortProfile(bool isShort) {
  core_.config().isShort = isShort;
}
void NutritionSDK::setWaitingSecodsForScreen(std::int64_t seconds) {
  core_.config().waitingSeconds = seconds;
}
void NutritionSDK::setIntermittentFastingEnable(bool enabled) {
  core_.config().intermittentFastingEnable = enabled;
}
bool NutritionSDK::showExcludedAliments() const {
  return core_.config().showExcludedAliments;
}
void NutritionSDK::setShowExcludedAliments(bool show) {
  core_.config().showExcludedAliments = show;
}

std::optional<PublicProfile> NutritionSDK::getProfile() const {
  const auto& user = core_.session().currentUser;
  if (!user) return std::nullopt;
  return PublicProfile{user->userName, user->userSurnames, user->height,
                       user->weight,   user->gender,       user->dateOfBirth};
}

std::optional<std::int64_t> NutritionSDK::getUserYear() const {
  const auto& user = core_.session().currentUser;
  if (!user || !user->dateOfBirth) return std::nullopt;
  return core_.platform().calendar->year(*user->dateOfBirth);
}

std::optional<std::int64_t> NutritionSDK::getUserHeight() const {
  const auto& user = core_.session().currentUser;
  return user ? user->height : std::nullopt;
}

std::optional<std::int64_t> NutritionSDK::getUserWeight() const {
  const auto& user = core_.session().currentUser;
  return user ? user->weight : std::nullopt;
}

std::optional<NutritionGender> NutritionSDK::getUserGender() const {
  const auto& user = core_.session().currentUser;
  return user ? user->gender : std::nullopt;
}

bool NutritionSDK::isProfileFilled() const {
  return core_.config().isProfileFilled(core_.session().memberID);
}

void NutritionSDK::updateProfile(std::optional<NutritionGender> sex,
                                 std::optional<std::int64_t> height,
                                 std::optional<std::int64_t> weigth, std::optional<Date> birthDate,
                                 bool generateMenu, bool needsWaitingScreens) {
  core_.config().showWaitingScreens = needsWaitingScreens;
  auto& session = core_.session();
  session.getNutritionUser([&session, sex, height, weigth, birthDate, generateMenu,
                            needsWaitingScreens](const std::optional<NutritionUser>&) {
    session.updateNutritionUser(sex, height, weigth, birthDate, generateMenu, needsWaitingScreens);
  });
}

void NutritionSDK::updateProfile(std::optional<NutritionGender> sex,
                                 std::optional<std::int64_t> height,
                                 std::optional<std::int64_t> weigth, std::optional<Date> birthDate,
                                 std::int64_t activityLevel, std::optional<Date> operationDate,
                                 bool generateMenu, bool needsWaitingScreens) {
  core_.config().showWaitingScreens = needsWaitingScreens;
  auto& session = core_.session();
  session.getNutritionUser([&session, sex, height, weigth, birthDate, activityLevel, operationDate,
                            generateMenu,
                            needsWaitingScreens](const std::optional<NutritionUser>&) {
    session.updateNutritionUser(sex, height, weigth, birthDate, activityLevel, operationDate,
                                generateMenu, needsWaitingScreens);
  });
}

bool NutritionSDK::hasIntermittentFasting() const {
  const auto& user = core_.session().currentUser;
  return user && user->intermittentFastingID && *user->intermittentFastingID != 0;
}

bool NutritionSDK::isDoingIntermittentFasting() const {
  return !core_.ayuno().isFinished();
}

std::string NutritionSDK::getIntermittentFastingPhase() const {
  return core_.ayuno().getCurrentPhase().name.value_or("");
}

void NutritionSDK::getTodayMenu(std::function<void(std::optional<NutritionDay>)> completion) {
  core_.utils().getTodayMenu(std::move(completion));
}

NutritionDay NutritionSDK::getTodayMenu() const {
  return core_.utils().getTodayMenu();
}

void NutritionSDK::getNumberOfIntakes(const std::function<void(std::int64_t)>& completion) const {
  constexpr std::int64_t kDailyIntakes = 5;
  completion(kDailyIntakes);
}

void NutritionSDK::showNutritionModule() {
  core_.router().showWeekMenu();
}

void NutritionSDK::getNutritionModule(ScreenCompletion completion) {
  core_.router().getNutrition(std::move(completion));
}

void NutritionSDK::getWeekMenu(const ScreenCompletion& completion) {
  core_.router().getWeekMenu(completion);
}

void NutritionSDK::showProfile() {
  core_.router().showProfile();
}

void NutritionSDK::getNutritionProfile(const ScreenCompletion& completion) {
  core_.router().getProfile(completion);
}

void NutritionSDK::showTodayIntake(int index) {
  core_.router().showTodayIntake(index);
}

void NutritionSDK::getAyunoController(ScreenCompletion completion) {
  if (!hasIntermittentFasting()) {
    if (completion) completion(nullptr);
    return;
  }
  postIfAlive(core_.platform().mainQueue, lifetime_.watch(),
              [this, completion = std::move(completion)]() mutable {
                core_.router().getAyunoViewController(std::move(completion));
              });
}

void NutritionSDK::getAyunoPhaseInfo(const ScreenCompletion& completion) {
  auto screen = std::make_shared<PhaseAlertViewController>(core_.ui());
  screen->phase = core_.ayuno().getCurrentPhase();
  if (completion) completion(screen);
}

}  // namespace nutrition
