#pragma once
// Buttons in the host's look. Each takes its colours from the configuration when it wakes
// (`makeView`), when it is laid out and when it draws, at exactly the moments its comment
// says, so a colour the host changes later shows at the next layout or draw of those that
// restyle then.

#include "ui/UIContext.h"
#include "views/Button.h"

namespace nutrition {

// What every themed button shares: the context it reads its colours from.
class ThemedButton : public Button {
 protected:
  explicit ThemedButton(const UIContext& ui) : ui_(ui) {}
  [[nodiscard]] Color primary() const { return ui_.config.primaryColor; }
  void roundToHeight() { cornerRadius = frame().height() / 2; }

  const UIContext& ui_;
};

// Fully rounded on every layout; title in the primary colour (waking).
class CustomButton : public ThemedButton {
 public:
  explicit CustomButton(const UIContext& ui) : ThemedButton(ui) {}
  [[nodiscard]] std::string_view kind() const override { return "CustomButton"; }
  void awakeFromNib() override { setTitleColor(primary()); }
  void layoutSubviews() override { roundToHeight(); }
};

// Fully rounded, filled with the primary colour (waking and layout).
class LoginButton : public ThemedButton {
 public:
  explicit LoginButton(const UIContext& ui) : ThemedButton(ui) {}
  [[nodiscard]] std::string_view kind() const override { return "LoginButton"; }
  void awakeFromNib() override { backgroundColor = primary(); }
  void layoutSubviews() override {
    roundToHeight();
    backgroundColor = primary();
  }
};

// Radius 8, a 1-point border and the title in the primary colour (waking).
class SDKProfileButton : public ThemedButton {
 public:
  explicit SDKProfileButton(const UIContext& ui) : ThemedButton(ui) {}
  [[nodiscard]] std::string_view kind() const override { return "SDKProfileButton"; }
  void awakeFromNib() override;
};

// A 1-point border; white at alpha 0.7 behind it when selected, clear when not.
class BorderButton : public ThemedButton {
 public:
  explicit BorderButton(const UIContext& ui) : ThemedButton(ui) {}
  [[nodiscard]] std::string_view kind() const override { return "BorderButton"; }
  void awakeFromNib() override;
  void setSelected(bool selected) override;
};

// Tinted in the primary colour when selected, the tertiary label colour when not.
class RateButton : public ThemedButton {
 public:
  explicit RateButton(const UIContext& ui) : ThemedButton(ui) {}
  [[nodiscard]] std::string_view kind() const override { return "RateButton"; }
  void awakeFromNib() override { setSelected(isSelected()); }
  void setSelected(bool selected) override;
};

// Radius 17, white tint and the system background (waking; the background again on every
// draw); its selected look (primary border and title) and deselected look (grey border,
// tertiary label title) are set by configSelected and configDeselected.
class TrainingProfileButton : public ThemedButton {
 public:
  explicit TrainingProfileButton(const UIContext& ui) : ThemedButton(ui) {}
  [[nodiscard]] std::string_view kind() const override { return "TrainingProfileButton"; }
  void awakeFromNib() override;
  void draw() override;
  void configSelected();
  void configDeselected();
};

// Tint := primary colour, when waking and on every draw.
class TintButton : public ThemedButton {
 public:
  explicit TintButton(const UIContext& ui) : ThemedButton(ui) {}
  [[nodiscard]] std::string_view kind() const override { return "TintButton"; }
  void awakeFromNib() override { setTintColor(primary()); }
  void draw() override { setTintColor(primary()); }
};

// Background := primary colour, when waking and on every draw.
class BackgroundTintButton : public ThemedButton {
 public:
  explicit BackgroundTintButton(const UIContext& ui) : ThemedButton(ui) {}
  [[nodiscard]] std::string_view kind() const override { return "BackgroundTintButton"; }
  void awakeFromNib() override { backgroundColor = primary(); }
  void draw() override { backgroundColor = primary(); }
};

// Fully rounded on every layout; background := primary colour on every draw.
class RoundButton : public ThemedButton {
 public:
  explicit RoundButton(const UIContext& ui) : ThemedButton(ui) {}
  [[nodiscard]] std::string_view kind() const override { return "RoundButton"; }
  void layoutSubviews() override { roundToHeight(); }
  void draw() override { backgroundColor = primary(); }
};

// Fully rounded on every layout; white tint and background (waking), white again on every draw.
class RoundWhiteButton : public ThemedButton {
 public:
  explicit RoundWhiteButton(const UIContext& ui) : ThemedButton(ui) {}
  [[nodiscard]] std::string_view kind() const override { return "RoundWhiteButton"; }
  void awakeFromNib() override;
  void layoutSubviews() override { roundToHeight(); }
  void draw() override;
};

// Fully rounded on every layout, no colour of its own.
class RoundNoTintButton : public ThemedButton {
 public:
  explicit RoundNoTintButton(const UIContext& ui) : ThemedButton(ui) {}
  [[nodiscard]] std::string_view kind() const override { return "RoundNoTintButton"; }
  void layoutSubviews() override { roundToHeight(); }
};

// Clips its content to its bounds on every layout.
class CustomSquareButton : public ThemedButton {
 public:
  explicit CustomSquareButton(const UIContext& ui) : ThemedButton(ui) {}
  [[nodiscard]] std::string_view kind() const override { return "CustomSquareButton"; }
  void layoutSubviews() override { clipsToBounds = true; }
};

// Selecting it tints it in the label colour, deselecting in the tertiary label colour; either
// way the tint change is announced.
class ProfileButton : public ThemedButton {
 public:
  explicit ProfileButton(const UIContext& ui) : ThemedButton(ui) {}
  [[nodiscard]] std::string_view kind() const override { return "ProfileButton"; }
  void setSelected(bool selected) override;
};

}  // namespace nutrition
