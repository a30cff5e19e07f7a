#include "screens/fasting/AyunoCells.h"

#include "screens/fasting/PhaseAlertViewController.h"
#include "views/SystemColors.h"

namespace nutrition {

AyunoCell::AyunoCell(const ScreenContext& context) : ReusableCell(), context_(context) {
  setFrame({{}, {350, 186}});
  imgView = addOutlet<ImageView>(*this, "imgView");
  imgView->setFrame({{}, {350, 186}});
  imgView->contentMode = ContentMode::scaleAspectFill;
  veloView = addOutlet<View>(*this, "veloView");
  veloView->setFrame({{}, {350, 186}});
  veloView->backgroundColor = Color{0, 0, 0, 89};
  titleLabel = addOutlet<Label>(*this, "titleLabel");
  titleLabel->setFrame({{20, 20}, {200, 56}});
  titleLabel->font = Font::system(24, FontWeight::bold);
  titleLabel->textColor = systemColors::white;
  titleLabel->numberOfLines = 2;
  button = addOutlet<Button>(*this, "button");
  button->setFrame({{20, 130}, {140, 36}});
  button->setTitle(context.ui.localized("Empezar ayuno"));
}

void AyunoCell::awakeFromNib() {
  veloView->cornerRadius = 15;
  button->setTitleColor(context_.ui.config.primaryColor);
  button->backgroundColor = systemColors::white;
  button->cornerRadius = button->frame().height() / 2;
}

AyunoInfoCell::AyunoInfoCell(const ScreenContext& context) : AyunoCell(context) {
  contentClock = addOutlet<StackView>(*this, "contentClock", Axis::vertical);
  contentClock->setFrame({{190, 18}, {150, 150}});
  button->setTitle(context.ui.localized("Ver fase"));
  button->addTarget(ControlEvent::touchUpInside, [this] { showPhaseInfo(); });
}

void AyunoInfoCell::loadAyunoView() {
  while (!contentClock->subviews().empty())
    contentClock->subviews().back()->removeFromSuperview();
  contentClock->addArrangedSubview(makeView<AyunoTimerView>(context_, true));
}

void AyunoInfoCell::showPhaseInfo() {
  ViewController* top = context_.ui.application.topViewController();
  if (top == nullptr) return;
  auto alert = std::make_shared<PhaseAlertViewController>(context_.ui);
  alert->phase = context_.ayuno.getCurrentPhase();
  top->present(alert, true);
}

}  // namespace nutrition
