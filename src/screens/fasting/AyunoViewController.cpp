#include "screens/fasting/AyunoViewController.h"

#include "screens/fasting/AyunoPhaseView.h"
#include "views/NavigationController.h"
#include "views/SystemColors.h"

namespace nutrition {

const char* fastingSchemeLabel(const NutritionUser* member) {
  const auto scheme = member ? member->intermittentFastingID : std::nullopt;
  if (scheme == 1) return "12/12";
  if (scheme == 2) return "14/10";
  return "16/8";
}

std::int64_t fastingSchemeHours(const NutritionUser* member) {
  if (member == nullptr || !member->intermittentFastingID) return 0;
  const std::int64_t scheme = *member->intermittentFastingID;
  return scheme == 1 ? 12 : scheme == 2 ? 14 : 16;
}

std::shared_ptr<View> AyunoViewController::timeColumn(const char* titleName, const char* timeName,
                                                      std::shared_ptr<Label>& titleOutlet,
                                                      std::shared_ptr<Label>& timeOutlet) {
  auto column = makeView<StackView>(Axis::vertical);
  column->spacing = 6;
  auto header = makeView<StackView>(Axis::horizontal);
  header->setSize({0, 20});
  header->spacing = 8;
  header->alignment = StackAlignment::center;
  auto point = makeView<View>(Rect{{}, {10, 10}});
  point->backgroundColor = context_.ui.config.primaryColor;
  points.push_back(point);
  header->addArrangedSubview(point);
  titleOutlet = addOutlet<Label>(*header, titleName);
  titleOutlet->setSize({120, 20});
  titleOutlet->font = Font::system(15);
  titleOutlet->textColor = systemColors::secondaryLabel;
  column->addArrangedSubview(header);
  timeOutlet = makeView<Label>();
  timeOutlet->name = timeName;
  timeOutlet->setSize({0, 24});
  timeOutlet->font = Font::system(20, FontWeight::semibold);
  column->addArrangedSubview(timeOutlet);
  return column;
}

void AyunoViewController::loadView() {
  auto root = std::make_shared<View>(Rect{{}, kPhoneScreen});
  root->backgroundColor = systemColors::systemBackground;
  scroll_ = addOutlet<ScrollView>(*root, "");
  scroll_->setFrame({{}, kPhoneScreen});
  content_ = makeView<StackView>(Axis::vertical);
  content_->setFrame({{20, 16}, {350, 0}});
  content_->spacing = 16;
  scroll_->addSubview(content_);

  ayunoTitle = addOutlet<Label>(*content_, "ayunoTitle");
  ayunoTitle->setSize({0, 41});
  ayunoTitle->font = Font::system(34, FontWeight::bold);
  ayunoTitle->textAlignment = TextAlignment::center;
  estasAyunando = addOutlet<Label>(*content_, "estasAyunando");
  estasAyunando->setSize({0, 22});
  estasAyunando->font = Font::system(17, FontWeight::semibold);
  estasAyunando->textAlignment = TextAlignment::center;
  ayunoView = makeView<AyunoTimerView>(context_, false);
  ayunoView->name = "ayunoView";
  content_->addArrangedSubview(ayunoView);

  contentTimes = addOutlet<View>(*content_, "contentTimes");
  contentTimes->setSize({0, 84});
  contentTimes->backgroundColor = systemColors::secondarySystemBackground;
  auto columns = makeView<StackView>(Axis::horizontal);
  columns->setFrame({{16, 16}, {318, 52}});
  columns->distribution = StackDistribution::fillEqually;
  columns->spacing = 16;
  auto start = timeColumn("startTitle", "startTime", startTitle, startTime);
  auto end = timeColumn("endTitle", "finishTime", endTitle, finishTime);
  columns->addArrangedSubview(start);
  columns->addArrangedSubview(end);
  contentTimes->addSubview(columns);

  faseAyunoTitle = addOutlet<Label>(*content_, "faseAyunoTitle");
  faseAyunoTitle->setSize({0, 25});
  faseAyunoTitle->font = Font::system(20, FontWeight::bold);
  phasesView = addOutlet<StackView>(*content_, "phasesView", Axis::vertical);
  phasesView->spacing = 4;
  finishButton = addOutlet<CustomButton>(*content_, "finishButton", context_.ui);
  finishButton->setSize({0, 50});
  finishButton->borderWidth = 1;
  finishButton->borderColor = context_.ui.config.primaryColor;
  finishButton->addTarget(ControlEvent::touchUpInside, [this] { finishAyuno(); });
  setView(std::move(root));
  fitContent();
}

void AyunoViewController::viewDidLoad() {
  const UIContext& ui = context_.ui;
  finishButton->setTitle(ui.localized("Terminar ayuno"));
  estasAyunando->setText(ui.localized("¡Estás ayunando ahora!"));
  startTitle->setText(ui.localized("Empieza"));
  endTitle->setText(ui.localized("Termina"));
  faseAyunoTitle->setText(ui.localized("Fase actual del ayuno"));
  contentTimes->cornerRadius = 12;
  context_.ayuno.startIfFinished();
  for (const auto& point : points)
    point->cornerRadius = point->frame().height() / 2;
}

void AyunoViewController::viewWillAppear(bool) {
  AyunoUtils& ayuno = context_.ayuno;
  startTime->setText(ayuno.getStartTime());
  finishTime->setText(ayuno.getFinishTime());
  const NutritionUser* member = context_.user.currentMember();
  ayunoTitle->setText(fastingSchemeLabel(member));
  const std::int64_t schemeHours = fastingSchemeHours(member);
  const std::int64_t elapsedHours = ayuno.getCurrentTime().value_or(0) / 3600;
  for (const AyunoPhase& phase : ayuno.phases) {
    const std::int64_t hour = phase.hour.value_or(0);
    if (hour > schemeHours) continue;
    phasesView->addArrangedSubview(makeView<AyunoPhaseView>(context_, phase, elapsedHours >= hour));
  }
  fitContent();
}

void AyunoViewController::finishAyuno() {
  context_.ayuno.finish();
  // The screen may be pushed on a navigation controller that was itself presented: the
  // presenter is found before the pop takes the screen off the stack, so the dismissal
  // closes what the screen was shown in.
  ViewController* presenter = presentingViewController();
  auto keep = shared_from_this();
  if (NavigationController* navigation = navigationController()) {
    navigation->popViewController(true);
  }
  if (presenter != nullptr) presenter->dismiss(true);
}

void AyunoViewController::fitContent() {
  double height = 0;
  for (const auto& row : phasesView->arrangedSubviews())
    height += row->frame().height() + 4;
  phasesView->setSize({350, height});
  double total = 0;
  for (const auto& child : content_->arrangedSubviews())
    total += child->frame().height() + 16;
  content_->setSize({350, total});
  scroll_->contentSize = {390, total + 32};
}

}  // namespace nutrition
