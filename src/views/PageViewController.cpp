#include "views/PageViewController.h"

namespace nutrition {

void PageViewController::loadView() {
  setView(std::make_shared<View>(Rect{{}, kPhoneScreen}));
  if (ViewController* page = currentViewController()) view().addSubview(page->viewPointer());
}

void PageViewController::setViewController(std::shared_ptr<ViewController> page,
                                           Direction direction, bool animated,
                                           const std::function<void()>& completion) {
  if (!page) return;
  auto keep = shared_from_this();
  const bool shown = isVisible();
  std::shared_ptr<ViewController> old = children().empty() ? nullptr : children().front();
  if (shown && old) old->beginAppearance(false, animated);
  if (old) {
    if (old->isViewLoaded()) old->view().removeFromSuperview();
    removeChild(*old);
  }
  auto& shownPage = *page;
  addChild(std::move(page));
  lastDirection_ = direction;
  if (isViewLoaded()) view().addSubview(shownPage.viewPointer());
  if (shown) {
    shownPage.beginAppearance(true, animated);
    if (old) old->endAppearance(false, animated);
    shownPage.endAppearance(true, animated);
  }
  if (completion) completion();
}

bool PageViewController::swipe(Direction direction) {
  ViewController* current = currentViewController();
  if (!isScrollEnabled || dataSource == nullptr || current == nullptr) return false;
  auto next = direction == Direction::forward ? dataSource->viewControllerAfter(*this, *current)
                                              : dataSource->viewControllerBefore(*this, *current);
  if (!next) return false;
  setViewController(std::move(next), direction, true);
  if (didFinishAnimating) didFinishAnimating(*this);
  return true;
}

}  // namespace nutrition
