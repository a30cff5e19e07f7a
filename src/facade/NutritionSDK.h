#pragma once
// The one type the host app calls. Each operation writes one setting of the configuration
// record, forwards to the session, or reads the session's member; none blocks on the network.
// Call it from the main thread.
//
//   auto& sdk = NutritionSDK::sharedInstance();
//   sdk.setURL("https://backend.example/");
//   sdk.setMainColor("EA6E29");
//   sdk.start("member-42", "app-id", "app-password");

#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <string>

#include "base/Date.h"
#include "base/Lifetime.h"
#include "model/NutritionDay.h"
#include "model/NutritionEnums.h"
#include "model/PublicProfile.h"

namespace nutrition {

class Core;
class ViewController;

class NutritionSDK {
 public:
  static NutritionSDK& sharedInstance();

  // Forwards to the services of `core`.
  explicit NutritionSDK(Core& core) : core_(core) {}

  // Session.
  void start(const std::string& memberId, const std::string& appID, const std::string& password);
  // Logs the client account in without fetching a member (see setMemberId).
  void startSession(const std::string& appID, const std::string& password);
  void setMemberId(const std::string& memberId);
  void logout();

  // Configuration; each writes one setting.
  void setURL(const std::string& url);
  void setMainColor(const std::string& color);
  void setNavigationBarColor(const std::string& color);
  void setNavigationTintColor(const std::string& color);
  void setNavigationTitle(const std::string& title);
  void preferLargeTitlte(bool prefersLargeTitles);
  void setLanguage(NutritionLanguage language);
  void setCountry(NutritionUserCountry country);
  void setDietType(DietType diet);
  void setShortProfile(bool isShort);
  void setWaitingSecodsForScreen(std::int64_t seconds);
  void setIntermittentFastingEnable(bool enabled);
  [[nodiscard]] bool showExcludedAliments() const;
  void setShowExcludedAliments(bool show);

  // The session's member; nothing without one.
  [[nodiscard]] std::optional<PublicProfile> getProfile() const;
  [[nodiscard]] std::optional<std::int64_t> getUserYear() const;
  [[nodiscard]] std::optional<std::int64_t> getUserHeight() const;
  [[nodiscard]] std::optional<std::int64_t> getUserWeight() const;
  [[nodiscard]] std::optional<NutritionGender> getUserGender() const;
  [[nodiscard]] bool isProfileFilled() const;

  // Updates the member's profile; with generateMenu the starting plan is sent to the backend,
  // which builds a new menu. The result shows in the screens.
  void updateProfile(std::optional<NutritionGender> sex, std::optional<std::int64_t> height,
                     std::optional<std::int64_t> weigth, std::optional<Date> birthDate,
                     bool generateMenu, bool needsWaitingScreens);
  // As above, with the activity level; an operation date applies the bariatric phase it leads
  // to instead.
  void updateProfile(std::optional<NutritionGender> sex, std::optional<std::int64_t> height,
                     std::optional<std::int64_t> weigth, std::optional<Date> birthDate,
                     std::int64_t activityLevel, std::optional<Date> operationDate,
                     bool generateMenu, bool needsWaitingScreens);

  // Fasting: whether the member has a scheme (present and not 0), whether a fast is running,
  // and the name of the current phase ("" when it has none).
  [[nodiscard]] bool hasIntermittentFasting() const;
  [[nodiscard]] bool isDoingIntermittentFasting() const;
  [[nodiscard]] std::string getIntermittentFastingPhase() const;

  // Today's day of the menu, downloading the menu unless a processed one is held; on the main
  // queue, with nothing when no day matches or no menu came.
  void getTodayMenu(std::function<void(std::optional<NutritionDay>)> completion);
  // Today's day of the menu already held, or an empty day.
  [[nodiscard]] NutritionDay getTodayMenu() const;
  // Always 5, at once.
  void getNumberOfIntakes(const std::function<void(std::int64_t)>& completion) const;

  // Screens, handed over or presented on the key window's top screen by the router.
  using ScreenCompletion = std::function<void(std::shared_ptr<ViewController>)>;
  // The weekly menu, the waiting screens or the unregistered-member alert.
  void showNutritionModule();
  // A weekly menu home, not presented, once a menu is held; never after a failed download.
  void getNutritionModule(ScreenCompletion completion);
  // A weekly menu home to embed, at once.
  void getWeekMenu(const ScreenCompletion& completion);
  // The profile editor over the top screen.
  void showProfile();
  // The profile editor, not presented; nothing without questionnaire pages.
  void getNutritionProfile(const ScreenCompletion& completion);
  // The full intake of today's intake `index` (in card order); nothing out of range.
  void showTodayIntake(int index);
  // The fasting screen, on the main queue, when the member has a scheme; otherwise nothing,
  // at once.
  void getAyunoController(ScreenCompletion completion);
  // The pop-up of the current fasting phase, at once.
  void getAyunoPhaseInfo(const ScreenCompletion& completion);

  // The last credentials start() or startSession() received.
  std::optional<std::string> app_id;
  std::optional<std::string> password;

 private:
  Core& core_;
  Lifetime lifetime_;
};

}  // namespace nutrition
