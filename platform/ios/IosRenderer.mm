// The walk from a core view tree to UIKit views (IosRenderer.h).

#include "IosRenderer.h"

#import <QuartzCore/QuartzCore.h>

#include <cmath>
#include <functional>
#include <optional>
#include <vector>

#include "IosViews.h"
#include "Marshal+Private.h"
#include "views/PageViewController.h"
#include "views/ViewVisitor.h"

namespace nutrition::ios {
namespace {

// The look every view has, compared as a whole: a view whose look did not change is not
// touched.
struct Look {
  Rect frame;
  std::optional<Color> background;
  double cornerRadius = 0;
  double borderWidth = 0;
  std::optional<Color> borderColor;
  double alpha = 1;
  bool hidden = false;
  bool clips = false;
  bool interactive = true;
  std::optional<Color> tint;
  bool shadow = false;
  Color shadowColor;
  double shadowOpacity = 0;
  Size shadowOffset;
  double shadowRadius = 0;
  bool operator==(const Look&) const = default;

  explicit Look(const View& view)
      : frame(view.frame()),
        background(view.backgroundColor),
        cornerRadius(view.cornerRadius),
        borderWidth(view.borderWidth),
        borderColor(view.borderColor),
        alpha(view.alpha),
        hidden(view.isHidden),
        clips(view.clipsToBounds),
        interactive(view.isUserInteractionEnabled),
        tint(view.tintColor()) {
    if (view.shadow) {
      shadow = true;
      shadowColor = view.shadow->color;
      shadowOpacity = view.shadow->opacity;
      shadowOffset = view.shadow->offset;
      shadowRadius = view.shadow->radius;
    }
  }
};

// One shape layer as last shown, and how many of its animations were played.
struct ShownShape {
  std::weak_ptr<const Layer> source;
  std::vector<Arc> path;
  std::optional<Color> fill;
  std::optional<Color> stroke;
  std::size_t animations = 0;
};

UIBezierPath* arcsPath(const std::vector<Arc>& arcs) {
  UIBezierPath* path = [UIBezierPath bezierPath];
  for (const Arc& arc : arcs) {
    // Each arc is its own stroke: no line joins the end of one to the start of the next.
    [path moveToPoint:CGPointMake(arc.center.x + arc.radius * std::cos(arc.startAngle),
                                  arc.center.y + arc.radius * std::sin(arc.startAngle))];
    [path addArcWithCenter:CGPointMake(arc.center.x, arc.center.y)
                    radius:arc.radius
                startAngle:arc.startAngle
                  endAngle:arc.endAngle
                 clockwise:arc.clockwise];
  }
  return path;
}

void showShape(const std::shared_ptr<const ShapeLayer>& shape, CAShapeLayer* layer,
               ShownShape& shown) {
  const bool fresh = shown.source.lock() != shape;
  if (fresh) shown = ShownShape{shape};
  if (fresh || shown.path != shape->path) layer.path = arcsPath(shape->path).CGPath;
  if (fresh || shown.fill != shape->fillColor) {
    layer.fillColor = shape->fillColor ? toUIColor(*shape->fillColor).CGColor : nil;
  }
  if (fresh || shown.stroke != shape->strokeColor) {
    layer.strokeColor = shape->strokeColor ? toUIColor(*shape->strokeColor).CGColor : nil;
  }
  layer.lineWidth = shape->lineWidth;
  layer.strokeEnd = shape->strokeEnd;
  shown.path = shape->path;
  shown.fill = shape->fillColor;
  shown.stroke = shape->strokeColor;
  // The core applied each animation's end state at once; UIKit plays the new ones.
  const auto& animations = shape->animations();
  for (; shown.animations < animations.size(); ++shown.animations) {
    const BasicAnimation& recorded = animations[shown.animations];
    if (recorded.duration <= 0) continue;
    CABasicAnimation* animation =
        [CABasicAnimation animationWithKeyPath:toNSString(recorded.keyPath)];
    animation.fromValue = @(recorded.fromValue);
    animation.toValue = @(recorded.toValue);
    animation.duration = recorded.duration;
    [layer addAnimation:animation forKey:toNSString(recorded.keyPath)];
  }
}

// A tap on a cell selects its item, unless the cell takes taps itself.
std::function<void()> cellTap(std::weak_ptr<CellListView> list, std::weak_ptr<ReusableCell> cell) {
  return [list = std::move(list), cell = std::move(cell)] {
    auto owner = list.lock();
    auto tapped = cell.lock();
    if (!owner || !tapped) return;
    if (tapped->hasTapGesture()) {
      tapped->tap();
      return;
    }
    for (const auto& [indexPath, shownCell] : owner->cells()) {
      if (shownCell != tapped) continue;
      owner->selectItem(indexPath);
      return;
    }
  };
}

std::function<void()> pageSwipe(std::weak_ptr<ViewController> pages,
                                PageViewController::Direction direction) {
  return [pages = std::move(pages), direction] {
    if (auto owner = std::dynamic_pointer_cast<PageViewController>(pages.lock())) {
      owner->swipe(direction);
    }
  };
}

}  // namespace

struct ViewTreeRenderer::Node {
  std::weak_ptr<View> source;
  UIView* view = nil;
  unsigned generation = 0;
  std::optional<Look> look;
  // Targets of the gestures added to the view; gesture recognizers do not keep them.
  NSMutableArray<NKAction*>* actions = nil;
  bool tapBound = false;
  bool swipeBound = false;
  NSMutableArray<CAShapeLayer*>* shapeLayers = nil;
  std::vector<ShownShape> shapes;
  CALayer* separator = nil;
};

// Makes or updates the UIKit view of one core view, by its kind.
class ViewTreeRenderer::Builder final : public ViewVisitor {
 public:
  Builder(ViewTreeRenderer& renderer, Node& node, const std::shared_ptr<View>& view)
      : renderer_(renderer), node_(node), view_(view) {}

