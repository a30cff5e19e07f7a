#pragma once
// The fasting ring: slices drawn one after another as arcs around the centre of a canvas,
// starting at the top (270°) and growing clockwise, each with a stroke 8 points wide.

#include <memory>
#include <optional>
#include <vector>

#include "base/Color.h"
#include "views/Layer.h"
#include "views/View.h"

namespace nutrition {

struct Slice {
  // Fraction of the full circle, 0 to 1.
  double percent = 0;
  Color color;
  // Kept with the slice; the drawing does not use it.
  bool isGradient = false;
};

class PieChartView : public View, private AnimationDelegate {
 public:
  explicit PieChartView(Size size);

  [[nodiscard]] std::string_view kind() const override { return "PieChartView"; }

  std::shared_ptr<View> canvasView;
  std::optional<std::vector<Slice>> slices;
  int sliceIndex = 0;
  // The fraction of the circle already drawn.
  double currentPercent = 0;

  // Draws one slice from `currentPercent` on; the caller advances `currentPercent`.
  void addSlice(Color color, double percent);
  // As addSlice, with a stroke animation whose end draws the next slice.
  void addSliceWithAnimation(Color color, double percent);

 private:
  void animationDidStop(const BasicAnimation& animation, bool finished) override;
  std::shared_ptr<ShapeLayer> arcLayer(Color color, double percent) const;
};

}  // namespace nutrition
