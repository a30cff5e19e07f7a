#include "router/NutritionControllers.h"

#include "logic/MenuDay.h"
#include "screens/fasting/AyunoViewController.h"
#include "screens/menu/IntakeViewController.h"
#include "screens/menu/NutricionHomeViewController.h"
#include "screens/menu/WaitingScreenViewController.h"
#include "screens/profile/ProfilePageViewController.h"
#include "text/TextCase.h"
#include "ui/BundleImages.h"
#include "ui/CustomNavViewController.h"
#include "ui/HealthAlertViewController.h"
#include "views/NavigationController.h"

namespace nutrition {

bool NutritionControllers::isReady(const std::optional<NutritionMenu>& menu) {
  return menu && menu->processed == true;
}

ViewController* NutritionControllers::topScreen() const {
  return screens_.ui.application.topViewController();
}

void NutritionControllers::onMain(std::function<void()> task) {
  postIfAlive(screens_.ui.mainQueue, lifetime_.watch(), std::move(task));
}

void NutritionControllers::showWeekMenu() {
  if (screens_.services.session().isUnregister) {
    onMain([this] { showUserUnregisterAlert(); });
    return;
  }
  NutritionUtils& utils = screens_.utils();
  if (isReady(utils.weeklyMenu)) {
    onMain([this] { showMenu(); });
    return;
  }
  utils.downloadMenu([this, alive = lifetime_.watch()](const std::optional<NutritionMenu>& menu) {
    if (alive.expired()) return;
    const bool ready = isReady(menu);
    onMain([this, ready] { ready ? showMenu() : showWaitScreens(false); });
  });
}

void NutritionControllers::getWeekMenu(const ScreenCompletion& completion) {
  NutritionUtils& utils = screens_.utils();
  utils.isEmbedViewController = true;
  if (completion) completion(std::make_shared<NutricionHomeViewController>(screens_));
  if (screens_.services.session().isUnregister) {
    onMain([this] { showUserUnregisterAlert(); });
    return;
  }
  if (isReady(utils.weeklyMenu)) return;
  utils.downloadMenu([this, alive = lifetime_.watch()](const std::optional<NutritionMenu>& menu) {
    if (alive.expired() || isReady(menu)) return;
    onMain([this] { showWaitScreens(false); });
  });
}

void NutritionControllers::getNutrition(ScreenCompletion completion) {
  auto screen = std::make_shared<NutricionHomeViewController>(screens_);
  NutritionUtils& utils = screens_.utils();
  if (isReady(utils.weeklyMenu)) {
    if (completion) completion(screen);
    return;
  }
  utils.downloadMenu(
      [screen, completion = std::move(completion)](const std::optional<NutritionMenu>& menu) {
        if (menu && completion) completion(screen);
      });
}

void NutritionControllers::showMenu() {
  if (!screens_.utils().canViewMenu()) {
    showWaitScreens(false);
    return;
  }
  ViewController* top = topScreen();
  if (top == nullptr) return;
  auto home = std::make_shared<NutricionHomeViewController>(screens_);
  auto navigation = std::make_shared<CustomNavViewController>(screens_.ui, home);
  navigation->modalPresentationStyle = ModalPresentationStyle::overFullScreen;
  top->present(navigation, true);
}

void NutritionControllers::showWaitScreens(bool isFromMenu) {
  ViewController* top = topScreen();
  if (top == nullptr) return;
  auto waiting = std::make_shared<WaitingScreenViewController>(screens_);
  waiting->modalPresentationStyle = ModalPresentationStyle::fullScreen;
  waiting->isFromMenu = isFromMenu;
  top->present(waiting, true);
}

std::shared_ptr<ViewController> NutritionControllers::makeEditor(
    std::vector<HealthProfilePage> pages) const {
  const ScreenServices& services = screens_.services;
  return makeProfileEditor(screens_,
                           ProfileEditorServices::from(services.platform(), services.dataService()),
                           std::move(pages));
}

void NutritionControllers::showProfile() {
  ViewController* top = topScreen();
  if (top == nullptr) return;
  auto pages = screens_.utils().getProfileQuestionary();
  if (!pages) return;
  auto navigation = std::make_shared<NavigationController>(makeEditor(std::move(*pages)));
  navigation->modalPresentationStyle = ModalPresentationStyle::overFullScreen;
  top->present(navigation, true);
}

void NutritionControllers::getProfile(const ScreenCompletion& completion) {
  auto pages = screens_.utils().getProfileQuestionary();
  if (!pages) {
    if (completion) completion(nullptr);
    return;
  }
  onMain([this, pages = std::move(*pages), completion]() mutable {
    auto editor = makeEditor(std::move(pages));
    if (completion) completion(editor);
  });
}

void NutritionControllers::showTodayIntake(int index) {
  ViewController* top = topScreen();
  if (top == nullptr) return;
  NutritionUtils& utils = screens_.utils();
  const NutritionDay today = utils.getTodayMenu();
  const std::vector<NutritionIntake> intakes = sortedIntakes(today);
  if (index < 0 || static_cast<std::size_t>(index) >= intakes.size()) return;
  const NutritionIntake& intake = intakes[static_cast<std::size_t>(index)];
  // An alternative dish asked for on this screen replaces a dish of today's intake.
  utils.selectedDay = utils.todayDayNumber();
  utils.selectedIntake = intake.intakeId.value_or(1);
  auto screen = std::make_shared<IntakeViewController>(screens_);
  screen->ingesta = intake;
  screen->modalPresentationStyle = ModalPresentationStyle::fullScreen;
  top->present(screen, true);
}

void NutritionControllers::getAyunoViewController(ScreenCompletion completion) {
  onMain([this, completion = std::move(completion)] {
    auto screen = std::make_shared<AyunoViewController>(screens_);
    if (completion) completion(screen);
  });
}

void NutritionControllers::showUserUnregisterAlert() {
  ViewController* top = topScreen();
  if (top == nullptr) return;
  const UIContext& ui = screens_.ui;
  auto alert = std::make_shared<HealthAlertViewController>(
      ui, std::nullopt, ui.localized("Aviso"),
      ui.localized("Para poder ofrecerte un menú antes es necesario completar la evaluación "
                   "corporal"),
      upperCased(ui.localized("Completar evaluación corporal")),
      ImageRef::named(std::string(kFoodImage)), true, [this] { showProfile(); });
  top->present(alert, true);
}

}  // namespace nutrition
