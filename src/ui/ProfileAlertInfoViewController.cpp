#include "ui/ProfileAlertInfoViewController.h"

#include "views/SystemColors.h"

namespace nutrition {

AlertItemView::AlertItemView(std::optional<AlertItem> item)
    : View(Rect{{}, {342, 120}}), alertItem(std::move(item)) {
  contentView = addOutlet<View>(*this, "contentView");
  contentView->setFrame(bounds());
  iconImage = addOutlet<ImageView>(*contentView, "iconImage");
  iconImage->setFrame({{0, 0}, {40, 40}});
  titleLabel = addOutlet<Label>(*contentView, "titleLabel");
  titleLabel->setFrame({{52, 0}, {290, 22}});
  titleLabel->font = Font::system(17, FontWeight::semibold);
  textLabel = addOutlet<Label>(*contentView, "textLabel");
  textLabel->setFrame({{52, 28}, {290, 88}});
  textLabel->font = Font::system(15);
  textLabel->textColor = systemColors::secondaryLabel;
  textLabel->numberOfLines = 0;
  loadUI();
}

void AlertItemView::loadUI() {
  titleLabel->setText(alertItem ? alertItem->title.value_or("") : "");
  textLabel->setText(alertItem ? alertItem->text.value_or("") : "");
  iconImage->image.reset();
  if (alertItem && alertItem->icon) iconImage->image = ImageRef::named(*alertItem->icon);
}

void ProfileAlertInfoViewController::loadView() {
  auto root = std::make_shared<View>(Rect{{}, kPhoneScreen});
  root->backgroundColor = systemColors::systemBackground;
  closeButton = addOutlet<Button>(*root, "closeButton");
  closeButton->setFrame({{300, 16}, {74, 32}});
  closeButton->setTitle(ui_.localized("Cerrar"));
  closeButton->setTitleColor(ui_.config.primaryColor);
  closeButton->addTarget(ControlEvent::touchUpInside, [this] { didTapCloseButton(); });
  scroll_ = addOutlet<ScrollView>(*root, "");
  scroll_->setFrame({{0, 64}, {390, 780}});
  contentItems = addOutlet<StackView>(*scroll_, "contentItems", Axis::vertical);
  contentItems->setFrame({{24, 0}, {342, 0}});
  contentItems->spacing = 16;
  setView(std::move(root));
}

void ProfileAlertInfoViewController::viewWillAppear(bool) {
  while (!contentItems->subviews().empty())
    contentItems->subviews().back()->removeFromSuperview();
  double height = 0;
  for (const AlertItem& item : items) {
    auto row = makeView<AlertItemView>(item);
    height += row->frame().height() + contentItems->spacing;
    contentItems->addArrangedSubview(std::move(row));
  }
  contentItems->setSize({342, height});
  scroll_->contentSize = {390, height};
}

void ProfileAlertInfoViewController::didTapCloseButton() {
  dismiss(true);
}

}  // namespace nutrition
