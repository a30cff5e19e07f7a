#include "screens/profile/HealthFormPageViewController.h"

#include "views/SystemColors.h"

namespace nutrition {

void HealthFormPageViewController::loadView() {
  auto root = std::make_shared<View>(Rect{{}, kPhoneScreen});
  root->backgroundColor = systemColors::systemBackground;
  auto scroll = addOutlet<ScrollView>(*root, "");
  scroll->setFrame(root->bounds());
  questionsContainer = addOutlet<StackView>(*scroll, "questionsContainer", Axis::vertical);
  questionsContainer->setFrame({{36, 16}, {318, 0}});
  questionsContainer->spacing = 24;
  setView(std::move(root));
}

void HealthFormPageViewController::viewDidLoad() {
  NutritionProfileUtils& profile = context_.services.profileUtils();
  double height = 0;
  for (const auto& question : questions.value_or(std::vector<HealthQuestion>{})) {
    auto view = makeView<HealthQuestionView>(
        context_, services_.calendar, question,
        profile.getValueForField(question.identifier.value_or("")), question.fixed);
    questionsContainer->addArrangedSubview(view);
    height += view->fitContent() + questionsContainer->spacing;
  }
  questionsContainer->setSize({questionsContainer->frame().width(), height});
}

std::vector<HealthQuestionView*> HealthFormPageViewController::getAllQuestionViews() const {
  std::vector<HealthQuestionView*> views;
  for (const auto& view : questionsContainer->arrangedSubviews()) {
    if (auto* question = dynamic_cast<HealthQuestionView*>(view.get())) views.push_back(question);
  }
  return views;
}

}  // namespace nutrition
