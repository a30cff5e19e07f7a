#include "views/AlertController.h"

#include "views/Button.h"
#include "views/Label.h"
#include "views/StackView.h"
#include "views/SystemColors.h"

namespace nutrition {

void AlertController::loadView() {
  auto card = std::make_shared<StackView>(Axis::vertical);
  card->setFrame({{65, 340}, {270, 0}});
  card->backgroundColor = systemColors::secondarySystemBackground;
  card->cornerRadius = 14;
  card->spacing = 8;
  if (titleText) {
    auto label = addOutlet<Label>(*card, "title");
    label->setText(*titleText);
    label->font = Font::system(17, FontWeight::semibold);
    label->textAlignment = TextAlignment::center;
  }
  if (message) {
    auto label = addOutlet<Label>(*card, "message");
    label->setText(*message);
    label->font = Font::system(13);
    label->numberOfLines = 0;
    label->textAlignment = TextAlignment::center;
  }
  for (const auto& action : actions_) {
    auto button = addOutlet<Button>(*card, "action");
    button->setTitle(action.title);
    button->titleFont =
        Font::system(17, action.style == AlertAction::Style::cancel ? FontWeight::semibold
                                                                    : FontWeight::regular);
    button->addTarget(ControlEvent::touchUpInside,
                      [this, tapped = action.title] { tapAction(tapped); });
  }
  setView(std::move(card));
}

bool AlertController::tapAction(const std::string& actionTitle) {
  for (const auto& action : actions_) {
    if (action.title != actionTitle) continue;
    auto handler = action.handler;
    auto keep = shared_from_this();
    dismiss(true, [handler] {
      if (handler) handler();
    });
    return true;
  }
  return false;
}

}  // namespace nutrition
