#pragma once
// The client for every backend call after login: the weekly menu, dish replacement,
// favourites, the member update and the questionnaire's catalogues.
//
// Completions get an error only when no answer arrived (then on the HTTP client's thread);
// every answer is handled on the main queue: decoded, or, when it does not decode, reported
// as an absent value with no error. The HTTP status is not looked at.

#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <vector>

#include "base/Result.h"
#include "model/NutritionCatalogues.h"
#include "model/NutritionDistribution.h"
#include "model/NutritionFavoriteDish.h"
#include "model/NutritionMenu.h"
#include "model/NutritionPreference.h"
#include "model/NutritionUser.h"

namespace nutrition {

struct BackendRequest;

template <class T>
using BackendCompletion = std::function<void(std::optional<Error>, std::optional<T>)>;

class DataServiceNutrition {
 public:
  static DataServiceNutrition& sharedInstance();

  void getWeeklyIAMenu(BackendCompletion<NutritionMenu> completion);
  // Asks for another dish of the course `dishOrder` in the selected day and intake; does
  // nothing while the menu screens have no day or intake selected.
  void getAlternativeDish(std::int64_t dishOrder, BackendCompletion<NutritionMenu> completion);
  void removeFavoriteDish(std::int64_t dishId,
                          BackendCompletion<std::vector<NutritionFavoriteDishesGet>> completion);
  void addFavoriteDish(const NutritionFavoriteDishPost& favorite,
                       BackendCompletion<std::vector<NutritionFavoriteDishPost>> completion);
  void getMyFavoriteDishes(BackendCompletion<std::vector<NutritionDish>> completion);
  // POST for a new member, PATCH otherwise. After an answer the held menu is dropped and the
  // member read again; the completion gets the member as read.
  void updateUser(const NutritionUser& user, bool isNew,
                  BackendCompletion<NutritionUser> completion);
  void getIntakes(BackendCompletion<std::vector<NutritionIntake>> completion);
  void getExcludedAliments(BackendCompletion<std::vector<NutritionExcluded>> completion);
  // The fasting schemes, with "No quiero ayuno" (identifier 0) always first.
  void getIntermitentFasting(BackendCompletion<std::vector<IntermittentFasting>> completion);
  void getBalances(BackendCompletion<std::vector<NutritionBalance>> completion);
  void getPreferences(BackendCompletion<std::vector<NutritionPreference>> completion);
  void getDistributions(BackendCompletion<std::vector<NutritionDistribution>> completion);
  void getPhysicalActivity(BackendCompletion<std::vector<PhysicalIntensity>> completion);
  void getDishOrder(BackendCompletion<std::vector<NutritionDishOrder>> completion);

 private:
  template <class T>
  void fetchList(const char* path, BackendCompletion<std::vector<T>> completion);
  void fetchMenu(const BackendRequest& request, BackendCompletion<NutritionMenu> completion);
};

}  // namespace nutrition
