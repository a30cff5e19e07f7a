#include <gtest/gtest.h>

#include "ProfileFixture.h"
#include "model/ModelCodec.h"
#include "ui/HealthAlertViewController.h"

namespace nutrition {
namespace {

class ProfileEditorTest : public test::ProfileFixture {
 protected:
  static void answerAll(NutritionProfileViewController& page,
                        const std::map<std::string, std::vector<std::string>>& answers) {
    for (auto* panel : page.panelViews()) {
      for (auto* view : panel->questionViews()) {
        const auto found = answers.find(view->question->identifier.value_or(""));
        if (found != answers.end()) answer(*view, found->second);
      }
    }
  }

  static HealthProfilePage pageOf(std::vector<std::vector<HealthQuestion>> panels) {
    HealthProfilePage page;
    page.panels = std::vector<HealthProfilePanel>{};
    for (auto& questions : panels)
      page.panels->push_back({std::move(questions)});
    return page;
  }

  // A one-page editor asking the difficulty of a known member, up to its confirmation.
  HealthAlertViewController* confirmOnePage() {
    member().selectedIntakes = std::vector<SelectedIntake>{
        {5, std::vector<std::int64_t>{1}}, {1, std::vector<std::int64_t>{1}}, {3, std::nullopt}};
    member().gender = NutritionGender::male;
    member().height = 180;
    editor_ = openEditor({pageOf({{shippedQuestion("difficulty")}})});
    page_ = editor_->currentPage();
    EXPECT_TRUE(page_->previousButton->isHidden);  // first and last at once
    EXPECT_EQ(page_->nextButton->currentTitle(), "Enviar");
    answerAll(*page_, {{"difficulty", {"Fácil"}}});
    page_->nextButton->tap();
    return dynamic_cast<HealthAlertViewController*>(core_.application().topViewController());
  }

