#pragma once
// The small status controls: a progress bar, a page control and an activity indicator.

#include <string>
#include <vector>

#include "views/Control.h"
#include "views/View.h"
#include "views/ViewVisitor.h"

namespace nutrition {

class ProgressView : public View {
 public:
  [[nodiscard]] std::string_view kind() const override { return "ProgressView"; }
  void accept(ViewVisitor& visitor) const override { visitor.visit(*this); }

  [[nodiscard]] double progress() const { return progress_; }
  // Clamped to 0...1; an animated change records its duration.
  void setProgress(double value, bool animated = false) {
    progress_ = value < 0 ? 0 : (value > 1 ? 1 : value);
    lastAnimationDuration = animated ? 0.25 : 0;
  }
  std::optional<Color> progressTintColor;
  std::optional<Color> trackTintColor;

 private:
  double progress_ = 0;
};

class PageControl : public View {
 public:
  [[nodiscard]] std::string_view kind() const override { return "PageControl"; }
  void accept(ViewVisitor& visitor) const override { visitor.visit(*this); }

  int numberOfPages = 0;
  int currentPage = 0;
  bool hidesForSinglePage = false;
  std::optional<Color> pageIndicatorTintColor;
  std::optional<Color> currentPageIndicatorTintColor;
};

class ActivityIndicator : public View {
 public:
  // Stopped, so hidden, until started.
  ActivityIndicator() { isHidden = true; }

  [[nodiscard]] std::string_view kind() const override { return "ActivityIndicator"; }
  void accept(ViewVisitor& visitor) const override { visitor.visit(*this); }

  [[nodiscard]] bool isAnimating() const { return animating_; }
  void startAnimating() {
    animating_ = true;
    if (hidesWhenStopped) isHidden = false;
  }
  void stopAnimating() {
    animating_ = false;
    if (hidesWhenStopped) isHidden = true;
  }
  bool hidesWhenStopped = true;
  std::optional<Color> color;

 private:
  bool animating_ = false;
};

// A row of segments, one selected; a member's pick sends value-changed.
class SegmentedControl : public Control {
 public:
  [[nodiscard]] std::string_view kind() const override { return "SegmentedControl"; }

  std::vector<std::string> segments;
  int selectedSegmentIndex = -1;
  std::optional<Color> selectedSegmentTintColor;

  bool pick(int index) {
    if (index < 0 || static_cast<std::size_t>(index) >= segments.size()) return false;
    selectedSegmentIndex = index;
    sendActions(ControlEvent::valueChanged);
    return true;
  }
};

}  // namespace nutrition
