#include "screens/fasting/PhaseAlertViewController.h"

#include "views/SystemColors.h"

namespace nutrition {

void PhaseAlertViewController::loadView() {
  auto root = std::make_shared<View>(Rect{{}, kPhoneScreen});
  root->backgroundColor = systemColors::systemBackground;
  closeButton = addOutlet<Button>(*root, "closeButton");
  closeButton->setFrame({{300, 20}, {74, 32}});
  closeButton->setTitle(context_.localized("Cerrar"));
  closeButton->setTitleColor(context_.config.primaryColor);
  closeButton->addTarget(ControlEvent::touchUpInside, [this] { dismiss(true); });
  icon = addOutlet<ImageView>(*root, "icon");
  icon->setFrame({{155, 80}, {80, 80}});
  titleLabel = addOutlet<Label>(*root, "titleLabel");
  titleLabel->setFrame({{24, 180}, {342, 30}});
  titleLabel->font = Font::system(24, FontWeight::bold);
  titleLabel->textAlignment = TextAlignment::center;
  textLabel = addOutlet<Label>(*root, "textLabel");
  textLabel->setFrame({{24, 226}, {342, 300}});
  textLabel->font = Font::system(17);
  textLabel->numberOfLines = 0;
  setView(std::move(root));
}

void PhaseAlertViewController::viewWillAppear(bool) {
  titleLabel->setText(phase ? phase->name.value_or("") : "");
  textLabel->setText(phase ? phase->helpText.value_or("") : "");
  icon->image.reset();
  if (phase && phase->image) icon->image = ImageRef::named(*phase->image);
}

}  // namespace nutrition
