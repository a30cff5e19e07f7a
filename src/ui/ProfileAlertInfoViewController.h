#pragma once
// The explanation a question's info button opens: a scrolling list of items, each an icon, a
// title and a text (`AlertItemView`), and a close button.

#include <memory>
#include <optional>
#include <vector>

#include "model/AlertItem.h"
#include "ui/UIContext.h"
#include "views/Button.h"
#include "views/ImageView.h"
#include "views/Label.h"
#include "views/ScrollView.h"
#include "views/StackView.h"
#include "views/ViewController.h"

namespace nutrition {

class AlertItemView : public View {
 public:
  explicit AlertItemView(std::optional<AlertItem> item);

  [[nodiscard]] std::string_view kind() const override { return "AlertItemView"; }

  std::shared_ptr<View> contentView;
  std::shared_ptr<Label> titleLabel;
  std::shared_ptr<ImageView> iconImage;
  std::shared_ptr<Label> textLabel;
  std::optional<AlertItem> alertItem;

  void loadUI();
};

class ProfileAlertInfoViewController : public ViewController {
 public:
  explicit ProfileAlertInfoViewController(const UIContext& ui) : ui_(ui) {}

  [[nodiscard]] std::string_view kind() const override { return "ProfileAlertInfoViewController"; }

  std::vector<AlertItem> items;
  std::shared_ptr<StackView> contentItems;
  std::shared_ptr<Button> closeButton;

  // Shows one row per item, in order; appearing again shows the same rows, not more.
  void viewWillAppear(bool animated) override;
  void didTapCloseButton();

 protected:
  void loadView() override;

 private:
  const UIContext& ui_;
  std::shared_ptr<ScrollView> scroll_;
};

}  // namespace nutrition
