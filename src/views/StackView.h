#pragma once
// A stack: its arranged subviews laid out one after another along an axis, with spacing;
// hidden views take no room.

#include <memory>
#include <vector>

#include "views/View.h"
#include "views/ViewVisitor.h"

namespace nutrition {

enum class StackAlignment { fill, leading, center, trailing };
enum class StackDistribution { fill, fillEqually, equalSpacing };

class StackView : public View {
 public:
  explicit StackView(Axis stackAxis = Axis::vertical) : axis(stackAxis) {}

  [[nodiscard]] std::string_view kind() const override { return "StackView"; }
  void accept(ViewVisitor& visitor) const override { visitor.visit(*this); }

  Axis axis;
  double spacing = 0;
  StackAlignment alignment = StackAlignment::fill;
  StackDistribution distribution = StackDistribution::fill;

  void addArrangedSubview(std::shared_ptr<View> view) { addSubview(std::move(view)); }
  // Every subview of a stack is arranged.
  [[nodiscard]] const std::vector<std::shared_ptr<View>>& arrangedSubviews() const {
    return subviews();
  }

  // Places the visible arranged views along the axis from their own lengths; across the axis
  // they fill the stack when the alignment is `fill`.
  void layoutSubviews() override;
};

}  // namespace nutrition
