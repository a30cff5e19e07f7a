#pragma once
// A scroll view: content larger than its frame, an offset into it, and a delegate callback on
// every scroll (a member's drag, or the program's).

#include <functional>

#include "views/View.h"
#include "views/ViewVisitor.h"

namespace nutrition {

class ScrollView : public View {
 public:
  [[nodiscard]] std::string_view kind() const override { return "ScrollView"; }
  void accept(ViewVisitor& visitor) const override { visitor.visit(*this); }

  Size contentSize;
  EdgeInsets contentInset;
  bool isScrollEnabled = true;
  bool isPagingEnabled = false;
  bool showsVerticalScrollIndicator = true;
  bool showsHorizontalScrollIndicator = true;
  // The delegate's scrollViewDidScroll.
  std::function<void(ScrollView&)> onScroll;

  [[nodiscard]] Point contentOffset() const { return contentOffset_; }
  void setContentOffset(Point offset, bool animated = false) {
    contentOffset_ = offset;
    lastAnimationDuration = animated ? 0.3 : 0;
    if (onScroll) onScroll(*this);
  }

 private:
  Point contentOffset_;
};

}  // namespace nutrition
