#pragma once
// The profile editor's views over a real Core on a test platform: the real questionnaire files
// and strings, the session's member set by the test, catalogues already held by the data
// holder (so answers arrive at once), a key window with a recording presenter, and routes
// that count the weekly menus asked for.

#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <vector>

#include "facade/Core.h"
#include "screens/ScreenContext.h"
#include "screens/profile/HealthQuestionView.h"
#include "screens/profile/ProfileEditorServices.h"
#include "screens/profile/ProfilePageViewController.h"
#include "screens/profile/QuestionTaps.h"
#include "support/RecordingPresenter.h"
#include "support/TestPlatform.h"
#include "views/AlertController.h"
#include "views/Window.h"

namespace nutrition::test {

struct RecordingRoutes final : ScreenRoutes {
  int weekMenus = 0;
  void showWeekMenu() override { ++weekMenus; }
  void showProfile() override {}
  void getAyunoViewController(ScreenCompletion /*completion*/) override {}
};

class ProfileFixture : public ::testing::Test {
 protected:
  ProfileFixture() {
    window_->setRootViewController(root_);
    core_.application().setKeyWindow(window_);
    NutritionAuth& session = core_.session();
    session.memberID = "m1";
    session.isUnregister = false;
    session.currentUser = NutritionUser::empty();
    session.currentUser->userID = "m1_demo";
    holdCatalogues(core_.utils());
  }

  static void holdCatalogues(NutritionUtils& utils) {
    using P = PreferenceType;
    utils.preferences = std::vector<NutritionPreference>{{1, "Vegano", P::principles, {}},
                                                         {2, "Vegetariano", P::principles, {}},
                                                         {3, "Sin gluten", P::allergen, {}},
                                                         {4, "Lactosa", P::intollerance, {}},
                                                         {5, "Fructosa", P::intollerance, {}}};
    utils.excludedAliments =
        std::vector<NutritionExcluded>{{1, "Cerdo", {}, {}}, {2, "Ternera", {}, {}}};
    utils.physicalIntensity =
        std::vector<PhysicalIntensity>{{"a", "Sedentaria", 1}, {"b", "Ligera", 2}};
    utils.balances = std::vector<NutritionBalance>{
        {1, "Perder peso"}, {2, "Mantener el peso"}, {3, "Ganar peso"}};
    utils.distributions =
        std::vector<NutritionDistribution>{{3, "Tres comidas", {}}, {5, "Cinco comidas", {}}};
    utils.fastings =
        std::vector<IntermittentFasting>{{0, "No quiero ayuno", true}, {3, "16/8", true}};
    utils.dishOrders =
        std::vector<NutritionDishOrder>{{1, "Primer plato"}, {2, "Segundo plato"}, {3, "Postre"}};
  }

  NutritionUser& member() { return *core_.session().currentUser; }

  // The question of the shipped questionnaire with this identifier.
  HealthQuestion shippedQuestion(const std::string& identifier) {
    const auto pages = core_.utils().getProfileQuestionary().value();
    for (const auto& page : pages) {
      for (const auto& panel : page.panels.value_or(std::vector<HealthProfilePanel>{})) {
        for (const auto& question : panel.questions) {
          if (question.identifier == identifier) return question;
        }
      }
    }
    ADD_FAILURE() << "no question " << identifier;
    return {};
  }

  std::shared_ptr<HealthQuestionView> questionView(const HealthQuestion& question) {
    return makeView<HealthQuestionView>(
        screens_, platform_.bundle().calendar, question,
        core_.profileUtils().getValueForField(question.identifier.value_or("")), question.fixed);
  }

  std::shared_ptr<ProfilePageViewController> openEditor(std::vector<HealthProfilePage> pages) {
    auto editor = makeProfileEditor(screens_, services_, std::move(pages));
    editor->modalPresentationStyle = ModalPresentationStyle::fullScreen;
    root_->present(editor, false);
    return editor;
  }

  // The alert shown over `page`, if any: a page presents on the outermost container it is in.
  static AlertController* alertOn(ViewController& page) {
    ViewController* screen = &page;
    while (screen->parent() != nullptr)
      screen = screen->parent();
    return dynamic_cast<AlertController*>(screen->presentedViewController());
  }

  static void answer(HealthQuestionView& view, const std::vector<std::string>& choices) {
    const TapResult result = tapAnswer(view, choices);
    EXPECT_TRUE(result.ok) << view.question->identifier.value_or("") << ": " << result.problem;
  }

  TestPlatform platform_{{.realResources = true}};
  Core core_{platform_.shared()};
  RecordingRoutes routes_;
  ScreenContext screens_{core_.ui(), core_.ayuno(), core_.screens().user, core_.screens().services,
                         routes_};
  ProfileEditorServices services_ =
      ProfileEditorServices::from(platform_.bundle(), core_.dataService());
  std::shared_ptr<RecordingPresenter> presenter_ = std::make_shared<RecordingPresenter>();
  std::shared_ptr<Window> window_ =
      std::make_shared<Window>(presenter_, platform_.bundle().mainQueue);
  std::shared_ptr<ViewController> root_ = std::make_shared<ViewController>();
};

}  // namespace nutrition::test
