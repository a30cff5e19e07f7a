#pragma once
// A confirmation card: an image, a message, a title and a subtitle, and one action button that
// shows only when it has a title. Continuing dismisses the card and then runs `onComplete`;
// the exit button dismisses it without running anything.

#include <functional>
#include <memory>
#include <optional>
#include <string>

#include "ui/ThemedButtons.h"
#include "ui/UIContext.h"
#include "views/ImageRef.h"
#include "views/ImageView.h"
#include "views/Label.h"
#include "views/ViewController.h"

namespace nutrition {

class HealthAlertViewController : public ViewController {
 public:
  HealthAlertViewController(const UIContext& ui, std::optional<std::string> title,
                            std::optional<std::string> message, std::optional<std::string> subtitle,
                            std::optional<std::string> buttonTitle, std::optional<ImageRef> image,
                            bool animated, std::function<void()> onComplete);

  [[nodiscard]] std::string_view kind() const override { return "HealthAlertViewController"; }

  std::function<void()> onComplete;
  std::shared_ptr<Label> messageLabel;
  std::shared_ptr<Label> titleLabel;
  std::shared_ptr<Label> subtitleLabel;
  std::shared_ptr<ImageView> imageView;
  std::shared_ptr<LoginButton> continueButton;
  // Closes the card; not an outlet of the product's card, its way out.
  std::shared_ptr<Button> exitButton;
  std::optional<std::string> messageString;
  std::optional<std::string> titleString;
  std::optional<std::string> subtitleString;
  std::optional<std::string> buttonTitle;
  std::optional<ImageRef> image;
  bool animated;

  void viewWillAppear(bool animated) override;
  void didTapContinue();
  void didTapExit();

 protected:
  void loadView() override;

 private:
  const UIContext& ui_;
};

}  // namespace nutrition
