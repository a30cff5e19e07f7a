#pragma once
// Views painted in the host's primary colour when they wake and again every time they draw,
// so a colour changed later shows at their next draw: an image's tint, a label's text, a
// view's background and a segmented control's selected segment (also on every layout).

#include "ui/UIContext.h"
#include "views/Controls.h"
#include "views/ImageView.h"
#include "views/Label.h"

namespace nutrition {

class TintImage : public ImageView {
 public:
  explicit TintImage(const UIContext& ui) : ui_(ui) {}
  [[nodiscard]] std::string_view kind() const override { return "TintImage"; }
  void awakeFromNib() override { setTintColor(ui_.config.primaryColor); }
  void draw() override { setTintColor(ui_.config.primaryColor); }

 private:
  const UIContext& ui_;
};

class TintLabel : public Label {
 public:
  explicit TintLabel(const UIContext& ui) : ui_(ui) {}
  [[nodiscard]] std::string_view kind() const override { return "TintLabel"; }
  void awakeFromNib() override { textColor = ui_.config.primaryColor; }
  void draw() override { textColor = ui_.config.primaryColor; }

 private:
  const UIContext& ui_;
};

class TintView : public View {
 public:
  explicit TintView(const UIContext& ui) : ui_(ui) {}
  [[nodiscard]] std::string_view kind() const override { return "TintView"; }
  void awakeFromNib() override { backgroundColor = ui_.config.primaryColor; }
  void draw() override { backgroundColor = ui_.config.primaryColor; }

 private:
  const UIContext& ui_;
};

class OrvaneSegmentedControl : public SegmentedControl {
 public:
  explicit OrvaneSegmentedControl(const UIContext& ui) : ui_(ui) {}
  [[nodiscard]] std::string_view kind() const override { return "OrvaneSegmentedControl"; }
  void awakeFromNib() override { selectedSegmentTintColor = ui_.config.primaryColor; }
  void layoutSubviews() override { selectedSegmentTintColor = ui_.config.primaryColor; }
  void draw() override { selectedSegmentTintColor = ui_.config.primaryColor; }

 private:
  const UIContext& ui_;
};

}  // namespace nutrition
