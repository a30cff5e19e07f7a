#include "screens/profile/QuestionaryAnswerView.h"

#include "ui/BundleImages.h"
#include "views/SystemColors.h"

namespace nutrition {

QuestionaryAnswerView::QuestionaryAnswerView(const UIContext& ui) : ui_(ui) {
  setFrame({{}, {350, 52}});
  contentView = addOutlet<View>(*this, "contentView");
  contentView->setFrame(bounds());
  contentView->cornerRadius = 8;
  contentView->borderWidth = 1;
  checkImg = addOutlet<ImageView>(*contentView, "checkImg");
  checkImg->setFrame({{12, 10}, {32, 32}});
  textLabel = addOutlet<Label>(*contentView, "textLabel");
  textLabel->setFrame({{56, 0}, {282, 52}});
  textLabel->numberOfLines = 0;
  addTapGesture([this] { didTapOnAnswer(); });
  setDisabledLook();
}

void QuestionaryAnswerView::load(const QuestionaryAnswer& value, const std::string& identifier) {
  answer = value;
  textLabel->setText(value.title.value_or(""));
  isSelected = false;
  setDisabledLook();
  if (value.score) {
    checkImg->image = ImageRef::named(checkImageName(identifier, *value.score));
  } else {
    checkImg->image.reset();
  }
}

void QuestionaryAnswerView::layoutSubviews() {
  contentView->setFrame(bounds());
  textLabel->setFrame({{56, 0}, {bounds().width() - 68, bounds().height()}});
}

void QuestionaryAnswerView::didTapOnAnswer() {
  if (isFixed) return;
  isSelected = !isSelected;
  if (isSelected) {
    setEnabledLook();
  } else {
    setDisabledLook();
  }
  if (delegate != nullptr) delegate->selectAnswer(*this);
}

void QuestionaryAnswerView::setEnabledLook() {
  contentView->backgroundColor = ui_.config.primaryColor;
  textLabel->textColor = systemColors::white;
  checkImg->setTintColor(systemColors::white);
  contentView->borderColor = systemColors::clear;
}

void QuestionaryAnswerView::setDisabledLook() {
  contentView->backgroundColor = systemColors::systemBackground;
  textLabel->textColor = systemColors::secondaryLabel;
  checkImg->setTintColor(systemColors::secondaryLabel);
  contentView->borderColor = systemColors::secondaryLabel;
}

}  // namespace nutrition
