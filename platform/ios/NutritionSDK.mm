// The Objective-C face of the module: each method converts its arguments, calls the C++
// facade on the installed core and converts the answer back. Nothing thrown inside the core
// leaves this file: a failed call is logged and answers nothing.

#import <NutritionKit/NutritionSDK.h>

#include <exception>
#include <string>
#include <utility>

#include "IosPlatform.h"
#include "IosScreens.h"
#include "Marshal+Private.h"
#include "base/Log.h"
#include "facade/Core.h"
#include "facade/NutritionSDK.h"
#include "platform/Platform.h"

namespace {

namespace core = nutrition;
using nutrition::ios::toNSNumber;
using nutrition::ios::toNSString;
using nutrition::ios::toString;

// Runs `body`; anything it throws is logged under `operation` and becomes `fallback`.
template <class T, class Body>
T guarded(const char* operation, T fallback, Body&& body) {
  try {
    return body();
  } catch (const std::exception& error) {
    core::log(core::LogLevel::error, std::string(operation) + " failed: " + error.what());
  } catch (...) {
    core::log(core::LogLevel::error, std::string(operation) + " failed");
  }
  return fallback;
}

template <class Body>
void guarded(const char* operation, Body&& body) {
  guarded(operation, 0, [&] {
    body();
    return 0;
  });
}

// The C++ facade of the current core, with the core's key window following the app's.
core::NutritionSDK& facade() {
  core::Core& current = core::Core::current();
  nutrition::ios::attachKeyWindow(current);
  return current.sdk();
}

// A completion the core may call later, taking a screen and handing UIKit its controller.
core::NutritionSDK::ScreenCompletion screenCompletion(NutritionScreenCompletion completion) {
  NutritionScreenCompletion done = [completion copy];
  return [done](std::shared_ptr<core::ViewController> screen) {
    done(screen ? nutrition::ios::hostingController(std::move(screen)) : nil);
  };
}

}  // namespace

@implementation NutritionSDK

+ (NutritionSDK*)sharedInstance {
  static NutritionSDK* shared;
  static dispatch_once_t once;
  dispatch_once(&once, ^{
    core::Platform::install(nutrition::ios::makeIosPlatform());
    shared = [[NutritionSDK alloc] initShared];
  });
  return shared;
}

- (instancetype)initShared {
  return [super init];
}

#pragma mark Session

- (void)startWithMemberId:(NSString*)memberId appID:(NSString*)appID password:(NSString*)password {
  guarded("start",
          [&] { facade().start(toString(memberId), toString(appID), toString(password)); });
}

- (void)startSessionWithAppID:(NSString*)appID password:(NSString*)password {
  guarded("startSession", [&] { facade().startSession(toString(appID), toString(password)); });
}

- (void)setMemberId:(NSString*)memberId {
  guarded("setMemberId", [&] { facade().setMemberId(toString(memberId)); });
}

- (void)logout {
  guarded("logout", [&] { facade().logout(); });
}

#pragma mark Settings

- (void)setURLWithUrl:(NSString*)url {
  guarded("setURL", [&] { facade().setURL(toString(url)); });
}

- (void)setMainColorWithColor:(NSString*)color {
  guarded("setMainColor", [&] { facade().setMainColor(toString(color)); });
}

- (void)setNavigationBarColorWithColor:(NSString*)color {
  guarded("setNavigationBarColor", [&] { facade().setNavigationBarColor(toString(color)); });
}

- (void)setNavigationTintColorWithColor:(NSString*)color {
  guarded("setNavigationTintColor", [&] { facade().setNavigationTintColor(toString(color)); });
}

- (void)setNavigationTitleWithTitle:(NSString*)title {
  guarded("setNavigationTitle", [&] { facade().setNavigationTitle(toString(title)); });
}

- (void)preferLargeTitlte:(BOOL)prefersLargeTitles {
  guarded("preferLargeTitlte", [&] { facade().preferLargeTitlte(prefersLargeTitles); });
}

- (void)setLanguage:(NutritionLanguage)language {
  // A raw value outside the module's languages (Swift can build one) changes nothing.
  const auto value = nutrition::ios::fromNSString<core::NutritionLanguage>(language);
  if (!value) return;
  guarded("setLanguage", [&] { facade().setLanguage(*value); });
}

- (void)setCountry:(NutritionUserCountry)country {
  const auto value = nutrition::ios::fromNSInteger<core::NutritionUserCountry>(country);
  if (!value) return;
  guarded("setCountry", [&] { facade().setCountry(*value); });
}

- (void)setDietTypeWithDiet:(DietType)diet {
  const auto value = nutrition::ios::fromNSInteger<core::DietType>(diet);
  if (!value) return;
  guarded("setDietType", [&] { facade().setDietType(*value); });
}

- (void)setShortProfile:(BOOL)isShort {
  guarded("setShortProfile", [&] { facade().setShortProfile(isShort); });
}

- (void)setWaitingSecodsForScreen:(NSInteger)seconds {
  guarded("setWaitingSecodsForScreen", [&] { facade().setWaitingSecodsForScreen(seconds); });
}

- (void)setIntermittentFastingEnable:(BOOL)enabled {
  guarded("setIntermittentFastingEnable", [&] { facade().setIntermittentFastingEnable(enabled); });
}

- (BOOL)showExcludedAliments {
  return guarded("showExcludedAliments", false, [] { return facade().showExcludedAliments(); });
}

- (void)setShowExcludedAliments:(BOOL)show {
  guarded("setShowExcludedAliments", [&] { facade().setShowExcludedAliments(show); });
}

