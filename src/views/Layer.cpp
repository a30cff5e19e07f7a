#include "views/Layer.h"

namespace nutrition {

void Layer::add(const BasicAnimation& animation, AnimationDelegate* delegate) {
  apply(animation.keyPath, animation.toValue);
  animations_.push_back(animation);
  if (delegate != nullptr) delegate->animationDidStop(animation, true);
}

void Layer::apply(const std::string&, double) {}

void ShapeLayer::apply(const std::string& keyPath, double value) {
  if (keyPath == "strokeEnd") strokeEnd = value;
}

}  // namespace nutrition
