#pragma once
// What an answer row or a round answer button tells the question it belongs to when the member
// taps it. Both calls are optional: a delegate overrides the ones it handles.

namespace nutrition {

class QuestionaryAnswerView;
class HealthRoundButton;

class AnswerDelegate {
 public:
  // The tapped row, after it toggled its selection.
  virtual void selectAnswer(QuestionaryAnswerView& /*answer*/) {}
  // The tapped sub-answer round button.
  virtual void selectAnswerButton(HealthRoundButton& /*answer*/) {}

 protected:
  ~AnswerDelegate() = default;
};

}  // namespace nutrition
