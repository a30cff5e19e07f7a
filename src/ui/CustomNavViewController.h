#pragma once
// The navigation controller the module's screens are shown in: the host's bar colour, tint
// (the label colour when the host set none) and a 22-point title; a screen pushed on it shows
// "Cerrar" to come back. The look is applied again whenever "darkModeChange" is posted.

#include <memory>

#include "ui/UIContext.h"
#include "views/NavigationController.h"
#include "views/NotificationCenter.h"

namespace nutrition {

class CustomNavViewController : public NavigationController {
 public:
  static constexpr const char* kDarkModeChange = "darkModeChange";

  CustomNavViewController(const UIContext& ui, std::shared_ptr<ViewController> root);

  [[nodiscard]] std::string_view kind() const override { return "CustomNavViewController"; }

  void viewDidLoad() override;
  void pushViewController(std::shared_ptr<ViewController> controller, bool animated) override;
  void applyLook();

 private:
  [[nodiscard]] BarButtonItem closeItem() const;

  const UIContext& ui_;
  NotificationCenter::Observation darkModeChange_;
};

// The common base of the module's screens: on load and before appearing it gives its
// navigation controller's bar the host's look and its title.
class OrvaneViewController : public ViewController {
 public:
  explicit OrvaneViewController(const UIContext& ui) : ui_(ui) {}

  void viewDidLoad() override { updateNavigationBar(); }
  void viewWillAppear(bool) override { updateNavigationBar(); }
  void updateNavigationBar();

 protected:
  const UIContext& ui_;
};

// The host's bar look on `bar`: background, tint (label colour by default) and large titles.
void applyNavigationBarLook(const UIContext& ui, NavigationBar& bar);

}  // namespace nutrition
