#pragma once
// A rounded card of a questionnaire page: the question views of one panel, stacked. Saving it
// writes every question's answer into the member, answered or not, in order.

#include <memory>
#include <optional>
#include <vector>

#include "logic/NutritionProfileUtils.h"
#include "model/HealthProfile.h"
#include "screens/profile/HealthQuestionView.h"
#include "views/StackView.h"

namespace nutrition {

class QuestionPanelView : public View {
 public:
  explicit QuestionPanelView(std::optional<std::vector<HealthQuestion>> panelQuestions);

  [[nodiscard]] std::string_view kind() const override { return "QuestionPanelView"; }

  std::shared_ptr<View> contentView;
  std::shared_ptr<StackView> questionsView;
  std::optional<std::vector<HealthQuestion>> questions;

  [[nodiscard]] std::vector<HealthQuestionView*> questionViews() const;
  void saveData(NutritionProfileUtils& profile) const;
  // Sizes the card to its questions and returns its height.
  double fitContent();
};

}  // namespace nutrition
