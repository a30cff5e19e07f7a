#include "views/View.h"

#include <algorithm>

#include "views/ViewVisitor.h"

namespace nutrition {

namespace {
constexpr Color kSystemBlue{0, 122, 255, 255};
}

void View::accept(ViewVisitor& visitor) const {
  visitor.visit(*this);
}

void View::setFrame(Rect frame) {
  frame_ = frame;
}

void View::setTintColor(std::optional<Color> color) {
  tintColor_ = color;
  tintColorDidChange();
}

Color View::effectiveTintColor() const {
  for (const View* view = this; view != nullptr; view = view->superview_) {
    if (view->tintColor_) return *view->tintColor_;
  }
  return kSystemBlue;
}

void View::addSubview(std::shared_ptr<View> view) {
  insertSubview(std::move(view), subviews_.size());
}

void View::insertSubview(std::shared_ptr<View> view, std::size_t index) {
  if (!view || view.get() == this) return;
  view->removeFromSuperview();  // `view` keeps it alive meanwhile
  view->superview_ = this;
  const auto at = static_cast<std::ptrdiff_t>(std::min(index, subviews_.size()));
  subviews_.insert(subviews_.begin() + at, std::move(view));
}

void View::removeFromSuperview() {
  View* parent = superview_;
  if (parent == nullptr) return;
  superview_ = nullptr;
  auto& siblings = parent->subviews_;
  auto found =
      std::find_if(siblings.begin(), siblings.end(),
                   [this](const std::shared_ptr<View>& view) { return view.get() == this; });
  if (found != siblings.end()) siblings.erase(found);
}

View* View::find(std::string_view outletName) {
  if (name == outletName) return this;
  for (const auto& child : subviews_) {
    if (View* found = child->find(outletName)) return found;
  }
  return nullptr;
}

void View::addTapGesture(std::function<void()> action) {
  tapActions_.push_back(std::move(action));
}

bool View::tap() {
  return runTapActions();
}

bool View::runTapActions() {
  if (isHidden || !isUserInteractionEnabled || tapActions_.empty()) return false;
  // An action may remove this view or replace its actions; run a copy, keep the view alive.
  auto keep = weak_from_this().lock();
  auto actions = tapActions_;
  for (auto& action : actions)
    action();
  return true;
}

void View::prepareForDisplay() {
  layoutIfNeeded();
  displayTree();
}

void View::layoutIfNeeded() {
  layoutSubviews();
  // A layout step may add or remove subviews; walk a snapshot.
  auto children = subviews_;
  for (auto& child : children)
    child->layoutIfNeeded();
}

void View::displayTree() {
  draw();
  auto children = subviews_;
  for (auto& child : children)
    child->displayTree();
}

}  // namespace nutrition
