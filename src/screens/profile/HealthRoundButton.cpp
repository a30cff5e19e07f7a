#include "screens/profile/HealthRoundButton.h"

#include "views/SystemColors.h"

namespace nutrition {

HealthRoundButton::HealthRoundButton(const UIContext& ui) : ThemedButton(ui) {
  setTitleColor(primary(), ControlState::selected);
  setTitleColor(systemColors::label);
  setSelected(false);
}

void HealthRoundButton::setSelected(bool selected) {
  ThemedButton::setSelected(selected);
  if (selected) {
    borderWidth = 0;
    borderColor.reset();
    backgroundColor = systemColors::white;
  } else {
    borderWidth = 1;
    borderColor = systemColors::systemGray;
    backgroundColor = Color{255, 255, 255, 77};
  }
}

}  // namespace nutrition
