#pragma once
// A text field: text, an attributed placeholder, a keyboard, and for choices an input view (a
// date or picker wheel) with an accessory toolbar instead of the keyboard.

#include <memory>
#include <optional>
#include <string>

#include "views/Control.h"
#include "views/Text.h"
#include "views/Toolbar.h"
#include "views/ViewVisitor.h"

namespace nutrition {

enum class KeyboardType { standard, numberPad, decimalPad, email };
enum class BorderStyle { none, line, roundedRect };

class TextField : public Control {
 public:
  [[nodiscard]] std::string_view kind() const override { return "TextField"; }
  void accept(ViewVisitor& visitor) const override { visitor.visit(*this); }

  std::string text;
  std::optional<AttributedText> attributedPlaceholder;
  std::string placeholder;
  Font font;
  Color textColor{0, 0, 0, 255};
  TextAlignment textAlignment = TextAlignment::natural;
  KeyboardType keyboardType = KeyboardType::standard;
  BorderStyle borderStyle = BorderStyle::none;
  std::shared_ptr<View> inputView;
  std::shared_ptr<Toolbar> inputAccessoryView;
  std::shared_ptr<View> leftView;

  [[nodiscard]] bool isFirstResponder() const { return editing_; }
  void becomeFirstResponder() {
    if (editing_) return;
    editing_ = true;
    sendActions(ControlEvent::editingDidBegin);
  }
  void resignFirstResponder() {
    if (!editing_) return;
    editing_ = false;
    sendActions(ControlEvent::editingDidEnd);
  }
  // A member types: the text is replaced and editing-changed is sent.
  void type(std::string typed) {
    becomeFirstResponder();
    text = std::move(typed);
    sendActions(ControlEvent::editingChanged);
  }
  // A tap starts editing.
  bool tap() override {
    if (isHidden || !isEnabled || !isUserInteractionEnabled) return false;
    becomeFirstResponder();
    return true;
  }

 private:
  bool editing_ = false;
};

}  // namespace nutrition