  std::shared_ptr<ProfilePageViewController> editor_;
  NutritionProfileViewController* page_ = nullptr;
};

TEST_F(ProfileEditorTest, PagesTurnOnlyThroughTheirButtonsAndRefuseWhatIsMissingOrExclusive) {
  auto editor = openEditor(*core_.utils().getProfileQuestionary());
  NutritionProfileViewController* page = editor->currentPage();
  ASSERT_NE(page, nullptr);
  EXPECT_EQ(editor->pageControl->numberOfPages, 3);
  EXPECT_EQ(editor->pageControl->selectedPage(), 0);
  EXPECT_TRUE(page->previousButton->isHidden);
  EXPECT_EQ(page->nextButton->currentTitle(), "Siguiente");
  EXPECT_FALSE(editor->pageViewController->swipe(PageViewController::Direction::forward));

  page->nextButton->tap();
  AlertController* alert = alertOn(*page);
  ASSERT_NE(alert, nullptr);
  EXPECT_EQ(alert->titleText, "Aviso");
  EXPECT_EQ(alert->message, "Es obligatorio responder a todas las preguntas");
  EXPECT_EQ(editor->currentPage(), page);
  EXPECT_EQ(member().height, std::nullopt);  // nothing saved
  alert->tapAction("Ok");

  answerAll(*page, {{"height", {"172"}},
                    {"dateOfBirth", {"12/04/1985"}},
                    {"gender", {"Hombre"}},
                    {"physicalIntensityID", {"Ligera"}},
                    {"desiredBalanceID", {"Perder peso"}},
                    {"countries", {"España"}}});
  page->nextButton->tap();
  page = editor->currentPage();
  EXPECT_EQ(page->pageIndex, 1u);
  EXPECT_EQ(editor->pageControl->selectedPage(), 1);
  EXPECT_FALSE(page->previousButton->isHidden);
  EXPECT_EQ(member().height, 172);

  answerAll(*page, {{"preferences", {"Vegano", "Vegetariano"}},
                    {"intollerance", {"No"}},
                    {"excludedAliment", {"Cerdo"}}});
  page->nextButton->tap();
  alert = alertOn(*page);
  ASSERT_NE(alert, nullptr);
  EXPECT_EQ(alert->titleText, "Aviso");
  EXPECT_EQ(alert->message, "No es posible seleccionar vegano y vegetariano simultanemente");
  EXPECT_EQ(editor->currentPage(), page);
  // The answers are written before the check refuses them.
  EXPECT_EQ(member().preferences, (std::vector<std::int64_t>{1, 2}));
  EXPECT_EQ(member().excludedAliments, (std::vector<std::int64_t>{1}));
  alert->tapAction("Ok");

  answerAll(*page, {{"preferences", {"Vegetariano"}}});
  page->nextButton->tap();
  EXPECT_EQ(editor->currentPage()->pageIndex, 2u);
  EXPECT_EQ(editor->currentPage()->nextButton->currentTitle(), "Enviar");
  editor->currentPage()->previousButton->tap();
  editor->currentPage()->previousButton->tap();
  page = editor->currentPage();
  EXPECT_EQ(page->pageIndex, 0u);
  EXPECT_EQ(editor->pageControl->selectedPage(), 0);
  // A page shown again starts from what the member now holds.
  EXPECT_EQ(page->panelViews()[0]->questionViews()[2]->textField->text, "172");

  // Closing leaves at once, sends nothing and shows no menu.
  editor->navigationItem.leftBarButtonItem->action();
  EXPECT_EQ(root_->presentedViewController(), nullptr);
  EXPECT_EQ(routes_.weekMenus, 0);
}

TEST_F(ProfileEditorTest, ConfirmedSendHandsTheNewMemberOverAndWaitsForTheMenu) {
  core_.config().userCountry = NutritionUserCountry::usa;
  core_.config().selectedDiet = DietType::diabetes;
  auto fasting = platform_.stores().suite("NutritionPreferences");
  fasting->set("ayuno_timer", platform_.nowSeconds() - 100);

  HealthAlertViewController* confirmation = confirmOnePage();
  ASSERT_NE(confirmation, nullptr);
  EXPECT_EQ(confirmation->titleString, "Aviso");
  EXPECT_EQ(confirmation->messageString, "¿Estás seguro de que quieres volver a generar el menú?");
  EXPECT_EQ(confirmation->buttonTitle, "GENERAR NUEVO MENÚ");
  EXPECT_EQ(confirmation->image, ImageRef::named("food"));
  EXPECT_EQ(member().targetWeight, 77);  // the last page sets the derived values
  EXPECT_TRUE(member().dailyKcal.has_value());
  const std::size_t before = platform_.http().requests().size();
  confirmation->continueButton->tap();

  ASSERT_EQ(platform_.http().requests().size(), before + 1);
  const HttpRequest& sent = platform_.http().requests().back();
  EXPECT_EQ(sent.method, "PATCH");
  auto body = decodeJson<NutritionUser>(sent.body.value_or(""));
  ASSERT_TRUE(body.ok());
  std::vector<std::int64_t> order;
  for (const auto& intake : *body.value().selectedIntakes)
    order.push_back(intake.intake.value_or(0));
  EXPECT_EQ(order, (std::vector<std::int64_t>{1, 3, 5}));
  EXPECT_EQ(body.value().countries, (std::vector<std::int64_t>{9}));
  EXPECT_EQ(body.value().dietID, 8);
  EXPECT_EQ(body.value().difficulty, 1);
  EXPECT_TRUE(page_->activityIndicator->isAnimating());

  NutritionUser stored = member();
  stored.weight = 81;
  ASSERT_TRUE(platform_.http().answerTo("api/user", "{}"));
  platform_.queue().runUntilIdle();
  ASSERT_TRUE(platform_.http().answerTo("api/user", "[" + *encodeJson(stored) + "]"));
  platform_.queue().runUntilIdle();

  EXPECT_EQ(member().weight, 81);
  EXPECT_FALSE(fasting->value("ayuno_timer").has_value());
  auto hold = platform_.stores().standard()->value("hold_menu_timer");
  ASSERT_TRUE(hold.has_value());
  EXPECT_EQ(std::get<double>(*hold), platform_.nowSeconds() + 5.0);
  EXPECT_TRUE(core_.config().isProfileFilled("m1"));
  EXPECT_FALSE(page_->activityIndicator->isAnimating());
  EXPECT_EQ(root_->presentedViewController(), nullptr);
  EXPECT_EQ(routes_.weekMenus, 1);
}

TEST_F(ProfileEditorTest, AFailedSendOrAClosedConfirmationKeepsTheEditor) {
  HealthAlertViewController* closed = confirmOnePage();
  ASSERT_NE(closed, nullptr);
  const std::size_t before = platform_.http().requests().size();
  closed->exitButton->tap();
  EXPECT_EQ(platform_.http().requests().size(), before);
  EXPECT_EQ(root_->presentedViewController(), editor_.get());

  page_->nextButton->tap();
  auto* confirmation =
      dynamic_cast<HealthAlertViewController*>(core_.application().topViewController());
  ASSERT_NE(confirmation, nullptr);
  while (platform_.http().waiting() > 0)
    platform_.http().answer("[]");
  confirmation->continueButton->tap();
  ASSERT_EQ(platform_.http().waiting(), 1u);
  platform_.http().failTransport();  // no answer: nobody comes back
  platform_.queue().runUntilIdle();
  AlertController* alert = alertOn(*page_);
  ASSERT_NE(alert, nullptr);
  EXPECT_EQ(alert->titleText, "Aviso");
  EXPECT_EQ(alert->message, "Se ha producido un error al actualizar el perfil");
  EXPECT_FALSE(page_->activityIndicator->isAnimating());
  EXPECT_EQ(root_->presentedViewController(), editor_.get());
  EXPECT_FALSE(platform_.stores().standard()->value("hold_menu_timer").has_value());
  EXPECT_EQ(routes_.weekMenus, 0);
}

TEST_F(ProfileEditorTest, FastingQuestionOnlyWhenFastingIsOfferedAndEmptyPanelsHide) {
  const HealthProfilePage page =
      pageOf({{shippedQuestion("intermittentFastingID")}, {shippedQuestion("difficulty")}});
  for (const bool enabled : {false, true}) {
    SCOPED_TRACE(enabled);
    core_.config().intermittentFastingEnable = enabled;
    auto editor = openEditor({page});
    const auto panels = editor->currentPage()->panelViews();
    ASSERT_EQ(panels.size(), 2u);
    EXPECT_EQ(panels[0]->isHidden, !enabled);
    EXPECT_EQ(panels[0]->questionViews().size(), enabled ? 1u : 0u);
    EXPECT_FALSE(panels[1]->isHidden);
    EXPECT_EQ(panels[1]->contentView->cornerRadius, 10);
    editor->dismiss(false);
  }
}

}  // namespace
}  // namespace nutrition
