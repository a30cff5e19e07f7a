#include "screens/profile/NutritionProfileViewController.h"

#include <algorithm>
#include <cmath>

#include "base/Saturating.h"
#include "screens/profile/QuestionnaireRules.h"
#include "ui/BundleImages.h"
#include "ui/HealthAlertViewController.h"
#include "ui/TrainingAlerts.h"
#include "views/SystemColors.h"

namespace nutrition {
namespace {

constexpr double kBarHeight = 100;
constexpr double kPanelSpacing = 16;

// A root view that sizes the page's content before its subviews are laid out.
class PageRootView : public View {
 public:
  explicit PageRootView(std::function<void()> fit)
      : View(Rect{{}, kPhoneScreen}), fit_(std::move(fit)) {}
  void layoutSubviews() override { fit_(); }

 private:
  std::function<void()> fit_;
};

}  // namespace

std::string upperCased(const std::string& text) {
  std::string out = text;
  for (std::size_t i = 0; i < out.size(); ++i) {
    auto byte = static_cast<unsigned char>(out[i]);
    if (byte >= 'a' && byte <= 'z') {
      out[i] = static_cast<char>(byte - 32);
    } else if (byte == 0xC3 && i + 1 < out.size()) {
      // U+00E0..U+00FE, except U+00F7 (division sign), have capitals 0x20 below.
      auto next = static_cast<unsigned char>(out[i + 1]);
      if (next >= 0xA0 && next <= 0xBE && next != 0xB7) out[i + 1] = static_cast<char>(next - 0x20);
      ++i;
    }
  }
  return out;
}

NutritionProfileViewController::NutritionProfileViewController(const ScreenContext& context,
                                                               ProfileEditorServices services)
    : OrvaneViewController(context.ui), context_(context), services_(std::move(services)) {}

void NutritionProfileViewController::loadView() {
  auto root = std::make_shared<PageRootView>([this] { fitContent(); });
  root->backgroundColor = systemColors::systemBackground;
  scroll_ = addOutlet<ScrollView>(*root, "");
  scroll_->setFrame({{}, {kPhoneScreen.width, kPhoneScreen.height - kBarHeight}});
  stackView = makeView<StackView>(Axis::vertical);
  stackView->name = "stackView";
  stackView->spacing = kPanelSpacing;
  stackView->setFrame({{20, 16}, {350, 0}});
  scroll_->addSubview(stackView);
  const double barTop = kPhoneScreen.height - kBarHeight + 16;
  previousButton = addOutlet<CustomButton>(*root, "previousButton", ui_);
  previousButton->setFrame({{20, barTop}, {165, 50}});
  previousButton->borderWidth = 1;
  previousButton->borderColor = ui_.config.primaryColor;
  previousButton->addTarget(ControlEvent::touchUpInside, [this] { didTapPreviousButton(); });
  nextButton = addOutlet<CustomButton>(*root, "nextButton", ui_);
  nextButton->setFrame({{205, barTop}, {165, 50}});
  nextButton->borderWidth = 1;
  nextButton->borderColor = ui_.config.primaryColor;
  nextButton->addTarget(ControlEvent::touchUpInside, [this] { didTapNextButton(); });
  activityIndicator = addOutlet<ActivityIndicator>(*root, "activityIndicator");
  activityIndicator->setFrame({{175, 400}, {40, 40}});
  setView(std::move(root));
}

void NutritionProfileViewController::viewDidLoad() {
  OrvaneViewController::viewDidLoad();
  previousButton->setTitle(ui_.localized("Anterior"));
  NutritionProfileUtils& profile = context_.services.profileUtils();
  for (const auto& panel : panels.value_or(std::vector<HealthProfilePanel>{})) {
    auto panelView = makeView<QuestionPanelView>(panel.questions);
    for (const auto& question : panel.questions) {
      if (!isQuestionShown(question, ui_.config)) continue;
      auto questionView = makeView<HealthQuestionView>(
          context_, services_.calendar, question,
          profile.getValueForField(question.identifier.value_or("")), question.fixed);
      panelView->questionsView->addArrangedSubview(questionView);
    }
    if (panelView->questionViews().empty()) panelView->isHidden = true;
    panelView->contentView->cornerRadius = 10;
    stackView->addArrangedSubview(panelView);
  }
  fitContent();
}

void NutritionProfileViewController::viewWillAppear(bool animated) {
  OrvaneViewController::viewWillAppear(animated);
  previousButton->isHidden = pageIndex == 0;
  nextButton->setTitle(ui_.localized(isLastPage ? "Enviar" : "Siguiente"));
}

std::vector<QuestionPanelView*> NutritionProfileViewController::panelViews() const {
  std::vector<QuestionPanelView*> found;
  for (const auto& view : stackView->arrangedSubviews()) {
    if (auto* panel = dynamic_cast<QuestionPanelView*>(view.get())) found.push_back(panel);
  }
  return found;
}

void NutritionProfileViewController::didTapPreviousButton() {
  if (auto editor = delegate.lock()) editor->previousProfilePage();
}

bool NutritionProfileViewController::isFullFilled() const {
  for (const auto* panel : panelViews()) {
    for (const auto* question : panel->questionViews()) {
      if (!question->isFilled()) return false;
    }
  }
  return true;
}

void NutritionProfileViewController::saveAll() {
  NutritionProfileUtils& profile = context_.services.profileUtils();
  for (const auto* panel : panelViews())
    panel->saveData(profile);
  if (!isLastPage) return;
  auto& member = context_.services.session().currentUser;
  if (!member) return;
  member->targetWeight = saturatingToInt64(std::trunc(member->getIdealWeight()));
  member->dailyKcal = member->getKcalForDiet(currentDate(*services_.clock), *services_.calendar);
}

void NutritionProfileViewController::showNotice(const std::string& message) {
  TrainingAlerts::showAlert(ui_.localized(message), ui_.localized("Aviso"), *this);
}

void NutritionProfileViewController::didTapNextButton() {
  if (!isFullFilled()) {
    showNotice("Es obligatorio responder a todas las preguntas");
    return;
  }
  saveAll();
  if (auto refusal = pageRefusal(pageIndex, context_.user.currentMember(), ui_.strings)) {
    TrainingAlerts::showAlert(*refusal, ui_.localized("Aviso"), *this);
    return;
  }
  if (!isLastPage) {
    if (auto editor = delegate.lock()) editor->nextProfilePage();
    return;
  }
  auto confirmation = std::make_shared<HealthAlertViewController>(
      ui_, ui_.localized("Aviso"),
      ui_.localized("¿Estás seguro de que quieres volver a generar el menú?"), std::nullopt,
      upperCased(ui_.localized("Generar nuevo menú")), ImageRef::named(std::string(kFoodImage)),
      true, [this, alive = lifetime_.watch()] {
        if (!alive.expired()) sendProfile();
      });
  if (ViewController* top = ui_.application.topViewController()) top->present(confirmation, true);
}

void NutritionProfileViewController::sendProfile() {
  NutritionAuth& session = context_.services.session();
  if (!session.currentUser) return;
  NutritionUser& member = *session.currentUser;
  if (member.selectedIntakes) {
    std::stable_sort(member.selectedIntakes->begin(), member.selectedIntakes->end(),
                     [](const SelectedIntake& a, const SelectedIntake& b) {
                       return a.intake.value_or(0) < b.intake.value_or(0);
                     });
  }
  member.updateDistributionForIntakes();
  member.countries = std::vector<std::int64_t>{rawValue(ui_.config.userCountry)};
  activityIndicator->startAnimating();
  member.dietID = ui_.config.selectedDiet == DietType::diabetes ? 8 : 1;
  services_.service.updateUser(
      member, session.isUnregister,
      [queue = ui_.mainQueue, self = std::weak_ptr<ViewController>(weak_from_this())](
          const std::optional<Error>&, std::optional<NutritionUser> returned) {
        postIfAlive(queue, [self, returned = std::move(returned)]() mutable {
          auto page = std::static_pointer_cast<NutritionProfileViewController>(self.lock());
          if (page) page->didSend(std::move(returned));
        });
      });
}

void NutritionProfileViewController::didSend(std::optional<NutritionUser> returned) {
  activityIndicator->stopAnimating();
  if (!returned) {
    showNotice("Se ha producido un error al actualizar el perfil");
    return;
  }
  NutritionAuth& session = context_.services.session();
  session.currentUser = std::move(returned);
  context_.ayuno.preferences->remove(NutritionAuth::kFastingStartKey);
  services_.standard->set(NutritionAuth::kHoldMenuTimerKey,
                          secondsSince1970(*services_.clock) + NutritionAuth::kMenuHoldSeconds);
  ui_.config.setUserProfileAsFilled(session.memberID);
  ScreenRoutes& routes = context_.routes;
  if (auto editor = delegate.lock()) {
    editor->dismissProfile(false, [&routes] { routes.showWeekMenu(); });
  }
}

void NutritionProfileViewController::fitContent() {
  const Size screen = view().frame().size;
  scroll_->setSize({screen.width, screen.height - kBarHeight});
  const double barTop = screen.height - kBarHeight + 16;
  previousButton->setFrame({{20, barTop}, {165, 50}});
  nextButton->setFrame({{205, barTop}, {165, 50}});
  double height = 0;
  for (auto* panel : panelViews()) {
    panel->setSize({stackView->frame().width(), panel->frame().height()});
    if (!panel->isHidden) height += panel->fitContent() + kPanelSpacing;
  }
  stackView->setSize({stackView->frame().width(), height});
  scroll_->contentSize = {kPhoneScreen.width, height + 32};
}

}  // namespace nutrition
