#include "screens/profile/CustomPageControl.h"

#include "views/SystemColors.h"

namespace nutrition {
namespace {
constexpr double kDot = 10;
}  // namespace

CustomPageControl::CustomPageControl(const UIContext& ui) : ui_(ui) {
  setFrame({{}, {390, 20}});
  contentView = addOutlet<View>(*this, "contentView");
  contentView->setFrame(bounds());
  contentStackView = addOutlet<StackView>(*contentView, "contentStackView", Axis::horizontal);
  contentStackView->spacing = 8;
  contentStackView->alignment = StackAlignment::center;
}

void CustomPageControl::removeDots() {
  while (!contentStackView->subviews().empty())
    contentStackView->subviews().back()->removeFromSuperview();
  numberOfPages = 0;
}

void CustomPageControl::addDot(int tag) {
  auto dot = makeView<PageDotView>(tag);
  dot->setSize({kDot, kDot});
  dot->cornerRadius = kDot / 2;
  dot->clipsToBounds = true;
  dot->backgroundColor = systemColors::tertiaryLabel;
  contentStackView->addArrangedSubview(dot);
  numberOfPages = static_cast<int>(contentStackView->subviews().size());
  const double width = numberOfPages * kDot + (numberOfPages - 1) * 8.0;
  contentStackView->setFrame(
      {{(frame().width() - width) / 2, (frame().height() - kDot) / 2}, {width, kDot}});
}

void CustomPageControl::changePageSelection(int index) {
  for (const auto& view : contentStackView->arrangedSubviews()) {
    auto* dot = dynamic_cast<PageDotView*>(view.get());
    if (dot == nullptr) continue;
    dot->backgroundColor =
        dot->tag == index ? ui_.config.primaryColor : systemColors::tertiaryLabel;
  }
}

int CustomPageControl::selectedPage() const {
  for (const auto& view : contentStackView->arrangedSubviews()) {
    auto* dot = dynamic_cast<PageDotView*>(view.get());
    if (dot != nullptr && dot->backgroundColor == ui_.config.primaryColor) return dot->tag;
  }
  return -1;
}

}  // namespace nutrition
