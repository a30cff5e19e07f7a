#pragma once
// The pop-up that explains one phase of the fast: its icon, name and help text.

#include <memory>
#include <optional>

#include "model/AyunoPhase.h"
#include "ui/UIContext.h"
#include "views/Button.h"
#include "views/ImageView.h"
#include "views/Label.h"
#include "views/ViewController.h"

namespace nutrition {

class PhaseAlertViewController : public ViewController {
 public:
  explicit PhaseAlertViewController(const UIContext& context) : context_(context) {}

  [[nodiscard]] std::string_view kind() const override { return "PhaseAlertViewController"; }

  std::optional<AyunoPhase> phase;
  std::shared_ptr<Label> titleLabel;
  std::shared_ptr<Label> textLabel;
  std::shared_ptr<ImageView> icon;
  // Closes the pop-up.
  std::shared_ptr<Button> closeButton;

  void viewWillAppear(bool animated) override;

 protected:
  void loadView() override;

 private:
  const UIContext& context_;
};

}  // namespace nutrition