  void visit(const View&) override { ensure<UIView>(); }
  void visit(const Control&) override {
    if (auto segments = std::dynamic_pointer_cast<SegmentedControl>(view_)) {
      [ensure<NKSegmentedControl>() showSegments:segments];
    } else {
      [ensure<NKControl>() showControl:as<Control>()];
    }
  }
  void visit(const Label& label) override { [ensure<NKLabel>() showLabel:label]; }
  void visit(const Button&) override { [ensure<NKButton>() showButton:as<Button>()]; }
  void visit(const ImageView& imageView) override {
    [ensure<NKImageView>() showImageView:imageView];
  }
  // The core placed the arranged views already.
  void visit(const StackView&) override { ensure<UIView>(); }
  void visit(const ScrollView&) override { scroll(); }
  void visit(const CollectionView&) override { scroll(); }
  void visit(const TableView&) override { scroll(); }
  void visit(const TextField&) override {
    auto field = as<TextField>();
    UIView* input = attach(field->inputView);
    UIView* accessory = attach(field->inputAccessoryView);
    UIView* left = attach(field->leftView);
    [ensure<NKTextField>() showTextField:field inputView:input accessory:accessory leftView:left];
  }
  void visit(const DatePicker&) override {
    [ensure<NKDatePicker>() showDatePicker:as<DatePicker>()];
  }
  void visit(const PickerView&) override {
    [ensure<NKPickerView>() showPickerView:as<PickerView>()];
  }
  void visit(const Toolbar&) override { [ensure<NKToolbar>() showToolbar:as<Toolbar>()]; }
  void visit(const ProgressView& progress) override {
    showProgressView(ensure<UIProgressView>(), progress);
  }
  void visit(const PageControl& pages) override { showPageControl(ensure<UIPageControl>(), pages); }
  void visit(const ActivityIndicator& indicator) override {
    showActivityIndicator(ensure<UIActivityIndicatorView>(), indicator);
  }
  void visit(const ReusableCell&) override { ensure<UIView>(); }

 private:
  // The node's view as a `T`, made the first time. A view is never shown by two classes: the
  // node of a different kind of view starts again.
  template <class T>
  T* ensure() {
    if (node_.view != nil && [node_.view class] != [T class]) {
      [node_.view removeFromSuperview];
      Node fresh;
      fresh.source = view_;
      fresh.generation = node_.generation;
      node_ = std::move(fresh);
    }
    if (node_.view == nil) node_.view = [[T alloc] initWithFrame:CGRectZero];
    return static_cast<T*>(node_.view);
  }
  // The visited view as its own type: the visitor was called for that type.
  template <class T>
  std::shared_ptr<T> as() const {
    return std::static_pointer_cast<T>(view_);
  }
  void scroll() { [ensure<NKScrollView>() showScrollView:as<ScrollView>()]; }
  UIView* _Nullable attach(const std::shared_ptr<View>& attached) {
    return attached ? renderer_.renderView(attached, nullptr, true) : nil;
  }

