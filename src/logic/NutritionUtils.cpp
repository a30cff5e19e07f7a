#include "logic/NutritionUtils.h"

#include <algorithm>
#include <cstdio>
#include <cstdlib>

#include "backend/DataServiceNutrition.h"
#include "base/Log.h"
#include "base/SharedInstance.h"
#include "config/NutritionSDKUtils.h"
#include "logic/MenuDay.h"
#include "model/ModelCodec.h"
#include "platform/Platform.h"
#include "session/NutritionAuth.h"
#include "text/Localization.h"

namespace nutrition {
namespace {

// A shipped resource that does not decode is a defect of the build: stop.
template <class T>
std::vector<T> decodeShipped(std::string_view name, const std::string& json) {
  auto decoded = decodeJsonArray<T>(json);
  if (!decoded.ok()) {
    std::fprintf(stderr, "NutritionKit: resource %.*s is malformed: %s\n", int(name.size()),
                 name.data(), decoded.error().message.c_str());
    std::abort();
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

// Runs `completion` on the main queue, whichever thread the answer came on.
template <class T>
BackendCompletion<T> onMain(std::function<void(std::optional<T>)> completion) {
  std::weak_ptr<MainQueue> queue = Platform::current()->mainQueue;
  return [queue, completion = std::move(completion)](std::optional<Error> error,
                                                     std::optional<T> value) {
    if (error) {
      postIfAlive(queue, [completion] { completion(std::nullopt); });
    } else {
      completion(std::move(value));
    }
  };
}

template <class T, class Fetch>
void cachedOrDownloaded(std::optional<std::vector<T>> NutritionUtils::*field, Fetch fetch,
                        NutritionUtils::Completion<std::vector<T>> completion) {
  auto& utils = NutritionUtils::sharedInstance();
  if (utils.*field) {
    completion(utils.*field);
    return;
  }
  (DataServiceNutrition::sharedInstance().*fetch)(onMain<std::vector<T>>(
      [field, completion = std::move(completion)](std::optional<std::vector<T>> list) {
        if (list) NutritionUtils::sharedInstance().*field = list;
        completion(std::move(list));
      }));
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

NutritionUtils& NutritionUtils::sharedInstance() {
  return SharedInstance<NutritionUtils>::get([] { return new NutritionUtils; });
}

NutritionUtils::NutritionUtils() {
  auto& service = DataServiceNutrition::sharedInstance();
  service.getMyFavoriteDishes(
      onMain<std::vector<NutritionDish>>([](std::optional<std::vector<NutritionDish>> dishes) {
        if (dishes) NutritionUtils::sharedInstance().setFavoriteDishes(std::move(*dishes));
      }));
  service.getExcludedAliments(onMain<std::vector<NutritionExcluded>>(
      [](std::optional<std::vector<NutritionExcluded>> list) {
        auto& utils = NutritionUtils::sharedInstance();
        if (list && !utils.excludedAliments) utils.excludedAliments = std::move(list);
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

std::int64_t NutritionUtils::todayDayNumber() {
  const auto platform = Platform::current();
  return menuDayNumber(std::chrono::floor<std::chrono::seconds>(platform->clock->now()),
                       *platform->calendar);
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
  std::weak_ptr<MainQueue> queue = Platform::current()->mainQueue;
  DataServiceNutrition::sharedInstance().getWeeklyIAMenu(
      [queue, completion = std::move(completion)](std::optional<Error> error,
                                                  std::optional<NutritionMenu> menu) {
        if (error) {
          postIfAlive(queue, [completion] { completion(std::nullopt); });
          return;
        }
        NutritionUtils::sharedInstance().weeklyMenu = menu;
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
  DataServiceNutrition::sharedInstance().getAlternativeDish(
      dishOrder, onMain<NutritionMenu>([dishOrder, completion = std::move(completion)](
                                           std::optional<NutritionMenu> menu) {
        auto& utils = NutritionUtils::sharedInstance();
        if (!menu) {
          completion(std::nullopt);
          return;
        }
        utils.weeklyMenu = menu;
        const auto day = dayOf(*menu, utils.selectedDay.value_or(0));
        for (const auto& intake : day ? day->intakes.value_or(std::vector<NutritionIntake>{})
                                      : std::vector<NutritionIntake>{}) {
          if (intake.intakeId != utils.selectedIntake || !intake.dishes) continue;
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
  if (const auto& user = NutritionAuth::sharedInstance().currentUser)
    favorite.userId = user->userID;
  DataServiceNutrition::sharedInstance().addFavoriteDish(
      favorite, onMain<std::vector<NutritionFavoriteDishPost>>(
                    [completion = std::move(completion)](
                        std::optional<std::vector<NutritionFavoriteDishPost>> answer) {
                      if (!answer) {
                        completion(std::nullopt);
                        return;
                      }
                      std::vector<NutritionDish> dishes;
                      for (const auto& post : *answer) {
                        if (post.dish) dishes.push_back(*post.dish);
                      }
                      auto& utils = NutritionUtils::sharedInstance();
                      utils.setFavoriteDishes(dishes);
                      completion(utils.favoriteDishes);
                    }));
}

void NutritionUtils::removeFavoriteDish(std::int64_t dishID,
                                        Completion<std::vector<NutritionDish>> completion) {
  DataServiceNutrition::sharedInstance().removeFavoriteDish(
      dishID, onMain<std::vector<NutritionFavoriteDishesGet>>(
                  [completion = std::move(completion)](
                      std::optional<std::vector<NutritionFavoriteDishesGet>> answer) {
                    if (!answer) {
                      completion(std::nullopt);
                      return;
                    }
                    auto& utils = NutritionUtils::sharedInstance();
                    utils.setFavoriteDishes(answer->empty() ? std::vector<NutritionDish>{}
                                                            : answer->front().dishes.value_or(
                                                                  std::vector<NutritionDish>{}));
                    completion(utils.favoriteDishes);
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
    completion(std::vector<QuestionaryAnswer>{{localized("Fácil"), 1, false},
                                              {localized("Intermedia"), 2, false},
                                              {localized("Elaborada"), 3, false}});
  } else {
    completion(std::nullopt);
  }
}

bool NutritionUtils::canViewMenu() const {
  if (!NutritionSDKUtils::sharedInstance().showWaitingScreens) return true;
  const auto platform = Platform::current();
  auto standard = platform->keyValueStores->standard();
  const auto hold = standard->getDouble(NutritionAuth::kHoldMenuTimerKey);
  if (!hold) return true;
  const double now =
      std::chrono::duration<double>(platform->clock->now().time_since_epoch()).count();
  if (!(*hold < now)) return false;
  standard->remove(NutritionAuth::kHoldMenuTimerKey);
  return true;
}

std::vector<WaitScreen> NutritionUtils::getWaitScreens() {
  const auto file = Platform::current()->resources->resource("wait_screens", "json");
  if (!file) return {};
  return decodeShipped<WaitScreen>("wait_screens.json", *file);
}

std::optional<std::vector<HealthProfilePage>> NutritionUtils::getProfileQuestionary() {
  const auto& config = NutritionSDKUtils::sharedInstance();
  const char* name = config.showExcludedAliments ? "profileWithExcluded" : "profileWithoutExcluded";
  const auto file = Platform::current()->resources->resource(name, "json");
  if (!file) return std::nullopt;
  auto pages = decodeShipped<HealthProfilePage>(name, *file);
  if (config.isShort) {
    if (pages.empty()) {
      std::fprintf(stderr, "NutritionKit: the short questionnaire needs at least one page\n");
      std::abort();
    }
    pages.erase(pages.begin());
  }
  return pages;
}

std::vector<AlertItem> NutritionUtils::getInfoFile(std::string_view name) {
  const auto file = Platform::current()->resources->resource(name, "json");
  if (!file) return {};
  return decodeShipped<AlertItem>(name, *file);
}

}  // namespace nutrition
