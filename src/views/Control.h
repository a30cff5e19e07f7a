#pragma once
// A control: a view with enabled and selected states that sends actions for events (a tap
// ends as touch-up-inside; pickers and fields send value and editing changes).

#include <functional>
#include <utility>
#include <vector>

#include "views/View.h"
#include "views/ViewVisitor.h"

namespace nutrition {

enum class ControlEvent {
  touchUpInside,
  valueChanged,
  editingChanged,
  editingDidBegin,
  editingDidEnd
};

class Control : public View {
 public:
  [[nodiscard]] std::string_view kind() const override { return "Control"; }
  void accept(ViewVisitor& visitor) const override { visitor.visit(*this); }

  [[nodiscard]] bool isSelected() const { return selected_; }
  // Subclasses restyle on selection (a profile button retints itself).
  virtual void setSelected(bool selected) { selected_ = selected; }
  bool isEnabled = true;

  void addTarget(ControlEvent event, std::function<void()> action) {
    actions_.emplace_back(event, std::move(action));
  }
  void removeAllTargets() { actions_.clear(); }
  [[nodiscard]] bool hasTarget(ControlEvent event) const {
    for (const auto& entry : actions_) {
      if (entry.first == event) return true;
    }
    return false;
  }
  // Runs the actions registered for `event`, in the order they were added.
  void sendActions(ControlEvent event) {
    auto keep = weak_from_this().lock();
    auto actions = actions_;
    for (auto& [registered, action] : actions) {
      if (registered == event) action();
    }
  }

  // A tap sends touch-up-inside (and runs any tap gesture) unless hidden or disabled.
  bool tap() override {
    if (isHidden || !isEnabled || !isUserInteractionEnabled) return false;
    bool handled = hasTarget(ControlEvent::touchUpInside);
    sendActions(ControlEvent::touchUpInside);
    return runTapActions() || handled;
  }

 private:
  bool selected_ = false;
  std::vector<std::pair<ControlEvent, std::function<void()>>> actions_;
};

}  // namespace nutrition
