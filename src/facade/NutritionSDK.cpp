#include "facade/NutritionSDK.h"

#include "base/SharedInstance.h"
#include "config/NutritionSDKUtils.h"
#include "platform/Platform.h"
#include "session/NutritionAuth.h"

namespace nutrition {
namespace {

NutritionSDKUtils& config() {
  return NutritionSDKUtils::sharedInstance();
}
NutritionAuth& session() {
  return NutritionAuth::sharedInstance();
}

}  // namespace

NutritionSDK& NutritionSDK::sharedInstance() {
  return SharedInstance<NutritionSDK>::get([] { return new NutritionSDK; });
}

void NutritionSDK::start(const std::string& memberId, const std::string& appID,
                         const std::string& appPassword) {
  app_id = appID;
  password = appPassword;
  session().start(memberId, appID, appPassword);
}

void NutritionSDK::startSession(const std::string& appID, const std::string& appPassword) {
  start("", appID, appPassword);
}

void NutritionSDK::setMemberId(const std::string& memberId) {
  session().setMemberId(memberId);
}

void NutritionSDK::logout() {
  session().logout();
}

void NutritionSDK::setURL(const std::string& url) {
  config().mainURL = url;
}
void NutritionSDK::setMainColor(const std::string& color) {
  config().primaryColor = Color::fromHex(color);
}
void NutritionSDK::setNavigationBarColor(const std::string& color) {
  config().navigationBarColor = Color::fromHex(color);
}
void NutritionSDK::setNavigationTintColor(const std::string& color) {
  config().navigationTintColor = Color::fromHex(color);
}
void NutritionSDK::setNavigationTitle(const std::string& title) {
  config().navigationTitle = title;
}
void NutritionSDK::preferLargeTitlte(bool prefersLargeTitles) {
  config().prefersLargeTitles = prefersLargeTitles;
}
void NutritionSDK::setLanguage(NutritionLanguage language) {
  config().sdkLanguage = language;
}
void NutritionSDK::setCountry(NutritionUserCountry country) {
  config().userCountry = country;
}
void NutritionSDK::setDietType(DietType diet) {
  config().selectedDiet = diet;
}
void NutritionSDK::setShortProfile(bool isShort) {
  config().isShort = isShort;
}
void NutritionSDK::setWaitingSecodsForScreen(std::int64_t seconds) {
  config().waitingSeconds = seconds;
}
void NutritionSDK::setIntermittentFastingEnable(bool enabled) {
  config().intermittentFastingEnable = enabled;
}
bool NutritionSDK::showExcludedAliments() const {
  return config().showExcludedAliments;
}
void NutritionSDK::setShowExcludedAliments(bool show) {
  config().showExcludedAliments = show;
}

std::optional<PublicProfile> NutritionSDK::getProfile() const {
  const auto& user = session().currentUser;
  if (!user) return std::nullopt;
  return PublicProfile{user->userName, user->userSurnames, user->height,
                       user->weight,   user->gender,       user->dateOfBirth};
}

std::optional<std::int64_t> NutritionSDK::getUserYear() const {
  const auto& user = session().currentUser;
  if (!user || !user->dateOfBirth) return std::nullopt;
  return Platform::current()->calendar->year(*user->dateOfBirth);
}

std::optional<std::int64_t> NutritionSDK::getUserHeight() const {
  const auto& user = session().currentUser;
  return user ? user->height : std::nullopt;
}

std::optional<std::int64_t> NutritionSDK::getUserWeight() const {
  const auto& user = session().currentUser;
  return user ? user->weight : std::nullopt;
}

std::optional<NutritionGender> NutritionSDK::getUserGender() const {
  const auto& user = session().currentUser;
  return user ? user->gender : std::nullopt;
}

bool NutritionSDK::isProfileFilled() const {
  return config().isProfileFilled();
}

void NutritionSDK::updateProfile(std::optional<NutritionGender> sex,
                                 std::optional<std::int64_t> height,
                                 std::optional<std::int64_t> weigth, std::optional<Date> birthDate,
                                 bool generateMenu, bool needsWaitingScreens) {
  config().showWaitingScreens = needsWaitingScreens;
  session().getNutritionUser([=](std::optional<NutritionUser>) {
    session().updateNutritionUser(sex, height, weigth, birthDate, generateMenu,
                                  needsWaitingScreens);
  });
}

void NutritionSDK::updateProfile(std::optional<NutritionGender> sex,
                                 std::optional<std::int64_t> height,
                                 std::optional<std::int64_t> weigth, std::optional<Date> birthDate,
                                 std::int64_t activityLevel, std::optional<Date> operationDate,
                                 bool generateMenu, bool needsWaitingScreens) {
  config().showWaitingScreens = needsWaitingScreens;
  session().getNutritionUser([=](std::optional<NutritionUser>) {
    session().updateNutritionUser(sex, height, weigth, birthDate, activityLevel, operationDate,
                                  generateMenu, needsWaitingScreens);
  });
}

}  // namespace nutrition
