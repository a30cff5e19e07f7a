#include "sandbox/MenuGenerator.h"

#include <algorithm>
#include <cmath>
#include <map>
#include <set>
#include <string>

#include "base/Saturating.h"

namespace nutrition::sandbox {
namespace {

constexpr std::int64_t kLunch = 3;
constexpr std::int64_t kDinner = 5;
constexpr std::int64_t kDefaultDistribution = 5;

// splitmix64: a small deterministic generator, the same on every platform.
class Random {
 public:
  explicit Random(std::uint64_t seed) : state_(seed) {}
  std::uint64_t next() {
    std::uint64_t z = (state_ += 0x9E3779B97F4A7C15ull);
    z = (z ^ (z >> 30)) * 0xBF58476D1CE4E5B9ull;
    z = (z ^ (z >> 27)) * 0x94D049BB133111EBull;
    return z ^ (z >> 31);
  }
  template <class T>
  void shuffle(std::vector<T>& items) {
    for (std::size_t i = items.size(); i > 1; --i)
      std::swap(items[i - 1], items[next() % i]);
  }

 private:
  std::uint64_t state_;
};

std::uint64_t hashText(std::string_view text) {
  std::uint64_t hash = 0xCBF29CE484222325ull;  // FNV-1a
  for (const char c : text) {
    hash ^= static_cast<unsigned char>(c);
    hash *= 0x100000001B3ull;
  }
  return hash;
}

std::uint64_t seedFor(const NutritionUser& user, std::int64_t serial, std::uint64_t salt = 0) {
  return hashText(user.userID.value_or("")) ^ (static_cast<std::uint64_t>(serial) * 0x9E37ull) ^
         (salt * 0xA24BAED4963EE407ull);
}

bool contains(const std::optional<std::vector<std::int64_t>>& list, std::int64_t value) {
  return list && std::find(list->begin(), list->end(), value) != list->end();
}

// Relative weight of a course within an intake.
double courseWeight(std::int64_t course) {
  switch (course) {
    case 1:
      return 0.35;
    case 2:
      return 0.45;
    case 3:
      return 0.20;
    default:
      return 0.35;
  }
}

}  // namespace

bool MenuGenerator::allowed(const SeedDish& dish, const NutritionUser& user) {
  for (const auto id : dish.conflictsPreferences) {
    if (contains(user.preferences, id)) return false;
  }
  for (const auto id : dish.conflictsExcluded) {
    if (contains(user.excludedAliments, id)) return false;
  }
  return true;
}

std::vector<PlannedCourse> MenuGenerator::plan(const NutritionUser& user) const {
  const auto& catalogues = seed_.catalogues;
  const SeedEntry* distribution =
      seed_.entry(catalogues.distributions, user.distributionByIntakeID.value_or(0));
  if (!distribution) distribution = seed_.entry(catalogues.distributions, kDefaultDistribution);

  // Intakes in breakfast-to-dinner order, each with its courses (merged, no repeats).
  std::map<std::int64_t, std::vector<std::int64_t>> courses;
  const auto addCourses = [&](std::int64_t intake, const std::vector<std::int64_t>& list) {
    if (!seed_.entry(catalogues.intakes, intake)) return;
    auto& target = courses[intake];
    for (const auto course : list) {
      if (seed_.entry(catalogues.dishOrders, course) &&
          std::find(target.begin(), target.end(), course) == target.end()) {
        target.push_back(course);
      }
    }
    if (target.empty()) target.push_back(1);
  };
  if (user.selectedIntakes && !user.selectedIntakes->empty()) {
    for (const auto& selected : *user.selectedIntakes) {
      addCourses(selected.intake.value_or(0),
                 selected.dishes.value_or(std::vector<std::int64_t>{}));
    }
  }
  if (courses.empty() && distribution && distribution->split) {
    for (const auto& split : *distribution->split) {
      const bool main = split.intake == kLunch || split.intake == kDinner;
      addCourses(split.intake,
                 main ? std::vector<std::int64_t>{1, 2, 3} : std::vector<std::int64_t>{1});
    }
  }

  // Each intake's share of the day: its percentage of carbohydrate, protein and fat weighted by
  // a 50/20/30 energy split. Intakes the distribution lacks get the mean share.
  std::map<std::int64_t, double> shares;
  double known = 0;
  if (distribution && distribution->split) {
    for (const auto& split : *distribution->split) {
      if (!courses.contains(split.intake)) continue;
      const double share =
          0.5 * double(split.carbs) + 0.2 * double(split.proteins) + 0.3 * double(split.fats);
      shares[split.intake] = std::max(share, 0.0);
      known += shares[split.intake];
    }
  }
  const double mean = shares.empty() ? 1.0 : known / double(shares.size());
  double total = 0;
  for (const auto& [intake, list] : courses) {
    if (!shares.contains(intake)) shares[intake] = mean > 0 ? mean : 1.0;
    total += shares[intake];
  }

  double daily = user.dailyKcal.value_or(kDefaultDailyKcal);
  if (!std::isfinite(daily) || daily <= 0) daily = kDefaultDailyKcal;
  daily = std::min(daily, 20000.0);

  std::vector<PlannedCourse> planned;
  for (const auto& [intake, list] : courses) {
    const double intakeKcal = total > 0 ? daily * shares[intake] / total : 0;
    double weights = 0;
    for (const auto course : list)
      weights += courseWeight(course);
    for (const auto course : list) {
      planned.push_back({intake, course, intakeKcal * courseWeight(course) / weights});
    }
  }
  return planned;
}

std::vector<const SeedDish*> MenuGenerator::candidates(const NutritionUser& user,
                                                       std::int64_t intake,
                                                       std::int64_t course) const {
  std::vector<const SeedDish*> fitting, anyIntake;
  for (const auto& dish : seed_.dishes) {
    if (dish.course != course || !allowed(dish, user)) continue;
    anyIntake.push_back(&dish);
    if (std::find(dish.intakes.begin(), dish.intakes.end(), intake) != dish.intakes.end()) {
      fitting.push_back(&dish);
    }
  }
  // A course the library has no dish for at this intake borrows from the others.
  return fitting.empty() ? anyIntake : fitting;
}

NutritionDish MenuGenerator::portion(const SeedDish& dish, double kcal) const {
  const double factor = dish.kcal > 0 ? kcal / double(dish.kcal) : 0;
  const auto scaled = [&](std::int64_t grams) {
    return saturatingToInt64(std::llround(double(grams) * factor));
  };
  NutritionDish out;
  out.dishID = dish.id;
  out.dishOrderID = dish.course;
  out.carbs = scaled(dish.carbs);
  out.proteins = scaled(dish.proteins);
  out.fats = scaled(dish.fats);
  out.kcal = saturatingToInt64(std::llround(kcal));
  out.difficulty = dish.difficulty;
  return out;
}

NutritionMenu MenuGenerator::generate(const NutritionUser& user, std::int64_t serialNumber,
                                      const std::string& timestamp) const {
  const auto planned = plan(user);
  Random random(seedFor(user, serialNumber));

  // One shuffled rotation per (intake, course); a dish is not repeated within the week while
  // another allowed dish remains.
  std::map<std::pair<std::int64_t, std::int64_t>, std::vector<const SeedDish*>> rotations;
  for (const auto& course : planned) {
    auto list = candidates(user, course.intake, course.course);
    random.shuffle(list);
    rotations[{course.intake, course.course}] = std::move(list);
  }
  std::set<std::int64_t> usedThisWeek;
  bool complete = true;

  NutritionMenu menu;
  menu.days = std::vector<NutritionDay>{};
  for (std::int64_t dayNumber = 1; dayNumber <= 7; ++dayNumber) {
    NutritionDay day;
    day.day = dayNumber;
    day.intakes = std::vector<NutritionIntake>{};
    std::set<std::int64_t> usedToday;
    for (const auto& course : planned) {
      if (day.intakes->empty() || day.intakes->back().intakeId != course.intake) {
        NutritionIntake intake;
        intake.intakeId = course.intake;
        intake.day = dayNumber;
        intake.dishes = std::vector<NutritionDish>{};
        day.intakes->push_back(std::move(intake));
      }
      auto& rotation = rotations[{course.intake, course.course}];
      if (rotation.empty()) {
        complete = false;
        continue;
      }
      // First choice: unused this week; then unused today; then anything.
      auto pick = std::find_if(rotation.begin(), rotation.end(),
                               [&](const SeedDish* d) { return !usedThisWeek.contains(d->id); });
      if (pick == rotation.end()) {
        pick = std::find_if(rotation.begin(), rotation.end(),
                            [&](const SeedDish* d) { return !usedToday.contains(d->id); });
      }
      if (pick == rotation.end()) pick = rotation.begin();
      const SeedDish* dish = *pick;
      std::rotate(rotation.begin(), pick + 1, rotation.end());  // used dishes go to the back
      usedThisWeek.insert(dish->id);
      usedToday.insert(dish->id);
      day.intakes->back().dishes->push_back(portion(*dish, course.kcal));
    }
    menu.days->push_back(std::move(day));
  }

  const double daily = planned.empty() ? 0 : [&] {
    double sum = 0;
    for (const auto& course : planned)
      sum += course.kcal;
    return sum;
  }();
  char id[32];
  std::snprintf(id, sizeof id, "%016llx",
                static_cast<unsigned long long>(seedFor(user, serialNumber, 1)));
  menu.id = id;
  menu.clientID = user.clientID;
  menu.userID = user.userID;
  menu.current = true;
  menu.serialNumber = serialNumber;
  menu.processed = true;
  menu.viableKcal =
      complete && !planned.empty() && daily >= kMinViableKcal && daily <= kMaxViableKcal;
  menu.enabled = true;
  menu.createdAt = timestamp;
  menu.changedAt = timestamp;
  updateTotals(menu);
  return menu;
}

bool MenuGenerator::replaceDish(const NutritionUser& user, NutritionMenu& menu, std::int64_t day,
                                std::int64_t intake, std::int64_t course,
                                const std::string& timestamp) const {
  if (!menu.days) return false;
  for (auto& menuDay : *menu.days) {
    if (menuDay.day != day || !menuDay.intakes) continue;
    std::set<std::int64_t> usedToday;
    for (const auto& each : *menuDay.intakes) {
      for (const auto& dish : each.dishes.value_or(std::vector<NutritionDish>{})) {
        if (dish.dishID) usedToday.insert(*dish.dishID);
      }
    }
    for (auto& menuIntake : *menuDay.intakes) {
      if (menuIntake.intakeId != intake || !menuIntake.dishes) continue;
      for (auto& dish : *menuIntake.dishes) {
        if (dish.dishOrderID != course) continue;
        auto options = candidates(user, intake, course);
        // Nothing served elsewhere that day, the dish being replaced included.
        std::erase_if(options, [&](const SeedDish* d) { return usedToday.contains(d->id); });
        if (options.empty()) return false;
        // Vary with the time of the request, so asking again gives yet another dish.
        Random random(seedFor(user, menu.serialNumber.value_or(0), hashText(timestamp)));
        const SeedDish* chosen = options[random.next() % options.size()];
        dish = portion(*chosen, double(dish.kcal.value_or(0)));
        menu.changedAt = timestamp;
        updateTotals(menu);
        return true;
      }
    }
  }
  return false;
}

void MenuGenerator::updateTotals(NutritionMenu& menu) {
  if (!menu.days || menu.days->empty()) {
    menu.kcalMedia = 0.0;
    return;
  }
  double sum = 0;
  for (auto& day : *menu.days) {
    std::int64_t kcal = 0;
    for (const auto& intake : day.intakes.value_or(std::vector<NutritionIntake>{})) {
      kcal = saturatingAdd(kcal, intake.getTotalKcal());
    }
    day.kcalDay = kcal;
    sum += double(kcal);
  }
  menu.kcalMedia = std::round(sum / double(menu.days->size()) * 100.0) / 100.0;
}

}  // namespace nutrition::sandbox
