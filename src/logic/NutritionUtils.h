#pragma once
// The holder of the member's downloaded nutrition data (the weekly menu, the catalogues, the
// favourites, what the menu screens have selected) and the rules around it: which menu day is
// today, whether the menu may be shown yet, which answers a questionnaire field offers, and
// the shipped waiting screens, questionnaire pages and information files.
//
// Touched on the main queue only: answers are stored there, and completions run there.
// Making it asks the backend for the member's favourites and the excluded-aliment catalogue;
// the core makes it the first time something needs it.

#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "backend/DataServiceNutrition.h"
#include "backend/RequestContext.h"
#include "base/Lifetime.h"
#include "config/NutritionSDKUtils.h"
#include "model/AlertItem.h"
#include "model/HealthProfile.h"
#include "model/NutritionCatalogues.h"
#include "model/NutritionDistribution.h"
#include "model/NutritionMenu.h"
#include "model/NutritionPreference.h"
#include "model/WaitScreen.h"
#include "platform/Platform.h"
#include "text/StringTables.h"

namespace nutrition {

class NutritionUtils {
 public:
  template <class T>
  using Completion = std::function<void(std::optional<T>)>;

  static NutritionUtils& sharedInstance();

  // Sends the two creation requests at once.
  NutritionUtils(const Platform& platform, const DataServiceNutrition& service,
                 const CurrentUserSource& user, const NutritionSDKUtils& config,
                 const StringTables& strings);

  std::optional<NutritionMenu> weeklyMenu;
  // One single-dish intake per favourite dish, in order, named after the dish: what a
  // favourite tile opens.
  std::vector<NutritionIntake> favoriteIntakes;
  std::optional<std::int64_t> selectedDay;
  std::optional<std::int64_t> selectedIntake;
  std::optional<std::int64_t> selectedDish;
  std::optional<std::vector<NutritionExcluded>> excludedAliments;
  std::optional<std::vector<NutritionPreference>> preferences;
  std::optional<std::vector<NutritionBalance>> balances;
  std::optional<std::vector<NutritionCountry>> countries;
  std::optional<std::vector<PhysicalIntensity>> physicalIntensity;
  std::optional<std::vector<NutritionDistribution>> distributions;
  std::optional<std::vector<NutritionIntake>> intakes;
  std::optional<std::vector<IntermittentFasting>> fastings;
  std::optional<std::vector<NutritionDishOrder>> dishOrders;
  std::optional<std::vector<NutritionDish>> favoriteDishes;
  bool isEmbedViewController = false;

  // Today's number in the menu: 1 = Monday ... 7 = Sunday, in the device's calendar.
  [[nodiscard]] std::int64_t todayDayNumber() const;
  // Today's day of the held menu, or an empty day.
  [[nodiscard]] NutritionDay getTodayMenu() const;
  // Today's day, downloading the menu unless a processed one is held.
  void getTodayMenu(Completion<NutritionDay> completion);
  // Downloads the weekly menu and holds it. Without any answer the menu held stays.
  void downloadMenu(Completion<NutritionMenu> completion);

  void getDishOrders(Completion<std::vector<NutritionDishOrder>> completion);
  void getPreferences(Completion<std::vector<NutritionPreference>> completion);
  void getFastings(Completion<std::vector<IntermittentFasting>> completion);
  void getDistributions(Completion<std::vector<NutritionDistribution>> completion);
  void getIntakes(Completion<std::vector<NutritionIntake>> completion);
  void getBalances(Completion<std::vector<NutritionBalance>> completion);
  void getActivityIntensity(Completion<std::vector<PhysicalIntensity>> completion);
  void getExcludedAliments(Completion<std::vector<NutritionExcluded>> completion);
  void getDistributionByID(std::int64_t id, Completion<NutritionDistribution> completion);

  // Asks for another dish of the course in the selected day and intake; the new menu replaces
  // the held one and the completion gets the new dish.
  void getAlternativeDish(std::int64_t dishOrder, Completion<NutritionDish> completion);
  void addFavoriteDish(const NutritionDish& dish,
                       Completion<std::vector<NutritionDish>> completion);
  void removeFavoriteDish(std::int64_t dishID, Completion<std::vector<NutritionDish>> completion);

  // The answers a questionnaire field offers (see the field table); nothing for another field.
  void getAnswersFor(std::string_view field, Completion<std::vector<QuestionaryAnswer>> completion);

  // False while the menu screens should still wait for a menu being built after a profile
  // change ("hold_menu_timer" in the future). A hold further ahead than a profile change ever
  // sets, or not a finite number, is corrupt: it is removed and the menu shown.
  [[nodiscard]] bool canViewMenu() const;

  [[nodiscard]] std::vector<WaitScreen> getWaitScreens() const;
  // The questionnaire file chosen by showExcludedAliments, without its first page when the
  // short profile is configured; nothing when the file is not there.
  [[nodiscard]] std::optional<std::vector<HealthProfilePage>> getProfileQuestionary() const;
  [[nodiscard]] std::vector<AlertItem> getInfoFile(std::string_view name) const;

 private:
  void setFavoriteDishes(std::vector<NutritionDish> dishes);
  // Turns a REST completion into one that runs on the main queue while this holder exists,
  // with no value for a transport error.
  template <class T>
  BackendCompletion<T> onMain(Completion<T> completion) const;
  // The catalogue held in `field`, or downloaded with `fetch` and then held.
  template <class T, class Fetch>
  void cachedOrDownloaded(std::optional<std::vector<T>> NutritionUtils::*field, Fetch fetch,
                          Completion<std::vector<T>> completion);

  const DataServiceNutrition& service_;
  const CurrentUserSource& user_;
  const NutritionSDKUtils& config_;
  const StringTables& strings_;
  std::shared_ptr<const Clock> clock_;
  std::shared_ptr<const Calendar> calendar_;
  std::shared_ptr<KeyValueStore> standard_;
  std::shared_ptr<const ResourceBundle> resources_;
  std::weak_ptr<MainQueue> queue_;
  Lifetime lifetime_;
};

// Answers reach the completion on the main queue while the holder exists; a transport error
// becomes no value.
template <class T>
inline BackendCompletion<T> NutritionUtils::onMain(Completion<T> completion) const {
  return [queue = queue_, alive = lifetime_.watch(), completion = std::move(completion)](
             const std::optional<Error>& error, std::optional<T> value) {
    if (error) {
      postIfAlive(queue, alive, [completion] { completion(std::nullopt); });
    } else if (!alive.expired()) {
      completion(std::move(value));
    }
  };
}

}  // namespace nutrition
