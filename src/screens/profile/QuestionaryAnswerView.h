#pragma once
// One tickable row of a list question: a check image named after the question and the answer's
// score ("preferences_3"), and the answer's title. A tap toggles the row unless it is locked
// (`isFixed`), restyles it and tells the delegate.

#include <memory>
#include <optional>
#include <string>

#include "model/HealthProfile.h"
#include "screens/profile/AnswerDelegate.h"
#include "ui/UIContext.h"
#include "views/ImageView.h"
#include "views/Label.h"

namespace nutrition {

class QuestionaryAnswerView : public View {
 public:
  explicit QuestionaryAnswerView(const UIContext& ui);

  [[nodiscard]] std::string_view kind() const override { return "QuestionaryAnswerView"; }

  std::shared_ptr<ImageView> checkImg;
  std::shared_ptr<Label> textLabel;
  std::shared_ptr<View> contentView;
  std::optional<QuestionaryAnswer> answer;
  // Not owned: the question view that holds the row.
  AnswerDelegate* delegate = nullptr;
  bool isFixed = false;
  bool isSelected = false;

  // Shows `value` unticked; the check image is "<identifier>_<score>".
  void load(const QuestionaryAnswer& value, const std::string& identifier);
  void didTapOnAnswer();
  void layoutSubviews() override;
  // Selected: the primary colour behind white text and check. Not selected: the system
  // background, with text, check and border in the secondary label colour.
  void setEnabledLook();
  void setDisabledLook();

 private:
  const UIContext& ui_;
};

}  // namespace nutrition
