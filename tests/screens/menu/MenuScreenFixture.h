#pragma once
// The menu screens over a real Core on a test platform: a scripted backend the test answers,
// a member the test shapes, a key window with a recording presenter, Sunday 2026-11-22 at noon
// UTC as now, and Spanish texts.

#include <gtest/gtest.h>

#include <memory>
#include <string>

#include "facade/Core.h"
#include "model/ModelCodec.h"
#include "screens/menu/NutricionHomeViewController.h"
#include "support/RecordingPresenter.h"
#include "support/TestPlatform.h"
#include "ui/CustomNavViewController.h"
#include "views/Window.h"

namespace nutrition::test {

// A processed week whose day 7 (Sunday) has the intakes `sundayIntakes` (a JSON array) and day
// 1 a single breakfast.
inline std::string weekMenu(const std::string& sundayIntakes, bool processed = true) {
  return R"({"_id": "w1", "Processed": )" + std::string(processed ? "true" : "false") +
         R"(, "Days": [{"DayNum": 1, "Intakes": [{"IntakeId": 1, "IntakeName": "Desayuno",
         "Dishes": [{"DishId": 50, "DishName": "Tostada", "Kcal": 200}]}]},
         {"DayNum": 7, "Intakes": )" +
         sundayIntakes + "}]}";
}

// Three dishes for the lunch of the tests: a starter, a main course and a dessert.
inline constexpr const char* kLunch = R"({"IntakeId": 3, "IntakeName": "Comida", "Dishes": [
    {"DishId": 11, "DishName": "Lentejas", "DishOrderId": 1, "DishOrderName": "Primer plato",
     "Kcal": 300, "Proteins": 18, "Carbs": 40, "Fats": 6, "Difficulty": 1,
     "Ingredients": "lentejas, zanahoria, cebolla", "Recipe": "Cuece todo 40 minutos.",
     "BinaryUrl": ["https://img.test/lentejas.png"]},
    {"DishId": 12, "DishName": "Merluza", "DishOrderId": 2, "DishOrderName": "Segundo plato"},
    {"DishId": 13, "DishName": "Fruta", "DishOrderId": 3, "DishOrderName": "Postre",
     "Kcal": 250, "Difficulty": 2}]})";

class MenuScreens : public ::testing::Test {
 protected:
  MenuScreens() {
    window_->setRootViewController(root_);
    core_.application().setKeyWindow(window_);
    setMember(1, std::nullopt);
    core_.config().mainURL = "https://backend.test/";
  }

  void setMember(std::optional<std::int64_t> dietID, std::optional<std::int64_t> fastingID) {
    NutritionAuth& session = core_.session();
    session.currentUser = NutritionUser::empty();
    session.currentUser->userID = "m1_acme";
    session.currentUser->dietID = dietID;
    session.currentUser->intermittentFastingID = fastingID;
    session.isUnregister = false;
  }
  // Makes the data holder and answers its two creation requests.
  NutritionUtils& holder(const std::string& favourites = "[]") {
    NutritionUtils& utils = core_.utils();
    http().answerTo("api/favorite-dish?", favourites);
    http().answerTo("api/excluded-aliment", "[]");
    run();
    return utils;
  }
  void holdMenu(const std::string& json) {
    NutritionUtils& utils = holder();
    utils.weeklyMenu = decodeMenu(json);
  }
  static NutritionMenu decodeMenu(const std::string& json) {
    auto menu = decodeJson<NutritionMenu>(json);
    if (!menu.ok()) throw std::runtime_error(menu.error().message);
    return std::move(menu).value();
  }
  // Answers the waiting menu download with `json` (one menu).
  void answerMenu(const std::string& json) {
    ASSERT_TRUE(http().answerTo("api/menu", "[" + json + "]"));
    run();
  }
  // The weekly menu home in the themed navigation controller on the key window, as the router
  // shows it.
  std::shared_ptr<NutricionHomeViewController> openHome() {
    auto home = std::make_shared<NutricionHomeViewController>(screens());
    auto navigation = std::make_shared<CustomNavViewController>(core_.ui(), home);
    navigation->modalPresentationStyle = ModalPresentationStyle::overFullScreen;
    root_->present(navigation, false);
    return home;
  }
  void run() { platform_.queue().runUntilIdle(); }
  ScriptedHttpClient& http() { return platform_.http(); }
  const ScreenContext& screens() { return core_.screens(); }
  // The screen shown on top of the key window.
  ViewController* top() { return core_.application().topViewController(); }

  TestPlatform platform_{{.now = utc(2026, 11, 22, 12), .realResources = true}};
  Core core_{platform_.shared()};
  std::shared_ptr<RecordingPresenter> presenter_ = std::make_shared<RecordingPresenter>();
  std::shared_ptr<Window> window_ =
      std::make_shared<Window>(presenter_, platform_.bundle().mainQueue);
  std::shared_ptr<ViewController> root_ = std::make_shared<ViewController>();
};

}  // namespace nutrition::test
