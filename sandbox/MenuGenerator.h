#pragma once
// Builds a member's weekly menu from the dish library: seven days (1 = Monday), the member's
// selected intakes with one dish per selected course, each intake's energy following the
// member's distribution and daily energy, no dish that conflicts with the member's preferences
// or excluded aliments, and as little repetition over the week as the library allows. The same
// member and menu serial always give the same menu.
//
// Menus are language-neutral (identifiers and numbers); names are filled in when a menu is
// answered, in the language the request asks for.

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "model/NutritionMenu.h"
#include "model/NutritionUser.h"
#include "sandbox/SeedData.h"

namespace nutrition::sandbox {

// One course of one intake and the energy it should carry.
struct PlannedCourse {
  std::int64_t intake = 0;
  std::int64_t course = 0;
  double kcal = 0;
};

// The energy a day gets when the member has none, and the range a menu counts as viable in.
inline constexpr double kDefaultDailyKcal = 1800.0;
inline constexpr double kMinViableKcal = 400.0;
inline constexpr double kMaxViableKcal = 5000.0;

class MenuGenerator {
 public:
  explicit MenuGenerator(const SeedData& seed) : seed_(seed) {}

  // The intakes and courses of one day, in intake order, with their energy.
  std::vector<PlannedCourse> plan(const NutritionUser& user) const;

  // `timestamp` becomes the menu's "CreatedAt" and "ChangedAt".
  NutritionMenu generate(const NutritionUser& user, std::int64_t serialNumber,
                         const std::string& timestamp) const;

  // Replaces the dish of `course` in `intake` of `day` by another allowed dish of the same
  // course with the same energy; false when the menu has no such dish or no other dish fits.
  bool replaceDish(const NutritionUser& user, NutritionMenu& menu, std::int64_t day,
                   std::int64_t intake, std::int64_t course, const std::string& timestamp) const;

  // Whether the member may be served the dish.
  static bool allowed(const SeedDish& dish, const NutritionUser& user);

  // Recomputes "KcalDay" of every day and "KcalMedia".
  static void updateTotals(NutritionMenu& menu);

 private:
  NutritionDish portion(const SeedDish& dish, double kcal) const;
  std::vector<const SeedDish*> candidates(const NutritionUser& user, std::int64_t intake,
                                          std::int64_t course) const;

  const SeedData& seed_;
};

}  // namespace nutrition::sandbox