  ViewTreeRenderer& renderer_;
  Node& node_;
  const std::shared_ptr<View>& view_;
};

ViewTreeRenderer::ViewTreeRenderer() = default;

ViewTreeRenderer::~ViewTreeRenderer() {
  for (auto& [view, node] : nodes_)
    [node->view removeFromSuperview];
}

void ViewTreeRenderer::render(const std::shared_ptr<View>& root, UIView* container) {
  root->prepareForDisplay();
  ++generation_;
  [CATransaction begin];
  [CATransaction setDisableActions:YES];
  UIView* shown = renderView(root, nullptr, false);
  if (shown.superview != container) [container addSubview:shown];
  for (auto it = nodes_.begin(); it != nodes_.end();) {
    if (it->second->generation == generation_) {
      ++it;
    } else {
      [it->second->view removeFromSuperview];
      it = nodes_.erase(it);
    }
  }
  [CATransaction commit];
}

ViewTreeRenderer::Node& ViewTreeRenderer::nodeFor(const std::shared_ptr<View>& view) {
  auto& node = nodes_[view.get()];
  // An address the tree reuses for a new view is a new node.
  if (!node || node->source.lock() != view) {
    if (node) [node->view removeFromSuperview];
    node = std::make_unique<Node>();
    node->source = view;
  }
  return *node;
}

UIView* ViewTreeRenderer::renderView(const std::shared_ptr<View>& view,
                                     const std::shared_ptr<CellListView>& list, bool attached) {
  Node& node = nodeFor(view);
  node.generation = generation_;
  Builder builder(*this, node, view);
  view->accept(builder);
  applyLook(*view, node, attached);
  applyShapes(*view, node);
  bindInput(view, node, list);
  if (view->subviews().empty()) return node.view;
  auto cellList = std::dynamic_pointer_cast<CellListView>(view);
  NSMutableArray<UIView*>* children = [NSMutableArray arrayWithCapacity:view->subviews().size()];
  for (const auto& child : view->subviews())
    [children addObject:renderView(child, cellList, false)];
  arrange(children, node.view);
  return node.view;
}

void ViewTreeRenderer::applyLook(const View& view, Node& node, bool attached) {
  UIView* shown = node.view;
  Look look(view);
  // Labels and images take touches only to run a tap of their own, as in UIKit, so that a
  // text laid over a button does not swallow its taps.
  const bool passive =
      [shown isKindOfClass:[UILabel class]] || [shown isKindOfClass:[UIImageView class]];
  if (passive && !view.hasTapGesture()) look.interactive = false;
  if (node.look == look) return;
  const Rect frame = view.frame();
  if (!attached || frame.size != Size{}) {
    shown.frame = CGRectMake(frame.origin.x, frame.origin.y, frame.width(), frame.height());
  } else if (CGRectIsEmpty(shown.frame)) {
    [shown sizeToFit];
  }
  shown.backgroundColor = toUIColor(look.background);
  shown.layer.cornerRadius = look.cornerRadius;
  shown.layer.borderWidth = look.borderWidth;
  shown.layer.borderColor = look.borderColor ? toUIColor(*look.borderColor).CGColor : nil;
  shown.alpha = look.alpha;
  shown.hidden = look.hidden;
  shown.clipsToBounds = look.clips;
  shown.userInteractionEnabled = look.interactive;
  shown.tintColor = toUIColor(look.tint);
  shown.layer.shadowColor = look.shadow ? toUIColor(look.shadowColor).CGColor : nil;
  shown.layer.shadowOpacity = static_cast<float>(look.shadowOpacity);
  shown.layer.shadowOffset = CGSizeMake(look.shadowOffset.width, look.shadowOffset.height);
  shown.layer.shadowRadius = look.shadowRadius;
  node.look = look;
}

void ViewTreeRenderer::applyShapes(const View& view, Node& node) {
  std::vector<std::shared_ptr<const ShapeLayer>> shapes;
  for (const auto& layer : view.layer().sublayers()) {
    if (auto shape = std::dynamic_pointer_cast<const ShapeLayer>(layer)) shapes.push_back(shape);
  }
  if (shapes.empty() && node.shapes.empty()) return;
  if (node.shapeLayers == nil) node.shapeLayers = [NSMutableArray array];
  while (node.shapes.size() > shapes.size()) {
    [node.shapeLayers.lastObject removeFromSuperlayer];
    [node.shapeLayers removeLastObject];
    node.shapes.pop_back();
  }
  while (node.shapes.size() < shapes.size()) {
    // Under the subviews, above the view's own background, in the core's order.
    CAShapeLayer* layer = [CAShapeLayer layer];
    [node.view.layer insertSublayer:layer atIndex:static_cast<unsigned>(node.shapes.size())];
    [node.shapeLayers addObject:layer];
    node.shapes.emplace_back();
  }
  for (std::size_t i = 0; i < shapes.size(); ++i)
    showShape(shapes[i], node.shapeLayers[i], node.shapes[i]);
}

void ViewTreeRenderer::bindInput(const std::shared_ptr<View>& view, Node& node,
                                 const std::shared_ptr<CellListView>& list) {
  UIView* shown = node.view;
  auto addGesture = [&](UIGestureRecognizer* recognizer, const char* name,
                        std::function<void()> input) {
    NKAction* action = [[NKAction alloc] initWithName:name block:std::move(input)];
    if (node.actions == nil) node.actions = [NSMutableArray array];
    [node.actions addObject:action];
    [recognizer addTarget:action action:@selector(run:)];
    [shown addGestureRecognizer:recognizer];
  };
  auto cell = std::dynamic_pointer_cast<ReusableCell>(view);
  if (!node.tapBound && list && cell) {
    node.tapBound = true;
    addGesture([[UITapGestureRecognizer alloc] init], "cell tap", cellTap(list, cell));
  } else if (!node.tapBound && view->hasTapGesture() && ![shown isKindOfClass:[UIControl class]]) {
    // Controls run their tap gestures with their touch-up-inside.
    node.tapBound = true;
    addGesture([[UITapGestureRecognizer alloc] init], "tap", [weak = std::weak_ptr<View>(view)] {
      if (auto tapped = weak.lock()) tapped->tap();
    });
  }
  if (!node.swipeBound && dynamic_cast<PageViewController*>(view->viewController) != nullptr) {
    // The root view of a page view controller turns its pages on a swipe.
    node.swipeBound = true;
    std::weak_ptr<ViewController> pages = view->viewController->weak_from_this();
    UISwipeGestureRecognizer* left = [[UISwipeGestureRecognizer alloc] init];
    left.direction = UISwipeGestureRecognizerDirectionLeft;
    addGesture(left, "page swipe", pageSwipe(pages, PageViewController::Direction::forward));
    UISwipeGestureRecognizer* right = [[UISwipeGestureRecognizer alloc] init];
    right.direction = UISwipeGestureRecognizerDirectionRight;
    addGesture(right, "page swipe", pageSwipe(pages, PageViewController::Direction::reverse));
  }
  // Table rows are parted by a hairline.
  auto table = std::dynamic_pointer_cast<TableView>(list);
  if (table && cell && table->showsSeparators) {
    if (node.separator == nil) {
      node.separator = [CALayer layer];
      node.separator.backgroundColor = UIColor.separatorColor.CGColor;
      [shown.layer addSublayer:node.separator];
    }
    const CGFloat scale = shown.traitCollection.displayScale;
    const CGFloat hairline = scale > 0 ? 1 / scale : 0.5;
    node.separator.frame =
        CGRectMake(0, shown.bounds.size.height - hairline, shown.bounds.size.width, hairline);
  } else if (node.separator != nil) {
    [node.separator removeFromSuperlayer];
    node.separator = nil;
  }
}

void ViewTreeRenderer::arrange(NSArray<UIView*>* children, UIView* parent) {
  for (UIView* child in children) {
    if (child.superview != parent) [parent addSubview:child];
  }
  // UIKit's own views inside a control or scroll view stay where they are; the core's keep
  // the core's order above them.
  NSSet<UIView*>* wanted = [NSSet setWithArray:children];
  NSMutableArray<UIView*>* order = [NSMutableArray arrayWithCapacity:children.count];
  for (UIView* subview in parent.subviews) {
    if ([wanted containsObject:subview]) [order addObject:subview];
  }
  if ([order isEqualToArray:children]) return;
  for (UIView* child in children)
    [parent bringSubviewToFront:child];
}

}  // namespace nutrition::ios
