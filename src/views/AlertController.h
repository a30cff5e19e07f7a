#pragma once
// A system alert: a title, a message and actions. A member's tap on an action dismisses the
// alert, then runs the action's handler.

#include <functional>
#include <optional>
#include <string>
#include <vector>

#include "views/ViewController.h"

namespace nutrition {

struct AlertAction {
  enum class Style { standard, cancel, destructive };
  std::string title;
  Style style = Style::standard;
  std::function<void()> handler;
};

class AlertController : public ViewController {
 public:
  enum class Style { alert, actionSheet };

  AlertController(std::optional<std::string> alertTitle, std::optional<std::string> alertMessage,
                  Style style = Style::alert)
      : titleText(std::move(alertTitle)), message(std::move(alertMessage)), preferredStyle(style) {}

  [[nodiscard]] std::string_view kind() const override { return "AlertController"; }

  std::optional<std::string> titleText;
  std::optional<std::string> message;
  Style preferredStyle;

  void addAction(AlertAction action) { actions_.push_back(std::move(action)); }
  [[nodiscard]] const std::vector<AlertAction>& actions() const { return actions_; }
  // A member taps the action titled `actionTitle`; false when there is none.
  bool tapAction(const std::string& actionTitle);

 protected:
  // Title, message and one button per action, for renderers.
  void loadView() override;

 private:
  std::vector<AlertAction> actions_;
};

}  // namespace nutrition
