#include "logic/NutritionUtils.h"

#include <algorithm>
#include <cmath>

#include "base/Log.h"
#include "logic/MenuDay.h"
#include "model/ModelCodec.h"
#include "session/NutritionAuth.h"

namespace nutrition {
namespace {

// A shipped resource that does not decode is a defect of the build: stop.
template <class T>
std::vector<T> decodeShipped(std::string_view name, const std::string& json) {
  auto decoded = decodeJsonArray<T>(json);
  if (!decoded.ok()) {
    fatal("resource " + std::string(name) + " is malformed: " + decoded.error().message);
  }
  return std::move(decoded).value();
}

std::optional<NutritionDay> dayOf(const NutritionMenu& menu, std::int64_t number) {
  if (!menu.days) return std::nullopt;
  for (const auto& day : *menu.days) {
    if (day.day == number) return day;
  }
  return std::nullopt;
}

// A catalogue completion that hands `completion` one answer per entry (title = name,
// score = identifier), after `adjust` has filtered or ordered the entries.
template <class T, class Adjust>
auto answering(NutritionUtils::Completion<std::vector<QuestionaryAnswer>> completion,
               std::optional<std::string> T::*name, std::optional<std::int64_t> T::*id,
               Adjust adjust) {
  return
      [completion = std::move(completion), name, id, adjust](std::optional<std::vector<T>> list) {
        if (!list) return completion(std::nullopt);
        adjust(*list);
        std::vector<QuestionaryAnswer> answers;
        answers.reserve(list->size());
        for (const auto& entry : *list)
          answers.push_back({entry.*name, entry.*id, false});
        completion(std::move(answers));
      };
}

template <class T>
auto answering(NutritionUtils::Completion<std::vector<QuestionaryAnswer>> completion,
               std::optional<std::string> T::*name, std::optional<std::int64_t> T::*id) {
  return answering(std::move(completion), name, id, [](std::vector<T>&) {});
}

}  // namespace

NutritionUtils::NutritionUtils(const Platform& platform, const DataServiceNutrition& service,
                               const CurrentUserSource& user, const NutritionSDKUtils& config,
                               const StringTables& strings)
    : service_(service),
      user_(user),
      config_(config),
      strings_(strings),
      clock_(platform.clock),
      calendar_(platform.calendar),
      standard_(platform.keyValueStores->standard()),
      resources_(platform.resources),
      queue_(platform.mainQueue) {
  service_.getMyFavoriteDishes(
      onMain<std::vector<NutritionDish>>([this](std::optional<std::vector<NutritionDish>> dishes) {
        if (dishes) setFavoriteDishes(std::move(*dishes));
      }));
  service_.getExcludedAliments(onMain<std::vector<NutritionExcluded>>(
      [this](std::optional<std::vector<NutritionExcluded>> list) {
        if (list && !excludedAliments) excludedAliments = std::move(list);
      }));
}

template <class T>
BackendCompletion<T> NutritionUtils::onMain(Completion<T> completion) const {
  return [queue = queue_, alive = lifetime_.watch(), completion = std::move(completion)](
             const std::optional<Error>& error, std::optional<T> value) {
    if (error) {
      postIfAlive(queue, alive, [completion] { completion(std::nullopt); });
    } else if (!alive.expired()) {
      completion(std::move(value));
    }
  };
}

template <class T, class Fetch>
void NutritionUtils::cachedOrDownloaded(std::optional<std::vector<T>> NutritionUtils::*field,
                                        Fetch fetch, Completion<std::vector<T>> completion) {
  if (this->*field) {
    completion(this->*field);
    return;
  }
  (service_.*fetch)(onMain<std::vector<T>>(
      [this, field, completion = std::move(completion)](std::optional<std::vector<T>> list) {
        if (list) this->*field = list;
        completion(std::move(list));
      }));
}

void NutritionUtils::setFavoriteDishes(std::vector<NutritionDish> dishes) {
  favoriteIntakes.clear();
  for (const auto& dish : dishes) {
    NutritionIntake intake;
    intake.name = dish.name;
    intake.dishes = std::vector<NutritionDish>{dish};
    favoriteIntakes.push_back(std::move(intake));
  }
  favoriteDishes = std::move(dishes);
}

std::int64_t NutritionUtils::todayDayNumber() const {
  return menuDayNumber(currentDate(*clock_), *calendar_);
}

NutritionDay NutritionUtils::getTodayMenu() const {
  if (!weeklyMenu) return {};
  return dayOf(*weeklyMenu, todayDayNumber()).value_or(NutritionDay{});
}

void NutritionUtils::getTodayMenu(Completion<NutritionDay> completion) {
  const std::int64_t today = todayDayNumber();
  if (weeklyMenu && weeklyMenu->processed == true) {
    completion(dayOf(*weeklyMenu, today));
    return;
  }
  downloadMenu([today, completion = std::move(completion)](std::optional<NutritionMenu> menu) {
    completion(menu ? dayOf(*menu, today) : std::nullopt);
  });
}

void NutritionUtils::downloadMenu(Completion<NutritionMenu> completion) {
  // Without any answer the held menu stays; an answer replaces it, even with nothing.
  service_.getWeeklyIAMenu(
      [this, queue = queue_, alive = lifetime_.watch(), completion = std::move(completion)](
          const std::optional<Error>& error, std::optional<NutritionMenu> menu) {
        if (error) {
          postIfAlive(queue, alive, [completion] { completion(std::nullopt); });
          return;
        }
        if (alive.expired()) return;
        weeklyMenu = menu;
        completion(std::move(menu));
      });
}

void NutritionUtils::getDishOrders(Completion<std::vector<NutritionDishOrder>> completion) {
  cachedOrDownloaded(&NutritionUtils::dishOrders, &DataServiceNutrition::getDishOrder,
                     std::move(completion));
}

void NutritionUtils::getPreferences(Completion<std::vector<NutritionPreference>> completion) {
  cachedOrDownloaded(&NutritionUtils::preferences, &DataServiceNutrition::getPreferences,
                     std::move(completion));
}

void NutritionUtils::getFastings(Completion<std::vector<IntermittentFasting>> completion) {
  cachedOrDownloaded(&NutritionUtils::fastings, &DataServiceNutrition::getIntermitentFasting,
                     std::move(completion));
}

void NutritionUtils::getDistributions(Completion<std::vector<NutritionDistribution>> completion) {
  cachedOrDownloaded(&NutritionUtils::distributions, &DataServiceNutrition::getDistributions,
                     std::move(completion));
}

void NutritionUtils::getIntakes(Completion<std::vector<NutritionIntake>> completion) {
  cachedOrDownloaded(&NutritionUtils::intakes, &DataServiceNutrition::getIntakes,
                     std::move(completion));
}

void NutritionUtils::getBalances(Completion<std::vector<NutritionBalance>> completion) {
  cachedOrDownloaded(&NutritionUtils::balances, &DataServiceNutrition::getBalances,
                     std::move(completion));
}

void NutritionUtils::getActivityIntensity(Completion<std::vector<PhysicalIntensity>> completion) {
  cachedOrDownloaded(&NutritionUtils::physicalIntensity, &DataServiceNutrition::getPhysicalActivity,
                     std::move(completion));
}

void NutritionUtils::getExcludedAliments(Completion<std::vector<NutritionExcluded>> completion) {
  cachedOrDownloaded(&NutritionUtils::excludedAliments, &DataServiceNutrition::getExcludedAliments,
                     std::move(completion));
}

void NutritionUtils::getDistributionByID(std::int64_t id,
                                         Completion<NutritionDistribution> completion) {
  getDistributions([id, completion = std::move(completion)](
                       std::optional<std::vector<NutritionDistribution>> list) {
    if (list) {
      for (const auto& distribution : *list) {
        if (distribution.distributionByIntakeID == id) {
          completion(distribution);
          return;
        }
      }
    }
    completion(std::nullopt);
  });
}

void NutritionUtils::getAlternativeDish(std::int64_t dishOrder,
                                        Completion<NutritionDish> completion) {
  service_.getAlternativeDish(
      dishOrder, onMain<NutritionMenu>([this, dishOrder, completion = std::move(completion)](
                                           std::optional<NutritionMenu> menu) {
        if (!menu) {
          completion(std::nullopt);
          return;
        }
        weeklyMenu = menu;
        const auto day = dayOf(*menu, selectedDay.value_or(0));
        for (const auto& intake : day ? day->intakes.value_or(std::vector<NutritionIntake>{})
                                      : std::vector<NutritionIntake>{}) {
          if (intake.intakeId != selectedIntake || !intake.dishes) continue;
          for (const auto& dish : *intake.dishes) {
            if (dish.dishOrderID == dishOrder) {
              completion(dish);
              return;
            }
          }
        }
        completion(std::nullopt);
      }));
}

void NutritionUtils::addFavoriteDish(const NutritionDish& dish,
                                     Completion<std::vector<NutritionDish>> completion) {
  NutritionFavoriteDishPost favorite;
  favorite.dish = dish;
  if (const NutritionUser* user = user_.currentMember()) favorite.userId = user->userID;
  service_.addFavoriteDish(favorite,
                           onMain<std::vector<NutritionFavoriteDishPost>>(
                               [this, completion = std::move(completion)](
                                   std::optional<std::vector<NutritionFavoriteDishPost>> answer) {
                                 if (!answer) {
                                   completion(std::nullopt);
                                   return;
                                 }
                                 std::vector<NutritionDish> dishes;
                                 for (const auto& post : *answer) {
                                   if (post.dish) dishes.push_back(*post.dish);
                                 }
                                 setFavoriteDishes(dishes);
                                 completion(favoriteDishes);
                               }));
}

void NutritionUtils::removeFavoriteDish(std::int64_t dishID,
                                        Completion<std::vector<NutritionDish>> completion) {
  service_.removeFavoriteDish(
      dishID, onMain<std::vector<NutritionFavoriteDishesGet>>(
                  [this, completion = std::move(completion)](
                      std::optional<std::vector<NutritionFavoriteDishesGet>> answer) {
                    if (!answer) {
                      completion(std::nullopt);
                      return;
                    }
                    setFavoriteDishes(answer->empty() ? std::vector<NutritionDish>{}
                                                      : answer->front().dishes.value_or(
                                                            std::vector<NutritionDish>{}));
                    completion(favoriteDishes);
                  }));
}

void NutritionUtils::getAnswersFor(std::string_view field,
                                   Completion<std::vector<QuestionaryAnswer>> completion) {
  const auto preferencesOfKind = [](bool intolerances) {
    return [intolerances](std::vector<NutritionPreference>& list) {
      std::erase_if(list, [&](const NutritionPreference& p) {
        return (p.preferenceType == PreferenceType::intollerance) != intolerances;
      });
    };
  };
  const auto preference = [&](bool intolerances) {
    return answering(completion, &NutritionPreference::preferenceName,
                     &NutritionPreference::preferenceID, preferencesOfKind(intolerances));
  };

  if (field == "intollerance") {
    getPreferences(preference(true));
  } else if (field == "excludedAliment") {
    getExcludedAliments(answering(completion, &NutritionExcluded::excludedAlimentName,
                                  &NutritionExcluded::excludedAlimentId));
  } else if (field == "preferences") {
    getPreferences(preference(false));
  } else if (field == "physicalIntensityID") {
    getActivityIntensity(answering(completion, &PhysicalIntensity::physicalIntensityName,
                                   &PhysicalIntensity::physicalIntensityID));
  } else if (field == "desiredBalanceID") {
    getBalances(answering(completion, &NutritionBalance::desiredBalanceName,
                          &NutritionBalance::desiredBalanceID));
  } else if (field == "selectedIntakes") {
    getIntakes(answering(completion, &NutritionIntake::name, &NutritionIntake::intakeId));
  } else if (field == "distributionByIntakeID") {
    getDistributions(answering(completion, &NutritionDistribution::distributionByIntakeName,
                               &NutritionDistribution::distributionByIntakeID,
                               [](std::vector<NutritionDistribution>& list) {
                                 std::stable_sort(
                                     list.begin(), list.end(), [](const auto& a, const auto& b) {
                                       return a.distributionByIntakeID < b.distributionByIntakeID;
                                     });
                               }));
  } else if (field == "intermittentFastingID") {
    getFastings(answering(completion, &IntermittentFasting::intermittentFastingName,
                          &IntermittentFasting::intermittentFastingID,
                          [](std::vector<IntermittentFasting>& list) {
                            std::erase_if(list, [](const auto& f) { return !f.enabled; });
                          }));
  } else if (field == "lunchDishes" || field == "dinnerDishes") {
    getDishOrders(answering(completion, &NutritionDishOrder::dishOrderName,
                            &NutritionDishOrder::dishOrderID));
  } else if (field == "difficulty") {
    completion(std::vector<QuestionaryAnswer>{{strings_.localized("Fácil"), 1, false},
                                              {strings_.localized("Intermedia"), 2, false},
                                              {strings_.localized("Elaborada"), 3, false}});
  } else {
    completion(std::nullopt);
  }
}

bool NutritionUtils::canViewMenu() const {
  if (!config_.showWaitingScreens) return true;
  const auto hold = standard_->getDouble(NutritionAuth::kHoldMenuTimerKey);
  if (!hold) return true;
  const double now = secondsSince1970(*clock_);
  // A profile change holds the menu for a few seconds; allow a minute of clock change on top.
  constexpr double kLongestHold = NutritionAuth::kMenuHoldSeconds + 60.0;
  const bool stale = !std::isfinite(*hold) || *hold > now + kLongestHold;
  if (stale) log(LogLevel::warning, "releasing a menu hold that no profile change set");
  if (!stale && !(*hold < now)) return false;
  standard_->remove(NutritionAuth::kHoldMenuTimerKey);
  return true;
}

std::vector<WaitScreen> NutritionUtils::getWaitScreens() const {
  const auto file = resources_->resource("wait_screens", "json");
  if (!file) return {};
  return decodeShipped<WaitScreen>("wait_screens.json", *file);
}

std::optional<std::vector<HealthProfilePage>> NutritionUtils::getProfileQuestionary() const {
  const char* name =
      config_.showExcludedAliments ? "profileWithExcluded" : "profileWithoutExcluded";
  const auto file = resources_->resource(name, "json");
  if (!file) return std::nullopt;
  auto pages = decodeShipped<HealthProfilePage>(name, *file);
  if (config_.isShort) {
    if (pages.empty()) fatal("the short questionnaire needs at least one page");
    pages.erase(pages.begin());
  }
  return pages;
}

std::vector<AlertItem> NutritionUtils::getInfoFile(std::string_view name) const {
  const auto file = resources_->resource(name, "json");
  if (!file) return {};
  return decodeShipped<AlertItem>(name, *file);
}

}  // namespace nutrition
