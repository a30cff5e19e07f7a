#pragma once
// The client for every backend call after login: the weekly menu, dish replacement,
// favourites, the member update and the questionnaire's catalogues.
//
// Completions get an error only when no answer arrived (then on the HTTP client's thread);
// every answer is handled on the main queue: decoded, or, when it does not decode, reported
// as an absent value with no error. The HTTP status is not looked at.

#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "backend/RequestContext.h"
#include "base/Lifetime.h"
#include "base/Result.h"
#include "config/NutritionSDKUtils.h"
#include "model/NutritionCatalogues.h"
#include "model/NutritionDistribution.h"
#include "model/NutritionFavoriteDish.h"
#include "model/NutritionMenu.h"
#include "model/NutritionPreference.h"
#include "model/NutritionUser.h"
#include "platform/Platform.h"
#include "text/StringTables.h"

namespace nutrition {

struct BackendRequest;

template <class T>
using BackendCompletion = std::function<void(std::optional<Error>, std::optional<T>)>;

class DataServiceNutrition {
 public:
  static DataServiceNutrition& sharedInstance();

  // What the requests read from above: the member's id, the menu selection, and what follows
  // a member update.
  struct Links {
    const CurrentUserSource& user;
    const MenuSelection& selection;
    MemberRefresh& refresh;
  };

  DataServiceNutrition(const Platform& platform, const NutritionSDKUtils& config,
                       const StringTables& strings, Links links);

  void getWeeklyIAMenu(BackendCompletion<NutritionMenu> completion) const;
  // Asks for another dish of the course `dishOrder` in the selected day and intake; does
  // nothing while the menu screens have no day or intake selected.
  void getAlternativeDish(std::int64_t dishOrder,
                          BackendCompletion<NutritionMenu> completion) const;
  void removeFavoriteDish(
      std::int64_t dishId,
      BackendCompletion<std::vector<NutritionFavoriteDishesGet>> completion) const;
  void addFavoriteDish(const NutritionFavoriteDishPost& favorite,
                       BackendCompletion<std::vector<NutritionFavoriteDishPost>> completion) const;
  void getMyFavoriteDishes(BackendCompletion<std::vector<NutritionDish>> completion) const;
  // POST for a new member, PATCH otherwise. After an answer the held menu is dropped and the
  // member read again; the completion gets the member as read.
  void updateUser(const NutritionUser& user, bool isNew,
                  BackendCompletion<NutritionUser> completion) const;
  void getIntakes(BackendCompletion<std::vector<NutritionIntake>> completion) const;
  void getExcludedAliments(BackendCompletion<std::vector<NutritionExcluded>> completion) const;
  // The fasting schemes, with "No quiero ayuno" (identifier 0) always first.
  void getIntermitentFasting(BackendCompletion<std::vector<IntermittentFasting>> completion) const;
  void getBalances(BackendCompletion<std::vector<NutritionBalance>> completion) const;
  void getPreferences(BackendCompletion<std::vector<NutritionPreference>> completion) const;
  void getDistributions(BackendCompletion<std::vector<NutritionDistribution>> completion) const;
  void getPhysicalActivity(BackendCompletion<std::vector<PhysicalIntensity>> completion) const;
  void getDishOrder(BackendCompletion<std::vector<NutritionDishOrder>> completion) const;

 private:
  using AnswerHandler = std::function<void(std::string body)>;

  [[nodiscard]] std::string language() const;
  [[nodiscard]] std::string currentUserId() const;
  // Sends `request`; a transport error goes to `onTransportError` at once, on the HTTP
  // client's thread; an answer's body goes to `onAnswer` on the main queue while this service
  // exists.
  void perform(const BackendRequest& request, std::function<void(Error)> onTransportError,
               AnswerHandler onAnswer) const;
  template <class T>
  void fetchList(const char* path, BackendCompletion<std::vector<T>> completion) const;
  template <class T>
  void fetchDecoded(const BackendRequest& request, const char* what,
                    BackendCompletion<std::vector<T>> completion) const;
  void fetchMenu(const BackendRequest& request, BackendCompletion<NutritionMenu> completion) const;

  std::shared_ptr<HttpClient> http_;
  std::weak_ptr<MainQueue> queue_;
  const NutritionSDKUtils& config_;
  const StringTables& strings_;
  Links links_;
  Lifetime lifetime_;
};

}  // namespace nutrition
