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
