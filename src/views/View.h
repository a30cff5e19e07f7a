#pragma once
// The base of the headless toolkit: a rectangle in a tree of views with the look properties
// the screens set (colours, corner radius, border, alpha, hidden, clipping, shadow) and tap
// actions. Screens build their trees in code; renderers (text, HTML, UIKit) read them.
//
// Subviews are owned by their superview; a screen keeps its outlets as shared pointers too, so
// an outlet taken out of the tree stays valid. `makeView<T>()` builds a view as if it had been
// loaded from an interface file: it runs `awakeFromNib()`, where themed controls take their
// look. Layout and drawing hooks run when a platform is about to show the tree
// (`prepareForDisplay()`), so a control that restyles "on every layout" or "on every draw"
// does so there.

#include <cstddef>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "base/Color.h"
#include "views/Geometry.h"
#include "views/Layer.h"

namespace nutrition {

class ViewVisitor;
class ViewController;

struct Shadow {
  Color color;
  double opacity = 0;
  Size offset;
  double radius = 0;
};

class View : public std::enable_shared_from_this<View> {
 public:
  View() = default;
  explicit View(Rect frame) : frame_(frame) {}
  virtual ~View() = default;
  View(const View&) = delete;
  View& operator=(const View&) = delete;

  // The type's name as the product calls it ("CustomButton"), for renderers and snapshots.
  [[nodiscard]] virtual std::string_view kind() const { return "View"; }
  virtual void accept(ViewVisitor& visitor) const;

  // The outlet name the screen gives this view, shown by renderers; empty when it has none.
  std::string name;
  std::optional<Color> backgroundColor;
  double cornerRadius = 0;
  double borderWidth = 0;
  std::optional<Color> borderColor;
  double alpha = 1;
  bool isHidden = false;
  bool clipsToBounds = false;
  bool isUserInteractionEnabled = true;
  std::optional<Shadow> shadow;
  // The duration of the last animation that changed this view (0: none, or not animated).
  double lastAnimationDuration = 0;

  [[nodiscard]] const Rect& frame() const { return frame_; }
  void setFrame(Rect frame);
  void setSize(Size size) { setFrame({frame_.origin, size}); }
  [[nodiscard]] Rect bounds() const { return {{}, frame_.size}; }

  // Own tint, or the nearest superview's, or the system's default blue.
  [[nodiscard]] std::optional<Color> tintColor() const { return tintColor_; }
  void setTintColor(std::optional<Color> color);
  [[nodiscard]] Color effectiveTintColor() const;

  void addSubview(std::shared_ptr<View> view);
  void insertSubview(std::shared_ptr<View> view, std::size_t index);
  void removeFromSuperview();
  [[nodiscard]] const std::vector<std::shared_ptr<View>>& subviews() const { return subviews_; }
  [[nodiscard]] View* superview() const { return superview_; }
  // The first view named `outletName` in this tree, depth first; null when there is none.
  [[nodiscard]] View* find(std::string_view outletName);

  [[nodiscard]] Layer& layer() { return layer_; }
  [[nodiscard]] const Layer& layer() const { return layer_; }

  void addTapGesture(std::function<void()> action);
  [[nodiscard]] bool hasTapGesture() const { return !tapActions_.empty(); }
  // A member's tap: runs what a tap on this view does (gesture actions; a control's
  // touch-up-inside actions). Returns false when a hidden, disabled or non-interactive view
  // ignores it.
  virtual bool tap();

  // Lifecycle hooks of subclasses.
  virtual void awakeFromNib() {}
  virtual void layoutSubviews() {}
  virtual void draw() {}
  virtual void tintColorDidChange() {}

  // Runs `layoutSubviews` over the tree, then `draw`, as a platform does before showing it.
  void prepareForDisplay();
  void layoutIfNeeded();

  // The view controller this view is the root view of, if any.
  ViewController* viewController = nullptr;

 protected:
  bool runTapActions();

 private:
  void displayTree();

  Rect frame_{{}, {}};
  std::optional<Color> tintColor_;
  View* superview_ = nullptr;
  std::vector<std::shared_ptr<View>> subviews_;
  std::vector<std::function<void()>> tapActions_;
  Layer layer_;
};

// Builds a view as an interface file would: constructed, then woken.
template <class T, class... Args>
std::shared_ptr<T> makeView(Args&&... args) {
  auto view = std::make_shared<T>(std::forward<Args>(args)...);
  view->awakeFromNib();
  return view;
}

// Builds a view, names it as an outlet and adds it to `parent`.
template <class T, class... Args>
std::shared_ptr<T> addOutlet(View& parent, std::string_view outletName, Args&&... args) {
  auto view = makeView<T>(std::forward<Args>(args)...);
  view->name = std::string(outletName);
  parent.addSubview(view);
  return view;
}

}  // namespace nutrition
