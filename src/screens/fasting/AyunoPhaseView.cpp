#include "screens/fasting/AyunoPhaseView.h"

#include "screens/fasting/PhaseAlertViewController.h"
#include "views/SystemColors.h"

namespace nutrition {

AyunoPhaseView::AyunoPhaseView(const ScreenContext& context, std::optional<AyunoPhase> shown,
                               bool enabled)
    : View(Rect{{}, {350, kHeight}}),
      phase(std::move(shown)),
      isEnabled(enabled),
      context_(context) {
  contentView = addOutlet<View>(*this, "contentView");
  contentView->setFrame({{}, {350, kHeight}});
  bullet = addOutlet<TintView>(*contentView, "bullet", context.ui);
  bullet->setFrame({{0, 27.5}, {9, 9}});
  icon = addOutlet<ImageView>(*contentView, "icon");
  icon->setFrame({{21, 14}, {36, 36}});
  titleLabel = addOutlet<Label>(*contentView, "titleLabel");
  titleLabel->setFrame({{69, 12}, {230, 21}});
  titleLabel->font = Font::system(17, FontWeight::semibold);
  timeHelp = addOutlet<Label>(*contentView, "timeHelp");
  timeHelp->setFrame({{69, 35}, {230, 18}});
  timeHelp->font = Font::system(14);
  button = addOutlet<CustomButton>(*contentView, "button", context.ui);
  button->setFrame({{310, 16}, {32, 32}});
  button->setTitle("i");
  button->setTitleColor(systemColors::white);
  button->addTarget(ControlEvent::touchUpInside, [this] { showPhaseAlert(); });
  loadUI();
}

void AyunoPhaseView::loadUI() {
  bullet->cornerRadius = 4.5;
  titleLabel->setText(phase ? phase->name.value_or("") : "");
  timeHelp->setText(phase ? phase->timeInfo.value_or("") : "");
  icon->image.reset();
  if (phase && phase->image) icon->image = ImageRef::named(*phase->image).withTemplateRendering();
  configColor();
}

void AyunoPhaseView::configColor() {
  const Color color = isEnabled ? context_.ui.config.primaryColor : systemColors::tertiaryLabel;
  bullet->backgroundColor = color;
  timeHelp->textColor = color;
  titleLabel->textColor = color;
  icon->setTintColor(color);
  button->backgroundColor = color;
}

void AyunoPhaseView::showPhaseAlert() {
  ViewController* top = context_.ui.application.topViewController();
  if (top == nullptr) return;
  auto alert = std::make_shared<PhaseAlertViewController>(context_.ui);
  alert->phase = phase;
  top->present(alert, true);
}

}  // namespace nutrition
