// The one type the host app calls: the session, the module's settings, the member's profile,
// the menu, intermittent fasting and the module's screens. Call it from the main thread;
// completions run on the main thread. No call blocks on the network or throws.
//
//   NutritionSDK.sharedInstance.setURL(url: "https://backend.example/")
//   NutritionSDK.sharedInstance.setMainColor(color: "EA6E29")
//   NutritionSDK.sharedInstance.start(with: memberId, appID: appID, password: password)

#import <UIKit/UIKit.h>

#import <NutritionKit/NutritionDay.h>
#import <NutritionKit/NutritionTypes.h>
#import <NutritionKit/PublicProfile.h>

NS_ASSUME_NONNULL_BEGIN

/// Receives a screen of the module, or nil when there is none to give.
typedef void (^NutritionScreenCompletion)(UIViewController* _Nullable screen)
    NS_SWIFT_NAME(NutritionScreenCompletion);

NS_SWIFT_NAME(NutritionSDK)
@interface NutritionSDK : NSObject

/// The module; created on first use, never destroyed.
@property(class, nonatomic, readonly) NutritionSDK* sharedInstance;

- (instancetype)init NS_UNAVAILABLE;
+ (instancetype)new NS_UNAVAILABLE;

#pragma mark Session

/// Logs the app in with its credentials, then reads the member `memberId`.
- (void)startWithMemberId:(NSString*)memberId
                    appID:(NSString*)appID
                 password:(NSString*)password NS_SWIFT_NAME(start(with:appID:password:));
/// Logs the app in without reading a member; call setMemberId(_:) later.
- (void)startSessionWithAppID:(NSString*)appID
                     password:(NSString*)password NS_SWIFT_NAME(startSession(appID:password:));
/// Reads the member `memberId` with the session already open.
- (void)setMemberId:(NSString*)memberId NS_SWIFT_NAME(setMemberId(_:));
/// Forgets the member and the session.
- (void)logout NS_SWIFT_NAME(logout());

#pragma mark Settings (kept in memory: set them again at each launch)

- (void)setURLWithUrl:(NSString*)url NS_SWIFT_NAME(setURL(url:));
/// A hex colour such as "EA6E29".
- (void)setMainColorWithColor:(NSString*)color NS_SWIFT_NAME(setMainColor(color:));
- (void)setNavigationBarColorWithColor:(NSString*)color
    NS_SWIFT_NAME(setNavigationBarColor(color:));
- (void)setNavigationTintColorWithColor:(NSString*)color
    NS_SWIFT_NAME(setNavigationTintColor(color:));
- (void)setNavigationTitleWithTitle:(NSString*)title NS_SWIFT_NAME(setNavigationTitle(title:));
- (void)preferLargeTitlte:(BOOL)prefersLargeTitles NS_SWIFT_NAME(preferLargeTitlte(_:));
- (void)setLanguage:(NutritionLanguage)language NS_SWIFT_NAME(setLanguage(_:));
- (void)setCountry:(NutritionUserCountry)country NS_SWIFT_NAME(setCountry(_:));
- (void)setDietTypeWithDiet:(DietType)diet NS_SWIFT_NAME(setDietType(diet:));
- (void)setShortProfile:(BOOL)isShort NS_SWIFT_NAME(setShortProfile(_:));
- (void)setWaitingSecodsForScreen:(NSInteger)seconds NS_SWIFT_NAME(setWaitingSecodsForScreen(_:));
- (void)setIntermittentFastingEnable:(BOOL)enabled NS_SWIFT_NAME(setIntermittentFastingEnable(_:));
/// Whether the questionnaire asks for the aliments the member leaves out.
@property(nonatomic) BOOL showExcludedAliments;

#pragma mark Profile (nil without a member)

- (nullable PublicProfile*)getProfile NS_SWIFT_NAME(getProfile());
/// The year the member was born, in the current calendar.
- (nullable NSNumber*)getUserYear NS_SWIFT_NAME(getUserYear());
- (nullable NSNumber*)getUserHeight NS_SWIFT_NAME(getUserHeight());
- (nullable NSNumber*)getUserWeight NS_SWIFT_NAME(getUserWeight());
- (nullable NutritionGender)getUserGender NS_SWIFT_NAME(getUserGender());
- (BOOL)isProfileFilled NS_SWIFT_NAME(isProfileFilled());

