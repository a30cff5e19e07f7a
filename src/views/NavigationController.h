#pragma once
// A navigation controller: a stack of screens under a bar with a title, items and a look.
// Only the top screen is shown and hears appearance.

#include <memory>
#include <optional>
#include <vector>

#include "views/Text.h"
#include "views/ViewController.h"

namespace nutrition {

struct NavigationBar {
  std::optional<Color> barTintColor;
  std::optional<Color> backgroundColor;
  std::optional<Color> tintColor;
  std::optional<Color> titleColor;
  Font titleFont{17, FontWeight::semibold};
  bool prefersLargeTitles = false;
  bool isTranslucent = true;
  bool isHidden = false;
};

class NavigationController : public ViewController {
 public:
  NavigationController() = default;
  explicit NavigationController(std::shared_ptr<ViewController> root);

  [[nodiscard]] std::string_view kind() const override { return "NavigationController"; }

  NavigationBar navigationBar;

  virtual void pushViewController(std::shared_ptr<ViewController> controller, bool animated);
  // Removes the top screen and returns it; nothing at the root.
  std::shared_ptr<ViewController> popViewController(bool animated);
  [[nodiscard]] const std::vector<std::shared_ptr<ViewController>>& viewControllers() const {
    return children();
  }
  [[nodiscard]] ViewController* topViewController() const {
    return children().empty() ? nullptr : children().back().get();
  }

 protected:
  void loadView() override;
  [[nodiscard]] std::vector<ViewController*> visibleChildren() const override;

 private:
  void showTop();
};

}  // namespace nutrition
