#include "ui/HealthAlertViewController.h"

#include "views/SystemColors.h"

namespace nutrition {

HealthAlertViewController::HealthAlertViewController(
    const UIContext& ui, std::optional<std::string> shownTitle, std::optional<std::string> message,
    std::optional<std::string> subtitle, std::optional<std::string> button,
    std::optional<ImageRef> shownImage, bool isAnimated, std::function<void()> completion)
    : onComplete(std::move(completion)),
      messageString(std::move(message)),
      titleString(std::move(shownTitle)),
      subtitleString(std::move(subtitle)),
      buttonTitle(std::move(button)),
      image(std::move(shownImage)),
      animated(isAnimated),
      ui_(ui) {
  modalPresentationStyle = ModalPresentationStyle::overFullScreen;
}

void HealthAlertViewController::loadView() {
  auto root = std::make_shared<View>(Rect{{}, kPhoneScreen});
  root->backgroundColor = Color{0, 0, 0, 102};
  auto card = addOutlet<View>(*root, "card");
  card->setFrame({{24, 190}, {342, 464}});
  card->backgroundColor = systemColors::systemBackground;
  card->cornerRadius = 20;
  exitButton = addOutlet<Button>(*card, "exitButton");
  exitButton->setFrame({{294, 12}, {36, 36}});
  exitButton->setTitle("✕");
  exitButton->setTitleColor(systemColors::secondaryLabel);
  exitButton->addTarget(ControlEvent::touchUpInside, [this] { didTapExit(); });
  imageView = addOutlet<ImageView>(*card, "imageView");
  imageView->setFrame({{111, 40}, {120, 120}});
  messageLabel = addOutlet<Label>(*card, "messageLabel");
  messageLabel->setFrame({{24, 176}, {294, 28}});
  messageLabel->font = Font::system(22, FontWeight::bold);
  messageLabel->textAlignment = TextAlignment::center;
  titleLabel = addOutlet<Label>(*card, "titleLabel");
  titleLabel->setFrame({{24, 212}, {294, 24}});
  titleLabel->font = Font::system(17, FontWeight::semibold);
  titleLabel->textAlignment = TextAlignment::center;
  subtitleLabel = addOutlet<Label>(*card, "subtitleLabel");
  subtitleLabel->setFrame({{24, 244}, {294, 120}});
  subtitleLabel->font = Font::system(15);
  subtitleLabel->textColor = systemColors::secondaryLabel;
  subtitleLabel->textAlignment = TextAlignment::center;
  subtitleLabel->numberOfLines = 0;
  continueButton = addOutlet<LoginButton>(*card, "continueButton", ui_);
  continueButton->setFrame({{24, 388}, {294, 50}});
  continueButton->setTitleColor(systemColors::white);
  continueButton->titleFont = Font::system(15, FontWeight::bold);
  continueButton->addTarget(ControlEvent::touchUpInside, [this] { didTapContinue(); });
  setView(std::move(root));
}

void HealthAlertViewController::viewWillAppear(bool) {
  titleLabel->setText(titleString.value_or(""));
  messageLabel->setText(messageString.value_or(""));
  subtitleLabel->setText(subtitleString.value_or(""));
  imageView->image = image;
  continueButton->isHidden = !buttonTitle.has_value();
  if (buttonTitle) continueButton->setTitle(*buttonTitle);
}

void HealthAlertViewController::didTapContinue() {
  auto completion = onComplete;
  dismiss(animated, [completion] {
    if (completion) completion();
  });
}

void HealthAlertViewController::didTapExit() {
  dismiss(true);
}

}  // namespace nutrition
