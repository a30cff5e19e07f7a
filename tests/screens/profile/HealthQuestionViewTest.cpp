#include <gtest/gtest.h>

#include "ProfileFixture.h"
#include "screens/profile/HealthFormPageViewController.h"
#include "screens/profile/QuestionPanelView.h"
#include "screens/profile/QuestionView.h"
#include "ui/ProfileAlertInfoViewController.h"

namespace nutrition {
namespace {

using HealthQuestionViewTest = test::ProfileFixture;

AnyValue::List scores(std::initializer_list<std::int64_t> values) {
  return AnyValue::List(values.begin(), values.end());
}

HealthQuestionView& at(QuestionPanelView& panel, std::size_t index) {
  return *panel.questionViews().at(index);
}

// Each kind of question answered through its control, then saved as the editor saves a panel.
TEST_F(HealthQuestionViewTest, EveryAnswerTypeReachesTheMemberInItsForm) {
  const std::vector<std::string> ids{
      "height",           "dateOfBirth", "gender",      "physicalIntensityID",
      "desiredBalanceID", "countries",   "preferences", "intollerance",
      "excludedAliment",  "difficulty",  "algorithm",   "lunchDishes"};
  member().algorithm = 2;
  member().selectedIntakes = std::vector<SelectedIntake>{};
  auto panel = makeView<QuestionPanelView>(std::nullopt);
  for (const auto& id : ids)
    panel->questionsView->addArrangedSubview(questionView(shippedQuestion(id)));

  answer(at(*panel, 0), {"72,5"});
  EXPECT_EQ(at(*panel, 0).getSelectedAnswer(), AnyValue("72,5"));  // text, never parsed here
  answer(at(*panel, 0), {"172"});
  answer(at(*panel, 1), {"12/04/1985"});
  EXPECT_EQ(at(*panel, 1).textField->text, "12/04/1985");
  answer(at(*panel, 2), {"Mujer"});
  answer(at(*panel, 3), {"Ligera"});
  EXPECT_EQ(at(*panel, 3).textField->text, "Ligera");
  answer(at(*panel, 4), {"Ganar peso"});
  answer(at(*panel, 5), {"Estados Unidos"});
  answer(at(*panel, 6), {"Vegano", "Sin gluten"});
  answer(at(*panel, 7), {"Sí", "Fructosa"});
  answer(at(*panel, 9), {"Elaborada"});
  for (auto* view : panel->questionViews()) {
    const bool untouched = view->question->identifier == "excludedAliment";
    EXPECT_EQ(view->isFilled(), !untouched) << *view->question->identifier;
  }

  panel->saveData(core_.profileUtils());
  const NutritionUser& saved = member();
  EXPECT_EQ(saved.height, 172);
  EXPECT_EQ(saved.dateOfBirth, Date{std::chrono::sys_days{std::chrono::year{1985} / 4 / 12}});
  EXPECT_EQ(saved.gender, NutritionGender::female);
  EXPECT_EQ(saved.physicalIntensityID, 2);
  EXPECT_EQ(saved.desiredBalanceID, 3);
  EXPECT_EQ(saved.countries, (std::vector<std::int64_t>{9}));
  // Intolerances are added after the preferences of the question before them.
  EXPECT_EQ(saved.preferences, (std::vector<std::int64_t>{1, 3, 5}));
  EXPECT_EQ(saved.excludedAliments, std::nullopt);  // nothing ticked: absent, not empty
  EXPECT_EQ(saved.difficulty, 3);
  EXPECT_EQ(saved.algorithm, 2);  // a closed question keeps the member's value
  ASSERT_TRUE(saved.selectedIntakes);
  ASSERT_EQ(saved.selectedIntakes->size(), 1u);
  EXPECT_EQ(saved.selectedIntakes->front().dishes, (std::vector<std::int64_t>{2}));  // locked row

  // Unticking the only row of a single-choice list leaves the question unanswered again.
  answer(at(*panel, 4), {});
  EXPECT_FALSE(at(*panel, 4).getSelectedAnswer().hasValue());
  EXPECT_FALSE(at(*panel, 4).isFilled());
}

TEST_F(HealthQuestionViewTest, YesNoQuestionsStoreTheTickedSubAnswersAndAnEmptyListForNo) {
  const HealthQuestion intolerances = shippedQuestion("intollerance");
  auto fresh = questionView(intolerances);
  EXPECT_FALSE(fresh->isFilled());
  answer(*fresh, {"No"});
  EXPECT_EQ(fresh->getSelectedAnswer(), AnyValue(AnyValue::List{}));
  EXPECT_TRUE(fresh->answersVerticalStackView->arrangedSubviews().empty());
  answer(*fresh, {"Sí"});
  EXPECT_EQ(fresh->answersVerticalStackView->arrangedSubviews().size(), 2u);  // the intolerances
  answer(*fresh, {"Sí", "Lactosa"});
  answer(*fresh, {"Sí", "Fructosa"});  // tapping yes again lists the rows anew
  EXPECT_EQ(fresh->getSelectedAnswer(), AnyValue(scores({5})));

  // A member with intolerances sees yes chosen and their rows ticked; an empty list shows no.
  member().preferences = std::vector<std::int64_t>{1, 4};
  auto known = questionView(intolerances);
  const auto& buttons = known->answersStackView->arrangedSubviews();
  ASSERT_EQ(buttons.size(), 2u);
  EXPECT_FALSE(dynamic_cast<HealthRoundButton&>(*buttons[0]).isSelected());
  EXPECT_TRUE(dynamic_cast<HealthRoundButton&>(*buttons[1]).isSelected());
  const auto rows = known->answersVerticalStackView->arrangedSubviews();
  ASSERT_EQ(rows.size(), 2u);
  EXPECT_TRUE(dynamic_cast<QuestionaryAnswerView&>(*rows[0]).isSelected);
  EXPECT_FALSE(dynamic_cast<QuestionaryAnswerView&>(*rows[1]).isSelected);
  EXPECT_EQ(known->getSelectedAnswer(), AnyValue(scores({4})));

  member().preferences = std::vector<std::int64_t>{};
  auto none = questionView(intolerances);
  EXPECT_TRUE(dynamic_cast<HealthRoundButton&>(*none->answersStackView->arrangedSubviews()[0])
                  .isSelected());
  EXPECT_TRUE(none->isFilled());
}

TEST_F(HealthQuestionViewTest, OnlyCatalogueRowsAreLockedByFixed) {
  auto dishes = questionView(shippedQuestion("lunchDishes"));
  auto rows = dishes->answersVerticalStackView->arrangedSubviews();
  ASSERT_EQ(rows.size(), 3u);
  auto& locked = dynamic_cast<QuestionaryAnswerView&>(*rows[1]);
  EXPECT_TRUE(locked.isFixed);
  EXPECT_TRUE(locked.isSelected);
  EXPECT_EQ(locked.contentView->backgroundColor, core_.config().primaryColor);
  EXPECT_EQ(locked.checkImg->image, ImageRef::named("lunchDishes_2"));
  locked.didTapOnAnswer();
  EXPECT_TRUE(locked.isSelected);
  EXPECT_EQ(dishes->getSelectedAnswer(), AnyValue(scores({2})));

  // The question's own answers are never locked, even when their score is listed.
  HealthQuestion own;
  own.identifier = "preferences";
  own.type = AnswerType::list;
  own.isMultipleSelection = true;
  own.fixed = std::vector<std::int64_t>{3};
  own.answers = std::vector<QuestionaryAnswer>{{"Uno", 1, false}, {"Tres", 3, false}};
  auto ownView = questionView(own);
  auto& three = dynamic_cast<QuestionaryAnswerView&>(
      *ownView->answersVerticalStackView->arrangedSubviews()[1]);
  EXPECT_FALSE(three.isFixed);
  EXPECT_EQ(three.checkImg->image, ImageRef::named("preferences_3"));
  EXPECT_FALSE(ownView->isFilled());
  three.didTapOnAnswer();
  EXPECT_EQ(ownView->getSelectedAnswer(), AnyValue(scores({3})));
  three.didTapOnAnswer();
  EXPECT_FALSE(ownView->getSelectedAnswer().hasValue());
}

TEST_F(HealthQuestionViewTest, ControlsByTypeAndReloadsNeverDuplicateThem) {
  member().difficulty = 2;
  member().physicalIntensityID = 1;
  auto difficulty = questionView(shippedQuestion("difficulty"));
  HealthQuestion asButtons = shippedQuestion("difficulty");
  asButtons.type = AnswerType::buttons;
  auto buttons = questionView(asButtons);
  for (auto* view : {difficulty.get(), buttons.get()}) {
    const auto& controls = view->answersStackView->arrangedSubviews();
    ASSERT_EQ(controls.size(), 3u);
    EXPECT_EQ(controls[2]->kind(), "HealthRoundButton");
    EXPECT_EQ(dynamic_cast<Button&>(*controls[2]).currentTitle(), "Elaborada");
    EXPECT_EQ(controls[2]->frame().height(), 43);
    // A plain score is the answer but selects no button: only yes/no lists do.
    EXPECT_EQ(view->getSelectedAnswer(), AnyValue(2));
  }

  auto picker = questionView(shippedQuestion("physicalIntensityID"));
  EXPECT_EQ(picker->textField->text, "Sedentaria");
  EXPECT_EQ(picker->textField->inputView, picker->pickerView);
  EXPECT_EQ(picker->textField->inputAccessoryView->items.front().title, "Hecho");
  EXPECT_EQ(picker->textField->inputAccessoryView->items.back().title, "Cancelar");
  picker->pickerView->pick(1);
  picker->textField->inputAccessoryView->tapItem("Cancelar");
  EXPECT_EQ(picker->getSelectedAnswer(), AnyValue(1));  // cancelling keeps the answer

  auto height = questionView(shippedQuestion("height"));
  EXPECT_EQ(height->textField->keyboardType, KeyboardType::decimalPad);
  auto preferences = questionView(shippedQuestion("preferences"));
  EXPECT_TRUE(preferences->answersStackView->isHidden);
  auto closed = questionView(shippedQuestion("algorithm"));
  EXPECT_EQ(closed->answersStackView->arrangedSubviews().size(), 1u);
  EXPECT_FALSE(closed->getSelectedAnswer().hasValue());  // a new member has no algorithm...
  EXPECT_TRUE(closed->isFilled());                       // ...and is not held back by it

  for (auto* view :
       {difficulty.get(), picker.get(), height.get(), preferences.get(), closed.get()}) {
    const auto controls = view->answersStackView->arrangedSubviews().size();
    const auto rows = view->answersVerticalStackView->arrangedSubviews().size();
    view->loadUI();
    view->loadUI();
    EXPECT_EQ(view->answersStackView->arrangedSubviews().size(), controls) << view->kind();
    EXPECT_EQ(view->answersVerticalStackView->arrangedSubviews().size(), rows);
  }

  // A multiple-selection buttons question counts as answered while it shows no rows.
  HealthQuestion several = asButtons;
  several.isMultipleSelection = true;
  member().difficulty.reset();
  EXPECT_TRUE(questionView(several)->isFilled());
}

}  // namespace
}  // namespace nutrition

