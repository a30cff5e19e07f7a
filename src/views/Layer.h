#pragma once
// Drawing layers under a view. Only what the screens draw: shape layers whose path is made of
// circular arcs (the fasting ring), with stroke, fill, line width and stroke end.
//
// Animations apply their end state at once and are recorded on the layer, so a test sees both
// the final look and what was animated for how long; the delegate hears that an animation
// stopped, finished, before `add` returns.

#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "base/Color.h"
#include "views/Geometry.h"

namespace nutrition {

// A circular arc, angles in radians measured as on screen (0 is 3 o'clock, growing towards
// 6 o'clock).
struct Arc {
  Point center;
  double radius = 0;
  double startAngle = 0;
  double endAngle = 0;
  bool clockwise = true;
  bool operator==(const Arc&) const = default;
};

struct BasicAnimation {
  std::string keyPath;
  double fromValue = 0;
  double toValue = 0;
  double duration = 0;
};

class AnimationDelegate {
 public:
  virtual void animationDidStop(const BasicAnimation& animation, bool finished) = 0;

 protected:
  ~AnimationDelegate() = default;
};

class Layer {
 public:
  virtual ~Layer() = default;

  void addSublayer(std::shared_ptr<Layer> layer) { sublayers_.push_back(std::move(layer)); }
  void removeAllSublayers() { sublayers_.clear(); }
  [[nodiscard]] const std::vector<std::shared_ptr<Layer>>& sublayers() const { return sublayers_; }

  // Applies the animation's end value to `keyPath` at once, records it and tells `delegate`.
  void add(const BasicAnimation& animation, AnimationDelegate* delegate = nullptr);
  [[nodiscard]] const std::vector<BasicAnimation>& animations() const { return animations_; }

 protected:
  virtual void apply(const std::string& keyPath, double value);

 private:
  std::vector<std::shared_ptr<Layer>> sublayers_;
  std::vector<BasicAnimation> animations_;
};

class ShapeLayer : public Layer {
 public:
  std::vector<Arc> path;
  std::optional<Color> fillColor;
  std::optional<Color> strokeColor;
  double lineWidth = 1;
  double strokeEnd = 1;

 protected:
  void apply(const std::string& keyPath, double value) override;
};

}  // namespace nutrition
