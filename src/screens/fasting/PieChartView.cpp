#include "screens/fasting/PieChartView.h"

#include <numbers>

namespace nutrition {
namespace {

// Degrees from the top of the circle round, reduced into 0...360 once as the ring expects.
double ringAngle(double fraction) {
  double degrees = fraction * 360 + 270;
  if (degrees >= 360) degrees -= 360;
  return degrees * std::numbers::pi / 180;
}

}  // namespace

PieChartView::PieChartView(Size size) : View(Rect{{}, size}) {
  canvasView = std::make_shared<View>(Rect{{}, size});
  canvasView->name = "canvasView";
  addSubview(canvasView);
}

std::shared_ptr<ShapeLayer> PieChartView::arcLayer(Color color, double percent) const {
  const Rect canvas = canvasView->bounds();
  auto layer = std::make_shared<ShapeLayer>();
  layer->path.push_back(Arc{.center = canvas.center(),
                            .radius = (canvas.width() - 8) * 3 / 6,
                            .startAngle = ringAngle(currentPercent),
                            .endAngle = ringAngle(currentPercent + percent),
                            .clockwise = true});
  layer->fillColor.reset();
  layer->strokeColor = color;
  layer->lineWidth = 8;
  layer->strokeEnd = 1;
  return layer;
}

void PieChartView::addSlice(Color color, double percent) {
  canvasView->layer().addSublayer(arcLayer(color, percent));
}

void PieChartView::addSliceWithAnimation(Color color, double percent) {
  auto layer = arcLayer(color, percent);
  canvasView->layer().addSublayer(layer);
  layer->add({.keyPath = "strokeEnd", .fromValue = 1, .toValue = 1, .duration = 0}, this);
}

void PieChartView::animationDidStop(const BasicAnimation&, bool finished) {
  if (!finished || !slices) return;
  const auto& all = *slices;
  if (sliceIndex < 0 || static_cast<std::size_t>(sliceIndex) >= all.size()) return;
  currentPercent += all[static_cast<std::size_t>(sliceIndex)].percent;
  ++sliceIndex;
  if (static_cast<std::size_t>(sliceIndex) < all.size()) {
    const Slice& next = all[static_cast<std::size_t>(sliceIndex)];
    addSliceWithAnimation(next.color, next.percent);
  }
}

}  // namespace nutrition
