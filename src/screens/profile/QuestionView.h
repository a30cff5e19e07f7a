#pragma once
// The older single-question editor, for the smaller question record: a text field (number,
// date, picker), round answer buttons (buttons, slider) or tickable rows (list). It keeps the
// chosen value in `answer` and tells its delegate each time the member answers.

#include <memory>
#include <optional>

#include "logic/AnyValue.h"
#include "model/HealthProfile.h"
#include "screens/profile/AnswerDelegate.h"
#include "screens/profile/HealthRoundButton.h"
#include "screens/profile/QuestionaryAnswerView.h"
#include "ui/UIContext.h"
#include "views/Label.h"
#include "views/StackView.h"
#include "views/TextField.h"

namespace nutrition {

class QuestionView;

class QuestionDelegate {
 public:
  virtual void questionDidChange(QuestionView& question) = 0;

 protected:
  ~QuestionDelegate() = default;
};

class QuestionView : public View, public AnswerDelegate {
 public:
  QuestionView(const UIContext& ui, std::optional<QuestionaryQuestion> edited);

  [[nodiscard]] std::string_view kind() const override { return "QuestionView"; }

  std::shared_ptr<StackView> answersContainer;
  std::shared_ptr<StackView> answersHorizontalContainer;
  std::shared_ptr<Label> title;
  std::shared_ptr<View> contentView;
  std::shared_ptr<TextField> textField;
  // Not owned.
  QuestionDelegate* delegate = nullptr;
  std::optional<QuestionaryQuestion> question;
  AnyValue answer;

  // Rebuilds the controls for the question's type.
  void loadUI();
  void selectedHealthButton(HealthRoundButton& tapped);
  void selectAnswer(QuestionaryAnswerView& row) override;
  void selectAnswerButton(HealthRoundButton& tapped) override;

 private:
  void changed();

  const UIContext& ui_;
};

}  // namespace nutrition
