#pragma once
// Keeps a UIKit view for every view of a core view tree and brings them in step with it: the
// core's frames, look, texts and images, the arcs of its shape layers, its order of subviews.
// A render first runs the tree's layout and drawing hooks, as a platform does before showing
// it, then visits every view with the most specific kind the toolkit knows and updates (or,
// the first time, makes) its UIKit view. UIKit views whose core view left the tree go.
//
//   ViewTreeRenderer renderer;
//   renderer.render(screen->viewPointer(), canvas);  // again whenever the tree may have changed
//
// Member input on those views goes straight back to the core views (IosViews.h); the next
// render shows what the core made of it. Main thread only.

#import <UIKit/UIKit.h>

#include <memory>
#include <unordered_map>

#include "views/View.h"

namespace nutrition {
class CellListView;
}

namespace nutrition::ios {

class ViewTreeRenderer {
 public:
  ViewTreeRenderer();
  ~ViewTreeRenderer();
  ViewTreeRenderer(const ViewTreeRenderer&) = delete;
  ViewTreeRenderer& operator=(const ViewTreeRenderer&) = delete;

  // Shows the tree under `root` as a subview of `container`, at the root's frame.
  void render(const std::shared_ptr<View>& root, UIView* _Nonnull container);

 private:
  struct Node;
  class Builder;

  // The UIKit view of `view` and its subtree, up to date. `list` is the collection or table
  // whose cell `view` is, if any; an attached view (a field's input view, accessory or left
  // view) with no size of its own takes the size UIKit gives it.
  UIView* _Nonnull renderView(const std::shared_ptr<View>& view,
                              const std::shared_ptr<CellListView>& list, bool attached);
  Node& nodeFor(const std::shared_ptr<View>& view);
  static void applyLook(const View& view, Node& node, bool attached);
  static void applyShapes(const View& view, Node& node);
  static void bindInput(const std::shared_ptr<View>& view, Node& node,
                        const std::shared_ptr<CellListView>& list);
  static void arrange(NSArray<UIView*>* _Nonnull children, UIView* _Nonnull parent);

  std::unordered_map<const View*, std::unique_ptr<Node>> nodes_;
  unsigned generation_ = 0;
};

}  // namespace nutrition::ios