/// Updates the member's profile; with generateMenu the backend builds a new menu. The result
/// shows in the screens.
- (void)updateProfileWithSex:(nullable NutritionGender)sex
                      height:(nullable NSNumber*)height
                      weigth:(nullable NSNumber*)weigth
                   birthDate:(nullable NSDate*)birthDate
                generateMenu:(BOOL)generateMenu
         needsWaitingScreens:(BOOL)needsWaitingScreens
    NS_SWIFT_NAME(updateProfile(sex:height:weigth:birthDate:generateMenu:needsWaitingScreens:));
/// As above, with the activity level; an operation date applies the diet phase it leads to.
- (void)updateProfileWithSex:(nullable NutritionGender)sex
                      height:(nullable NSNumber*)height
                      weigth:(nullable NSNumber*)weigth
                   birthDate:(nullable NSDate*)birthDate
               activityLevel:(NSInteger)activityLevel
               operationDate:(nullable NSDate*)operationDate
                generateMenu:(BOOL)generateMenu
         needsWaitingScreens:(BOOL)needsWaitingScreens
    NS_SWIFT_NAME(updateProfile(sex:height:weigth:birthDate:activityLevel:operationDate:generateMenu:needsWaitingScreens:));

#pragma mark Intermittent fasting

/// Whether the member has a fasting scheme.
- (BOOL)hasIntermittentFasting NS_SWIFT_NAME(hasIntermittentFasting());
/// Whether a fast is running.
- (BOOL)isDoingIntermittentFasting NS_SWIFT_NAME(isDoingIntermittentFasting());
/// The name of the current phase of the fast, or "" when there is none.
- (NSString*)getIntermittentFastingPhase NS_SWIFT_NAME(getIntermittentFastingPhase());
/// The fasting screen when the member has a scheme, else nil at once.
- (void)getAyunoController:(NutritionScreenCompletion)completion
    NS_SWIFT_NAME(getAyunoController(_:));
/// The pop-up of the current fasting phase, at once.
- (void)getAyunoPhaseInfo:(NutritionScreenCompletion)completion
    NS_SWIFT_NAME(getAyunoPhaseInfo(_:));

#pragma mark Menu

/// Today's day of the menu, downloading the menu when needed; nil when none came.
- (void)getTodayMenu:(void (^)(NutritionDay* _Nullable day))completion
    NS_SWIFT_NAME(getTodayMenu(_:));
/// Today's day of the menu already held.
- (nullable NutritionDay*)getTodayMenu NS_SWIFT_NAME(getTodayMenu());
/// The number of daily intakes (5), at once.
- (void)getNumberOfIntakes:(void (^)(NSInteger count))completion
    NS_SWIFT_NAME(getNumberOfIntakes(_:));

#pragma mark Screens

/// Presents the weekly menu, the waiting screens or the unregistered-member alert over the
/// top screen.
- (void)showNutritionModule NS_SWIFT_NAME(showNutritionModule());
/// A weekly menu screen to embed, once a menu is held.
- (void)getNutritionModule:(NutritionScreenCompletion)completion
    NS_SWIFT_NAME(getNutritionModule(_:));
/// A weekly menu screen to embed, at once.
- (void)getWeekMenu:(NutritionScreenCompletion)completion NS_SWIFT_NAME(getWeekMenu(_:));
/// Presents the profile questionnaire over the top screen.
- (void)showProfile NS_SWIFT_NAME(showProfile());
/// The profile questionnaire to embed.
- (void)getNutritionProfile:(NutritionScreenCompletion)completion
    NS_SWIFT_NAME(getNutritionProfile(_:));
/// Presents today's intake `index` (0 = the first) over the top screen.
- (void)showTodayIntake:(NSInteger)index NS_SWIFT_NAME(showTodayIntake(_:));

@end

NS_ASSUME_NONNULL_END
