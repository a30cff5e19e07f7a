#include "screens/menu/WaitingScreenViewController.h"

#include "ui/BundleImages.h"
#include "views/SystemColors.h"

namespace nutrition {

namespace {

std::shared_ptr<View> makeDot(Size size, Color color) {
  auto dot = makeView<View>(Rect{{}, size});
  dot->backgroundColor = color;
  dot->cornerRadius = size.width / 2;
  return dot;
}

BasicAnimation pulse(double duration) {
  return {.keyPath = "transform.scale", .fromValue = 1, .toValue = 0.4, .duration = duration};
}

}  // namespace

DotsAnimationView::DotsAnimationView(Size size, Color color, double time)
    : dot1Animation(pulse(time)),
      dot2Animation(pulse(time)),
      dot3Animation(pulse(time)),
      dotSize(size),
      dotColor(color),
      animationTime(time) {
  setFrame({{}, {size.width * 5, size.height}});
  dot1View = makeDot(size, color);
  dot2View = makeDot(size, color);
  dot3View = makeDot(size, color);
  double x = 0;
  for (const auto* dot : {&dot1View, &dot2View, &dot3View}) {
    (*dot)->setFrame({{x, 0}, size});
    addSubview(*dot);
    x += size.width * 2;
  }
  dot1View->layer().add(dot1Animation);
  dot2View->layer().add(dot2Animation);
  dot3View->layer().add(dot3Animation);
}

void WaitingScreenViewController::loadView() {
  auto root = std::make_shared<View>(Rect{{}, kPhoneScreen});
  root->backgroundColor = systemColors::systemBackground;
  closeButton = addOutlet<Button>(*root, "closeButton");
  closeButton->setFrame({{20, 54}, {40, 40}});
  closeButton->setImage(ImageRef::named(std::string(kBackImage)));
  closeButton->addTarget(ControlEvent::touchUpInside, [this] { didTapCloseButton(); });
  imageView = addOutlet<ImageView>(*root, "imageView");
  imageView->setFrame({{70, 150}, {250, 250}});
  imageView->image = ImageRef::named("espera-1");
  titleLabel = addOutlet<Label>(*root, "titleLabel");
  titleLabel->setFrame({{24, 430}, {342, 34}});
  titleLabel->font = Font::system(28, FontWeight::bold);
  titleLabel->textAlignment = TextAlignment::center;
  titleLabel->setText(context_.ui.localized("Preparando tu menú"));
  textLabel = addOutlet<Label>(*root, "textLabel");
  textLabel->setFrame({{24, 476}, {342, 88}});
  textLabel->font = Font::system(17);
  textLabel->textColor = systemColors::secondaryLabel;
  textLabel->textAlignment = TextAlignment::center;
  textLabel->numberOfLines = 0;
  textLabel->setText(
      context_.ui.localized("Estamos preparando tu menú semanal a partir de tu perfil"));
  dotsView = addOutlet<StackView>(*root, "dotsView", Axis::horizontal);
  dotsView->setFrame({{170, 590}, {50, 10}});
  dotsView->addArrangedSubview(
      makeView<DotsAnimationView>(Size{10, 10}, context_.ui.config.primaryColor, 0.6));
  progressView = addOutlet<ProgressView>(*root, "progressView");
  progressView->setFrame({{48, 620}, {294, 4}});
  progressView->progressTintColor = context_.ui.config.primaryColor;
  button = addOutlet<CustomButton>(*root, "button", context_.ui);
  button->setFrame({{48, 740}, {294, 50}});
  button->borderWidth = 1;
  button->borderColor = context_.ui.config.primaryColor;
  button->isHidden = true;
  button->addTarget(ControlEvent::touchUpInside, [this] { didTapViewMenu(); });
  setView(std::move(root));
}

void WaitingScreenViewController::viewDidLoad() {
  button->setTitle(context_.ui.localized("Ver menú"));
}

void WaitingScreenViewController::viewWillAppear(bool) {
  waitingScreens = context_.utils().getWaitScreens();
  currentScreen = 1;
  timer_ = Timer::scheduled(context_.ui.mainQueue, kTickInterval, true, [this] { tick(); });
}

void WaitingScreenViewController::viewDidDisappear(bool) {
  timer_.invalidate();
}

void WaitingScreenViewController::tick() {
  const float progress = static_cast<float>(progressView->progress()) + kStep;
  progressView->setProgress(progress);
  if (progress < 1.0F) return;
  timer_.invalidate();
  button->isHidden = false;
  setFinishTexts();
}

void WaitingScreenViewController::setFinishTexts() {
  const UIContext& ui = context_.ui;
  textLabel->setText(ui.localized(
      "Si no te apetece alguno de los platos sugeridos, puedes usar el botón superior derecho y "
      "te daremos alternativas equivalentes desde el punto de vista nutricional"));
  titleLabel->setText(ui.localized("¡Menú listo!"));
  dotsView->isHidden = true;
  progressView->isHidden = true;
}

void WaitingScreenViewController::didTapViewMenu() {
  NutritionSDKUtils& config = context_.ui.config;
  ScreenRoutes& routes = context_.routes;
  dismiss(true, [&config, &routes] {
    if (!config.isSettingsFromMenu) routes.showWeekMenu();
  });
}

void WaitingScreenViewController::didTapCloseButton() {
  dismiss(true);
}

}  // namespace nutrition
