#pragma once
// Text fields in the host's look: a rounded field on the secondary background, and a clear
// field underlined by a 1-point line along its bottom edge.

#include <memory>

#include "ui/UIContext.h"
#include "views/SystemColors.h"
#include "views/TextField.h"

namespace nutrition {

// Fully rounded on every layout; secondary background, a 16-point inner margin on the left
// and the primary colour's tint (waking).
class RoundField : public TextField {
 public:
  explicit RoundField(const UIContext& ui) : ui_(ui) {}
  [[nodiscard]] std::string_view kind() const override { return "RoundField"; }
  void awakeFromNib() override {
    backgroundColor = systemColors::secondarySystemBackground;
    leftView = std::make_shared<View>(Rect{{}, {16, frame().height()}});
    setTintColor(ui_.config.primaryColor);
  }
  void layoutSubviews() override { cornerRadius = frame().height() / 2; }

 private:
  const UIContext& ui_;
};

// Clear, borderless, text in the label colour and a 12 x 35 inner margin on the left
// (waking); the `underline` follows the bottom edge at every layout.
class UnderlinedtextField : public TextField {
 public:
  [[nodiscard]] std::string_view kind() const override { return "UnderlinedtextField"; }
  void awakeFromNib() override {
    backgroundColor = systemColors::clear;
    borderStyle = BorderStyle::none;
    textColor = systemColors::label;
    leftView = std::make_shared<View>(Rect{{}, {12, 35}});
    underline = std::make_shared<View>();
    underline->name = "underline";
    underline->backgroundColor = systemColors::lightGray;
    addSubview(underline);
  }
  void layoutSubviews() override {
    underline->setFrame({{0, frame().height() - 1}, {frame().width(), 1}});
  }

  std::shared_ptr<View> underline;
};

}  // namespace nutrition
