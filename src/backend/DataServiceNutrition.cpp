#include "backend/DataServiceNutrition.h"

#include "backend/BackendRequest.h"
#include "base/Log.h"
#include "base/SharedInstance.h"
#include "config/NutritionSDKUtils.h"
#include "json/JsonWriter.h"
#include "logic/NutritionUtils.h"
#include "model/ModelCodec.h"
#include "platform/Platform.h"
#include "session/NutritionAuth.h"
#include "text/Localization.h"

namespace nutrition {
namespace {

std::string language() {
  return std::string(NutritionSDKUtils::sharedInstance().languageCode());
}

std::string currentUserId() {
  const auto& user = NutritionAuth::sharedInstance().currentUser;
  return user ? user->userID.value_or("") : std::string{};
}

// Sends `request` and hands the answer to `handle` on the main queue; a transport error goes
// to `completion` at once, on the HTTP client's thread.
template <class T>
void perform(const BackendRequest& request, BackendCompletion<T> completion,
             std::function<void(std::string body, BackendCompletion<T>)> handle) {
  std::weak_ptr<MainQueue> queue = Platform::current()->mainQueue;
  sendBackendRequest(request, [queue, completion = std::move(completion),
                               handle = std::move(handle)](HttpResponse response) {
    if (response.transportError) {
      completion(Error{ErrorCode::transport, *response.transportError}, std::nullopt);
      return;
    }
    postIfAlive(queue, [body = std::move(response.body), completion, handle]() mutable {
      handle(std::move(body), std::move(completion));
    });
  });
}

template <class T>
std::optional<T> decoded(Result<T> result, const std::string& what) {
  if (result.ok()) return std::move(result).value();
  log(LogLevel::warning, what + " answer does not decode: " + result.error().message);
  return std::nullopt;
}

}  // namespace

DataServiceNutrition& DataServiceNutrition::sharedInstance() {
  return SharedInstance<DataServiceNutrition>::get([] { return new DataServiceNutrition; });
}

template <class T>
void DataServiceNutrition::fetchList(const char* path,
                                     BackendCompletion<std::vector<T>> completion) {
  const BackendRequest request{"GET", path, {{"Language", language()}}, {}};
  perform<std::vector<T>>(request, std::move(completion), [path](std::string body, auto done) {
    done(std::nullopt, decoded(decodeJsonArray<T>(body), path));
  });
}

void DataServiceNutrition::fetchMenu(const BackendRequest& request,
                                     BackendCompletion<NutritionMenu> completion) {
  perform<NutritionMenu>(request, std::move(completion), [](std::string body, auto done) {
    const auto menus = decoded(decodeJsonArray<NutritionMenu>(body), "menu");
    done(std::nullopt, menus && !menus->empty() ? std::optional(menus->front()) : std::nullopt);
  });
}

void DataServiceNutrition::getWeeklyIAMenu(BackendCompletion<NutritionMenu> completion) {
  fetchMenu({"GET", "api/menu", {{"Language", language()}, {"UserId", currentUserId()}}, {}},
            std::move(completion));
}

void DataServiceNutrition::getAlternativeDish(std::int64_t dishOrder,
                                              BackendCompletion<NutritionMenu> completion) {
  const auto& utils = NutritionUtils::sharedInstance();
  if (!utils.selectedDay || !utils.selectedIntake) return;
  json::JsonWriter body;
  body.beginObject();
  body.key("UserId");
  body.string(currentUserId());
  body.key("DayNum");
  body.integer(*utils.selectedDay);
  body.key("IntakeId");
  body.integer(*utils.selectedIntake);
  body.key("DishOrderId");
  body.integer(dishOrder);
  body.key("Language");
  body.string(language());
  body.endObject();
  fetchMenu({"PATCH", "api/menu/dish/replace", {}, body.take()}, std::move(completion));
}

void DataServiceNutrition::removeFavoriteDish(
    std::int64_t dishId, BackendCompletion<std::vector<NutritionFavoriteDishesGet>> completion) {
  json::JsonWriter body;
  body.beginObject();
  body.key("UserId");
  body.string(currentUserId());
  body.key("DishId");
  body.integer(dishId);
  body.endObject();
  perform<std::vector<NutritionFavoriteDishesGet>>(
      {"DELETE", "api/favorite-dish/delete", {}, body.take()}, std::move(completion),
      [](std::string answer, auto done) {
        done(std::nullopt,
             decoded(decodeJsonArray<NutritionFavoriteDishesGet>(answer), "favourite removal"));
      });
}

void DataServiceNutrition::addFavoriteDish(
    const NutritionFavoriteDishPost& favorite,
    BackendCompletion<std::vector<NutritionFavoriteDishPost>> completion) {
  auto body = encodeJson(favorite);
  if (!body.ok()) {
    log(LogLevel::error, "favourite not sent: " + body.error().message);
    return;
  }
  perform<std::vector<NutritionFavoriteDishPost>>(
      {"POST", "api/favorite-dish/add", {}, std::move(body).value()}, std::move(completion),
      [](std::string answer, auto done) {
        done(std::nullopt,
             decoded(decodeJsonArray<NutritionFavoriteDishPost>(answer), "favourite addition"));
      });
}

void DataServiceNutrition::getMyFavoriteDishes(
    BackendCompletion<std::vector<NutritionDish>> completion) {
  const BackendRequest request{
      "GET", "api/favorite-dish", {{"UserId", currentUserId()}, {"Language", language()}}, {}};
  perform<std::vector<NutritionDish>>(
      request, std::move(completion), [](std::string body, auto done) {
        done(std::nullopt, decoded(decodeJsonArray<NutritionDish>(body), "favourites"));
      });
}

void DataServiceNutrition::updateUser(const NutritionUser& user, bool isNew,
                                      BackendCompletion<NutritionUser> completion) {
  auto body = encodeJson(user);
  if (!body.ok()) {
    log(LogLevel::error, "member not sent: " + body.error().message);
    return;
  }
  const BackendRequest request{
      isNew ? "POST" : "PATCH", "api/user", {{"Language", language()}}, std::move(body).value()};
  perform<NutritionUser>(request, std::move(completion), [](std::string, auto done) {
    // The answer's body is not read: the menu made from the old profile is dropped and the
    // member read again, as the backend now has it.
    NutritionUtils::sharedInstance().weeklyMenu.reset();
    NutritionAuth::sharedInstance().getNutritionUser(
        [done](std::optional<NutritionUser> reread) { done(std::nullopt, std::move(reread)); });
  });
}

void DataServiceNutrition::getIntakes(BackendCompletion<std::vector<NutritionIntake>> completion) {
  fetchList<NutritionIntake>("api/intake", std::move(completion));
}

void DataServiceNutrition::getExcludedAliments(
    BackendCompletion<std::vector<NutritionExcluded>> completion) {
  fetchList<NutritionExcluded>("api/excluded-aliment", std::move(completion));
}

void DataServiceNutrition::getIntermitentFasting(
    BackendCompletion<std::vector<IntermittentFasting>> completion) {
  fetchList<IntermittentFasting>(
      "api/intermittent-fasting",
      [completion = std::move(completion)](std::optional<Error> error,
                                           std::optional<std::vector<IntermittentFasting>> list) {
        if (list)
          list->insert(list->begin(), IntermittentFasting{0, localized("No quiero ayuno"), true});
        completion(std::move(error), std::move(list));
      });
}

void DataServiceNutrition::getBalances(
    BackendCompletion<std::vector<NutritionBalance>> completion) {
  fetchList<NutritionBalance>("api/desired-balance", std::move(completion));
}

void DataServiceNutrition::getPreferences(
    BackendCompletion<std::vector<NutritionPreference>> completion) {
  fetchList<NutritionPreference>("api/preference", std::move(completion));
}

void DataServiceNutrition::getDistributions(
    BackendCompletion<std::vector<NutritionDistribution>> completion) {
  fetchList<NutritionDistribution>("api/distribution-by-intake", std::move(completion));
}

void DataServiceNutrition::getPhysicalActivity(
    BackendCompletion<std::vector<PhysicalIntensity>> completion) {
  fetchList<PhysicalIntensity>("api/physical-intensity", std::move(completion));
}

void DataServiceNutrition::getDishOrder(
    BackendCompletion<std::vector<NutritionDishOrder>> completion) {
  fetchList<NutritionDishOrder>("api/dish-order", std::move(completion));
}

}  // namespace nutrition
