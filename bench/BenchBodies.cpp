#include "bench/BenchBodies.h"

#include "model/ModelCodec.h"
#include "sandbox/MenuGenerator.h"
#include "sandbox/SeedData.h"

namespace nutrition::bench {
namespace {

using sandbox::SeedData;

// Closing advice the backend's recipes carry; the library's own recipes are one sentence.
constexpr const char* kRecipeTips[] = {
    " Sirve en el momento y acompaña con agua o una infusión sin azúcar; si sobra, guárdalo en "
    "un recipiente cerrado en la nevera un máximo de dos días.",
    " Puedes preparar el doble y congelar la mitad en raciones individuales: se conserva bien "
    "hasta tres meses y se descongela la noche anterior en la nevera.",
    " Si no tienes alguno de los ingredientes, cámbialo por otro del mismo grupo (una verdura por "
    "otra, una legumbre por otra) sin variar la cantidad.",
    " Ajusta la sal al final y prueba antes de servir; las especias y el limón realzan el sabor "
    "sin añadir energía.",
};

// A dish of the library as the backend answers it in Spanish.
NutritionDish render(const SeedData& seed, const sandbox::SeedDish& dish, std::int64_t serial) {
  NutritionDish out;
  out.dishID = dish.id;
  out.name = dish.name.in(NutritionLanguage::es);
  out.dishOrderID = dish.course;
  if (const auto* course = seed.entry(seed.catalogues.dishOrders, dish.course)) {
    out.typeName = course->name.in(NutritionLanguage::es);
  }
  out.carbs = dish.carbs;
  out.proteins = dish.proteins;
  out.fats = dish.fats;
  out.kcal = dish.kcal;
  out.preferences = std::vector<std::int64_t>{};
  for (const auto& preference : seed.catalogues.preferences)
    out.preferences->push_back(preference.id);
  out.difficulty = dish.difficulty;
  out.ingredients = dish.ingredients.in(NutritionLanguage::es);
  out.recipe = dish.recipe.in(NutritionLanguage::es) +
               kRecipeTips[std::size_t(dish.id) % std::size(kRecipeTips)];
  const std::string base =
      "https://images.nutritionkit.example/v2/dishes/" + std::to_string(dish.id);
  out.binaryUrls = std::vector<std::string>{
      base + "/main-" + std::to_string(serial) + ".png?w=1080&h=720&fit=crop",
      base + "/thumbnail.png?w=320&h=240&fit=crop", base + "/detail@2x.png?w=2160&h=1440"};
  return out;
}

std::vector<NutritionMenu> buildWeeklyMenu() {
  const SeedData& seed = SeedData::embedded();
  NutritionMenu menu;
  menu.id = "65a1f0c2e4b0a1b2c3d4e5f6";
  menu.clientID = 1;
  menu.userID = "m1_bench_member";
  menu.current = true;
  menu.serialNumber = 12;
  menu.processed = true;
  menu.viableKcal = true;
  menu.enabled = true;
  menu.changedAt = "2026-11-21T12:00:00.000Z";
  menu.createdAt = "2026-11-21T12:00:00.000Z";
  menu.days = std::vector<NutritionDay>{};
  std::size_t next = 0;
  for (std::int64_t day = 1; day <= 7; ++day) {
    NutritionDay& outDay = menu.days->emplace_back();
    outDay.day = day;
    outDay.intakes = std::vector<NutritionIntake>{};
    for (const auto& intake : seed.catalogues.intakes) {
      NutritionIntake& outIntake = outDay.intakes->emplace_back();
      outIntake.intakeId = intake.id;
      outIntake.name = intake.name.in(NutritionLanguage::es);
      outIntake.day = day;
      outIntake.dishes = std::vector<NutritionDish>{};
      for (int course = 0; course < 3; ++course) {
        const auto& dish = seed.dishes[next++ % seed.dishes.size()];
        outIntake.dishes->push_back(render(seed, dish, std::int64_t(next)));
      }
    }
  }
  sandbox::MenuGenerator::updateTotals(menu);
  return {menu};
}

NutritionUser buildMember() {
  NutritionUser user;
  user.userID = "m1_acme";
  user.memberID = "m1";
  user.clientID = 7;
  user.algorithm = 1;
  user.difficulty = 2;
  user.userName = "Ana";
  user.userSurnames = "Pérez Gómez";
  user.password = "s3cret-pässword";
  user.dateOfBirth = parseIso8601("1985-04-12T00:00:00Z");
  user.gender = NutritionGender::female;
  user.physicalIntensityID = 2;
  user.targetWeight = 60;
  user.weight = 70;
  user.height = 165;
  user.desiredBalanceID = 1;
  user.dailyKcal = 1834.5;
  user.trainingID = 1;
  user.countries = std::vector<std::int64_t>{1};
  user.preferences = std::vector<std::int64_t>{2, 4};
  user.dietID = 8;
  user.distributionByIntakeID = 5;
  user.selectedIntakes = std::vector<SelectedIntake>{{1, std::vector<std::int64_t>{1}},
                                                     {3, std::vector<std::int64_t>{1, 2, 3}},
                                                     {5, std::vector<std::int64_t>{1, 2}}};
  user.excludedAliments = std::vector<std::int64_t>{4, 9};
  user.regenerateMenu = true;
  user.intermittentFastingID = 3;
  return user;
}

}  // namespace

const std::vector<NutritionMenu>& weeklyMenu() {
  static const auto menu = buildWeeklyMenu();
  return menu;
}

const std::string& weeklyMenuJson() {
  static const std::string text = *encodeJson(weeklyMenu());
  return text;
}

const NutritionUser& member() {
  static const NutritionUser user = buildMember();
  return user;
}

const std::string& memberJson() {
  static const std::string text = *encodeJson(member());
  return text;
}

}  // namespace nutrition::bench
