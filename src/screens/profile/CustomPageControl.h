#pragma once
// The editor's row of page dots: one round dot per page, tagged with its index; the dot of
// the page shown is marked.

#include <memory>

#include "ui/UIContext.h"
#include "views/StackView.h"

namespace nutrition {

// A dot of the row, tagged with its page's index.
class PageDotView : public View {
 public:
  explicit PageDotView(int dotTag) : tag(dotTag) {}
  [[nodiscard]] std::string_view kind() const override { return "PageDotView"; }
  int tag;
};

class CustomPageControl : public View {
 public:
  explicit CustomPageControl(const UIContext& ui);

  [[nodiscard]] std::string_view kind() const override { return "CustomPageControl"; }

  std::shared_ptr<StackView> contentStackView;
  std::shared_ptr<View> contentView;
  int numberOfPages = 0;

  void removeDots();
  // A round, clipped dot tagged `tag`, unmarked.
  void addDot(int tag);
  // Marks the dot tagged `index` and unmarks the others.
  void changePageSelection(int index);
  // The tag of the marked dot; -1 when none is.
  [[nodiscard]] int selectedPage() const;

 private:
  const UIContext& ui_;
};

}  // namespace nutrition
