#pragma once
// One round answer button of a buttons (or slider) question. Fully rounded at every layout;
// selected it is white with the title in the primary colour and no border, deselected it is
// translucent with a grey border.

#include <optional>

#include "model/HealthProfile.h"
#include "screens/profile/AnswerDelegate.h"
#include "ui/ThemedButtons.h"

namespace nutrition {

class HealthRoundButton : public ThemedButton {
 public:
  explicit HealthRoundButton(const UIContext& ui);

  [[nodiscard]] std::string_view kind() const override { return "HealthRoundButton"; }

  std::optional<QuestionaryAnswer> answer;
  // Not owned; told of taps on sub-answer buttons only.
  AnswerDelegate* delegate = nullptr;

  void setSelected(bool selected) override;
  void layoutSubviews() override { roundToHeight(); }
};

}  // namespace nutrition
