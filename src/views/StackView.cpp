#include "views/StackView.h"

namespace nutrition {

void StackView::layoutSubviews() {
  std::vector<View*> shown;
  for (const auto& view : arrangedSubviews()) {
    if (!view->isHidden) shown.push_back(view.get());
  }
  const bool vertical = axis == Axis::vertical;
  const double length = vertical ? frame().height() : frame().width();
  const double across = vertical ? frame().width() : frame().height();
  const double equalLength = shown.empty()
                                 ? 0
                                 : (length - spacing * static_cast<double>(shown.size() - 1)) /
                                       static_cast<double>(shown.size());
  double position = 0;
  for (View* view : shown) {
    Size size = view->frame().size;
    double& along = vertical ? size.height : size.width;
    double& cross = vertical ? size.width : size.height;
    if (distribution == StackDistribution::fillEqually) along = equalLength;
    if (alignment == StackAlignment::fill || cross == 0) cross = across;
    double offset = 0;
    if (alignment == StackAlignment::center) offset = (across - cross) / 2;
    if (alignment == StackAlignment::trailing) offset = across - cross;
    Point origin = vertical ? Point{offset, position} : Point{position, offset};
    view->setFrame({origin, size});
    position += along + spacing;
  }
}

}  // namespace nutrition
