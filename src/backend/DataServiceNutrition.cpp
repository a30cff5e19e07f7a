#include "backend/DataServiceNutrition.h"

#include "backend/BackendRequest.h"
#include "base/Log.h"
#include "json/JsonWriter.h"
#include "model/ModelCodec.h"

namespace nutrition {
namespace {

template <class T>
std::optional<T> decoded(Result<T> result, const char* what) {
  if (result.ok()) return std::move(result).value();
  log(LogLevel::warning, std::string(what) + " answer does not decode: " + result.error().message);
  return std::nullopt;
}

// A transport error goes to the caller's completion with no value.
template <class T>
std::function<void(Error)> failing(const BackendCompletion<T>& completion) {
  return [completion](Error error) { completion(std::move(error), std::nullopt); };
}

}  // namespace

DataServiceNutrition::DataServiceNutrition(const Platform& platform,
                                           const NutritionSDKUtils& config,
                                           const StringTables& strings, Links links)
    : http_(platform.http),
      queue_(platform.mainQueue),
      config_(config),
      strings_(strings),
      links_(links) {}

std::string DataServiceNutrition::language() const {
  return std::string(config_.languageCode());
}

std::string DataServiceNutrition::currentUserId() const {
  const NutritionUser* user = links_.user.currentMember();
  return user ? user->userID.value_or("") : std::string{};
}

void DataServiceNutrition::perform(const BackendRequest& request,
                                   std::function<void(Error)> onTransportError,
                                   AnswerHandler onAnswer) const {
  sendBackendRequest(
      *http_, config_.mainURL, request,
      [queue = queue_, alive = lifetime_.watch(), onTransportError = std::move(onTransportError),
       onAnswer = std::move(onAnswer)](HttpResponse response) {
        if (response.transportError) {
          onTransportError(Error{ErrorCode::transport, *response.transportError});
          return;
        }
        postIfAlive(queue, alive, [body = std::move(response.body), onAnswer] { onAnswer(body); });
      });
}

template <class T>
void DataServiceNutrition::fetchDecoded(const BackendRequest& request, const char* what,
                                        BackendCompletion<std::vector<T>> completion) const {
  perform(request, failing(completion), [what, completion](const std::string& body) {
    completion(std::nullopt, decoded(decodeJsonArray<T>(body), what));
  });
}

template <class T>
void DataServiceNutrition::fetchList(const char* path,
                                     BackendCompletion<std::vector<T>> completion) const {
  fetchDecoded<T>({"GET", path, {{"Language", language()}}, {}}, path, std::move(completion));
}

void DataServiceNutrition::fetchMenu(const BackendRequest& request,
                                     BackendCompletion<NutritionMenu> completion) const {
  auto onTransportError = failing(completion);
  perform(request, std::move(onTransportError),
          [completion = std::move(completion)](const std::string& body) {
            const auto menus = decoded(decodeJsonArray<NutritionMenu>(body), "menu");
            completion(std::nullopt,
                       menus && !menus->empty() ? std::optional(menus->front()) : std::nullopt);
          });
}

void DataServiceNutrition::getWeeklyIAMenu(BackendCompletion<NutritionMenu> completion) const {
  fetchMenu({"GET", "api/menu", {{"Language", language()}, {"UserId", currentUserId()}}, {}},
            std::move(completion));
}

void DataServiceNutrition::getAlternativeDish(std::int64_t dishOrder,
                                              BackendCompletion<NutritionMenu> completion) const {
  const auto day = links_.selection.selectedMenuDay();
  const auto intake = links_.selection.selectedMenuIntake();
  if (!day || !intake) return;
  json::JsonWriter body;
  body.beginObject();
  body.key("UserId");
  body.string(currentUserId());
  body.key("DayNum");
  body.integer(*day);
  body.key("IntakeId");
  body.integer(*intake);
  body.key("DishOrderId");
  body.integer(dishOrder);
  body.key("Language");
  body.string(language());
  body.endObject();
  fetchMenu({"PATCH", "api/menu/dish/replace", {}, body.take()}, std::move(completion));
}

void DataServiceNutrition::removeFavoriteDish(
    std::int64_t dishId,
    BackendCompletion<std::vector<NutritionFavoriteDishesGet>> completion) const {
  json::JsonWriter body;
  body.beginObject();
  body.key("UserId");
  body.string(currentUserId());
  body.key("DishId");
  body.integer(dishId);
  body.endObject();
  fetchDecoded<NutritionFavoriteDishesGet>({"DELETE", "api/favorite-dish/delete", {}, body.take()},
                                           "favourite removal", std::move(completion));
}

void DataServiceNutrition::addFavoriteDish(
    const NutritionFavoriteDishPost& favorite,
    BackendCompletion<std::vector<NutritionFavoriteDishPost>> completion) const {
  auto body = encodeJson(favorite);
  if (!body.ok()) {
    log(LogLevel::error, "favourite not sent: " + body.error().message);
    return;
  }
  fetchDecoded<NutritionFavoriteDishPost>(
      {"POST", "api/favorite-dish/add", {}, std::move(body).value()}, "favourite addition",
      std::move(completion));
}

void DataServiceNutrition::getMyFavoriteDishes(
    BackendCompletion<std::vector<NutritionDish>> completion) const {
  fetchDecoded<NutritionDish>(
      {"GET", "api/favorite-dish", {{"UserId", currentUserId()}, {"Language", language()}}, {}},
      "favourites", std::move(completion));
}

void DataServiceNutrition::updateUser(const NutritionUser& user, bool isNew,
                                      BackendCompletion<NutritionUser> completion) const {
  auto body = encodeJson(user);
  if (!body.ok()) {
    log(LogLevel::error, "member not sent: " + body.error().message);
    return;
  }
  const BackendRequest request{
      isNew ? "POST" : "PATCH", "api/user", {{"Language", language()}}, std::move(body).value()};
  auto onTransportError = failing(completion);
  perform(request, std::move(onTransportError),
          [this, completion = std::move(completion)](const std::string&) {
            // The answer's body is not read: the menu made from the old profile is dropped and the
            // member read again, as the backend now has it.
            links_.refresh.dropHeldMenu();
            links_.refresh.rereadMember([completion](std::optional<NutritionUser> reread) {
              completion(std::nullopt, std::move(reread));
            });
          });
}

void DataServiceNutrition::getIntakes(
    BackendCompletion<std::vector<NutritionIntake>> completion) const {
  fetchList<NutritionIntake>("api/intake", std::move(completion));
}

void DataServiceNutrition::getExcludedAliments(
    BackendCompletion<std::vector<NutritionExcluded>> completion) const {
  fetchList<NutritionExcluded>("api/excluded-aliment", std::move(completion));
}

void DataServiceNutrition::getIntermitentFasting(
    BackendCompletion<std::vector<IntermittentFasting>> completion) const {
  // Only an answer that decoded gets the "no fasting" choice.
  fetchList<IntermittentFasting>(
      "api/intermittent-fasting",
      [noFasting = IntermittentFasting{0, strings_.localized("No quiero ayuno"), true},
       completion = std::move(completion)](std::optional<Error> error,
                                           std::optional<std::vector<IntermittentFasting>> list) {
        if (list) list->insert(list->begin(), noFasting);
        completion(std::move(error), std::move(list));
      });
}

void DataServiceNutrition::getBalances(
    BackendCompletion<std::vector<NutritionBalance>> completion) const {
  fetchList<NutritionBalance>("api/desired-balance", std::move(completion));
}

void DataServiceNutrition::getPreferences(
    BackendCompletion<std::vector<NutritionPreference>> completion) const {
  fetchList<NutritionPreference>("api/preference", std::move(completion));
}

void DataServiceNutrition::getDistributions(
    BackendCompletion<std::vector<NutritionDistribution>> completion) const {
  fetchList<NutritionDistribution>("api/distribution-by-intake", std::move(completion));
}

void DataServiceNutrition::getPhysicalActivity(
    BackendCompletion<std::vector<PhysicalIntensity>> completion) const {
  fetchList<PhysicalIntensity>("api/physical-intensity", std::move(completion));
}

void DataServiceNutrition::getDishOrder(
    BackendCompletion<std::vector<NutritionDishOrder>> completion) const {
  fetchList<NutritionDishOrder>("api/dish-order", std::move(completion));
}

}  // namespace nutrition
