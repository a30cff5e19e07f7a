#include "ui/ThemedButtons.h"

#include "views/SystemColors.h"

namespace nutrition {

void SDKProfileButton::awakeFromNib() {
  cornerRadius = 8;
  borderWidth = 1;
  borderColor = primary();
  setTitleColor(primary());
}

void BorderButton::awakeFromNib() {
  borderWidth = 1;
  setSelected(isSelected());
}

void BorderButton::setSelected(bool selected) {
  Button::setSelected(selected);
  backgroundColor = selected ? Color{255, 255, 255, 178} : systemColors::clear;
}

void RateButton::setSelected(bool selected) {
  Button::setSelected(selected);
  setTintColor(selected ? primary() : systemColors::tertiaryLabel);
}

void TrainingProfileButton::awakeFromNib() {
  cornerRadius = 17;
  setTintColor(systemColors::white);
  backgroundColor = systemColors::systemBackground;
}

void TrainingProfileButton::draw() {
  backgroundColor = systemColors::systemBackground;
}

void TrainingProfileButton::configSelected() {
  setSelected(true);
  borderWidth = 1;
  borderColor = primary();
  setTitleColor(primary());
}

void TrainingProfileButton::configDeselected() {
  setSelected(false);
  borderWidth = 1;
  borderColor = systemColors::systemGray;
  setTitleColor(systemColors::tertiaryLabel);
}

void RoundWhiteButton::awakeFromNib() {
  setTintColor(systemColors::white);
  backgroundColor = systemColors::white;
}

void RoundWhiteButton::draw() {
  backgroundColor = systemColors::white;
}

void ProfileButton::setSelected(bool selected) {
  Button::setSelected(selected);
  setTintColor(selected ? systemColors::label : systemColors::tertiaryLabel);
}

}  // namespace nutrition