namespace nutrition {
namespace {

using OlderQuestionViews = test::ProfileFixture;

TEST_F(HealthQuestionViewTest, InfoButtonOpensTheItemsOfItsResource) {
  auto activity = questionView(shippedQuestion("physicalIntensityID"));
  ASSERT_FALSE(activity->infoButton->isHidden);
  ASSERT_TRUE(activity->infoButton->tap());
  auto* info = dynamic_cast<ProfileAlertInfoViewController*>(root_->presentedViewController());
  ASSERT_NE(info, nullptr);
  EXPECT_EQ(info->items, core_.utils().getInfoFile("info_actividad"));
  EXPECT_FALSE(info->items.empty());
  info->didTapCloseButton();

  HealthQuestion missing = shippedQuestion("height");
  EXPECT_TRUE(questionView(missing)->infoButton->isHidden);
  missing.info = "info_nowhere";
  questionView(missing)->infoButton->tap();
  info = dynamic_cast<ProfileAlertInfoViewController*>(root_->presentedViewController());
  ASSERT_NE(info, nullptr);
  EXPECT_TRUE(info->items.empty());
}

struct RecordingQuestionDelegate final : QuestionDelegate {
  std::vector<AnyValue> answers;
  void questionDidChange(QuestionView& question) override { answers.push_back(question.answer); }
};

TEST_F(OlderQuestionViews, AnswerAndReportToTheirDelegate) {
  RecordingQuestionDelegate delegate;
  QuestionaryQuestion gender{"¿Cuál es tu sexo?", "gender", AnswerType::buttons, std::nullopt,
                             std::vector<QuestionaryAnswer>{{"Hombre", 0, {}}, {"Mujer", 1, {}}}};
  auto buttons = makeView<QuestionView>(core_.ui(), gender);
  buttons->delegate = &delegate;
  auto& man = dynamic_cast<HealthRoundButton&>(*buttons->answersHorizontalContainer->subviews()[0]);
  auto& woman =
      dynamic_cast<HealthRoundButton&>(*buttons->answersHorizontalContainer->subviews()[1]);
  woman.tap();
  man.tap();
  EXPECT_TRUE(man.isSelected());
  EXPECT_FALSE(woman.isSelected());

  QuestionaryQuestion list = gender;
  list.type = AnswerType::list;
  auto rows = makeView<QuestionView>(core_.ui(), list);
  rows->delegate = &delegate;
  auto& first = dynamic_cast<QuestionaryAnswerView&>(*rows->answersContainer->subviews()[0]);
  auto& second = dynamic_cast<QuestionaryAnswerView&>(*rows->answersContainer->subviews()[1]);
  first.didTapOnAnswer();
  second.didTapOnAnswer();
  EXPECT_FALSE(first.isSelected);
  EXPECT_EQ(second.checkImg->image, ImageRef::named("gender_1"));

  QuestionaryQuestion height{"¿Cuánto mides?", "height", AnswerType::number, "cm", std::nullopt};
  auto field = makeView<QuestionView>(core_.ui(), height);
  field->delegate = &delegate;
  field->textField->type("180");
  EXPECT_EQ(delegate.answers, (std::vector<AnyValue>{AnyValue(1), AnyValue(0), AnyValue(0),
                                                     AnyValue(1), AnyValue("180")}));

  // The single-page form shows one question view per question.
  auto form = std::make_shared<HealthFormPageViewController>(screens_, services_);
  form->questions =
      std::vector<HealthQuestion>{shippedQuestion("gender"), shippedQuestion("height")};
  root_->present(form, false);
  const auto views = form->getAllQuestionViews();
  ASSERT_EQ(views.size(), 2u);
  EXPECT_EQ(views[1]->question->identifier, "height");
}

}  // namespace
}  // namespace nutrition
