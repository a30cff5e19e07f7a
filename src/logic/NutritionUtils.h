#pragma once
// The holder of the member's downloaded nutrition data (the weekly menu, the catalogues, the
// favourites, what the menu screens have selected) and the rules around it: which menu day is
// today, whether the menu may be shown yet, which answers a questionnaire field offers, and
// the shipped waiting screens, questionnaire pages and information files.
//
// Touched on the main queue only: answers are stored there, and completions run there.
// On creation it asks the backend for the member's favourites and the excluded-aliment
// catalogue.

#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "model/AlertItem.h"
#include "model/HealthProfile.h"
#include "model/NutritionCatalogues.h"
#include "model/NutritionDistribution.h"
#include "model/NutritionMenu.h"
#include "model/NutritionPreference.h"
#include "model/WaitScreen.h"

namespace nutrition {

class NutritionUtils {
 public:
  template <class T>
  using Completion = std::function<void(std::optional<T>)>;

  static NutritionUtils& sharedInstance();

  NutritionUtils();

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
  static std::int64_t todayDayNumber();
  // Today's day of the held menu, or an empty day.
  NutritionDay getTodayMenu() const;
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
  // change ("hold_menu_timer" in the future).
  bool canViewMenu() const;

  static std::vector<WaitScreen> getWaitScreens();
  // The questionnaire file chosen by showExcludedAliments, without its first page when the
  // short profile is configured; nothing when the file is not there.
  static std::optional<std::vector<HealthProfilePage>> getProfileQuestionary();
  static std::vector<AlertItem> getInfoFile(std::string_view name);

 private:
  void setFavoriteDishes(std::vector<NutritionDish> dishes);
};

}  // namespace nutrition