#pragma mark Profile

- (PublicProfile*)getProfile {
  return guarded("getProfile", static_cast<PublicProfile*>(nil), []() -> PublicProfile* {
    const auto profile = facade().getProfile();
    return profile ? [PublicProfile profileWithRecord:*profile] : nil;
  });
}

- (NSNumber*)getUserYear {
  return guarded("getUserYear", static_cast<NSNumber*>(nil),
                 [] { return toNSNumber(facade().getUserYear()); });
}

- (NSNumber*)getUserHeight {
  return guarded("getUserHeight", static_cast<NSNumber*>(nil),
                 [] { return toNSNumber(facade().getUserHeight()); });
}

- (NSNumber*)getUserWeight {
  return guarded("getUserWeight", static_cast<NSNumber*>(nil),
                 [] { return toNSNumber(facade().getUserWeight()); });
}

- (NutritionGender)getUserGender {
  return guarded("getUserGender", static_cast<NSString*>(nil),
                 [] { return nutrition::ios::toRawNSString(facade().getUserGender()); });
}

- (BOOL)isProfileFilled {
  return guarded("isProfileFilled", false, [] { return facade().isProfileFilled(); });
}

- (void)updateProfileWithSex:(NutritionGender)sex
                      height:(NSNumber*)height
                      weigth:(NSNumber*)weigth
                   birthDate:(NSDate*)birthDate
                generateMenu:(BOOL)generateMenu
         needsWaitingScreens:(BOOL)needsWaitingScreens {
  guarded("updateProfile", [&] {
    facade().updateProfile(nutrition::ios::fromNSString<core::NutritionGender>(sex),
                           nutrition::ios::toOptionalInt(height),
                           nutrition::ios::toOptionalInt(weigth), nutrition::ios::toDate(birthDate),
                           generateMenu, needsWaitingScreens);
  });
}

- (void)updateProfileWithSex:(NutritionGender)sex
                      height:(NSNumber*)height
                      weigth:(NSNumber*)weigth
                   birthDate:(NSDate*)birthDate
               activityLevel:(NSInteger)activityLevel
               operationDate:(NSDate*)operationDate
                generateMenu:(BOOL)generateMenu
         needsWaitingScreens:(BOOL)needsWaitingScreens {
  guarded("updateProfile", [&] {
    facade().updateProfile(nutrition::ios::fromNSString<core::NutritionGender>(sex),
                           nutrition::ios::toOptionalInt(height),
                           nutrition::ios::toOptionalInt(weigth), nutrition::ios::toDate(birthDate),
                           activityLevel, nutrition::ios::toDate(operationDate), generateMenu,
                           needsWaitingScreens);
  });
}

#pragma mark Intermittent fasting

- (BOOL)hasIntermittentFasting {
  return guarded("hasIntermittentFasting", false, [] { return facade().hasIntermittentFasting(); });
}

- (BOOL)isDoingIntermittentFasting {
  return guarded("isDoingIntermittentFasting", false,
                 [] { return facade().isDoingIntermittentFasting(); });
}

- (NSString*)getIntermittentFastingPhase {
  return guarded("getIntermittentFastingPhase", static_cast<NSString*>(@""),
                 [] { return toNSString(facade().getIntermittentFastingPhase()); });
}

- (void)getAyunoController:(NutritionScreenCompletion)completion {
  guarded("getAyunoController", [&] { facade().getAyunoController(screenCompletion(completion)); });
}

- (void)getAyunoPhaseInfo:(NutritionScreenCompletion)completion {
  guarded("getAyunoPhaseInfo", [&] { facade().getAyunoPhaseInfo(screenCompletion(completion)); });
}

#pragma mark Menu

- (void)getTodayMenu:(void (^)(NutritionDay* _Nullable))completion {
  void (^done)(NutritionDay* _Nullable) = [completion copy];
  guarded("getTodayMenu", [&] {
    facade().getTodayMenu([done](std::optional<core::NutritionDay> day) {
      done(day ? [[NutritionDay alloc] initWithRecord:*day] : nil);
    });
  });
}

- (NutritionDay*)getTodayMenu {
  return guarded("getTodayMenu", static_cast<NutritionDay*>(nil),
                 [] { return [[NutritionDay alloc] initWithRecord:facade().getTodayMenu()]; });
}

- (void)getNumberOfIntakes:(void (^)(NSInteger))completion {
  void (^done)(NSInteger) = [completion copy];
  guarded("getNumberOfIntakes", [&] {
    facade().getNumberOfIntakes(
        [done](std::int64_t count) { done(static_cast<NSInteger>(count)); });
  });
}

#pragma mark Screens

- (void)showNutritionModule {
  guarded("showNutritionModule", [&] { facade().showNutritionModule(); });
}

- (void)getNutritionModule:(NutritionScreenCompletion)completion {
  guarded("getNutritionModule", [&] { facade().getNutritionModule(screenCompletion(completion)); });
}

- (void)getWeekMenu:(NutritionScreenCompletion)completion {
  guarded("getWeekMenu", [&] { facade().getWeekMenu(screenCompletion(completion)); });
}

- (void)showProfile {
  guarded("showProfile", [&] { facade().showProfile(); });
}

- (void)getNutritionProfile:(NutritionScreenCompletion)completion {
  guarded("getNutritionProfile",
          [&] { facade().getNutritionProfile(screenCompletion(completion)); });
}

- (void)showTodayIntake:(NSInteger)index {
  guarded("showTodayIntake", [&] { facade().showTodayIntake(static_cast<int>(index)); });
}

@end
