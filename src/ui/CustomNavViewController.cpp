#include "ui/CustomNavViewController.h"

#include "views/SystemColors.h"

namespace nutrition {

void applyNavigationBarLook(const UIContext& ui, NavigationBar& bar) {
  const NutritionSDKUtils& config = ui.config;
  bar.barTintColor = config.navigationBarColor;
  bar.backgroundColor = config.navigationBarColor;
  bar.tintColor = config.navigationTintColor.value_or(systemColors::label);
  bar.titleColor = config.navigationTintColor.value_or(systemColors::label);
  bar.prefersLargeTitles = config.prefersLargeTitles;
}

CustomNavViewController::CustomNavViewController(const UIContext& ui,
                                                 std::shared_ptr<ViewController> root)
    : NavigationController(std::move(root)), ui_(ui) {
  darkModeChange_ = ui_.notifications.addObserver(kDarkModeChange, [this] { applyLook(); });
}

void CustomNavViewController::viewDidLoad() {
  applyLook();
}

void CustomNavViewController::pushViewController(std::shared_ptr<ViewController> controller,
                                                 bool animated) {
  if (controller) controller->navigationItem.backBarButtonItem = closeItem();
  NavigationController::pushViewController(std::move(controller), animated);
}

BarButtonItem CustomNavViewController::closeItem() const {
  BarButtonItem close;
  close.title = ui_.localized("Cerrar");
  return close;
}

void CustomNavViewController::applyLook() {
  applyNavigationBarLook(ui_, navigationBar);
  navigationBar.titleFont = Font::system(22, FontWeight::semibold);
  for (const auto& screen : viewControllers())
    screen->navigationItem.backBarButtonItem = closeItem();
}

void OrvaneViewController::updateNavigationBar() {
  navigationItem.title = ui_.config.navigationTitle;
  if (NavigationController* navigation = navigationController()) {
    applyNavigationBarLook(ui_, navigation->navigationBar);
  }
}

}  // namespace nutrition
