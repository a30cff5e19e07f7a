#include "screens/profile/QuestionPanelView.h"

#include "screens/profile/QuestionnaireRules.h"
#include "views/SystemColors.h"

namespace nutrition {
namespace {
constexpr double kPadding = 16;
constexpr double kSpacing = 24;
}  // namespace

QuestionPanelView::QuestionPanelView(std::optional<std::vector<HealthQuestion>> panelQuestions)
    : questions(std::move(panelQuestions)) {
  setFrame({{}, {350, 0}});
  contentView = addOutlet<View>(*this, "contentView");
  contentView->backgroundColor = systemColors::secondarySystemBackground;
  questionsView = addOutlet<StackView>(*contentView, "questionsView", Axis::vertical);
  questionsView->spacing = kSpacing;
}

std::vector<HealthQuestionView*> QuestionPanelView::questionViews() const {
  std::vector<HealthQuestionView*> views;
  for (const auto& view : questionsView->arrangedSubviews()) {
    if (auto* question = dynamic_cast<HealthQuestionView*>(view.get())) views.push_back(question);
  }
  return views;
}

void QuestionPanelView::saveData(NutritionProfileUtils& profile) const {
  std::vector<PanelAnswer> answers;
  for (const auto* view : questionViews()) {
    answers.push_back(
        {view->question ? view->question->identifier : std::nullopt, view->getSelectedAnswer()});
  }
  savePanel(answers, profile);
}

double QuestionPanelView::fitContent() {
  const double width = frame().width();
  double height = 0;
  for (auto* view : questionViews()) {
    view->setSize({width - 2 * kPadding, view->frame().height()});
    height += view->fitContent() + kSpacing;
  }
  if (height > 0) height -= kSpacing;
  questionsView->setFrame({{kPadding, kPadding}, {width - 2 * kPadding, height}});
  contentView->setFrame({{}, {width, height + 2 * kPadding}});
  setSize({width, height + 2 * kPadding});
  return frame().height();
}

}  // namespace nutrition
