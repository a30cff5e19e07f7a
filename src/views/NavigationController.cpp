#include "views/NavigationController.h"

#include "views/Window.h"

namespace nutrition {

NavigationController::NavigationController(std::shared_ptr<ViewController> root) {
  if (root) addChild(std::move(root));
}

void NavigationController::loadView() {
  auto container = std::make_shared<View>(Rect{{}, kPhoneScreen});
  setView(std::move(container));
  showTop();
}

std::vector<ViewController*> NavigationController::visibleChildren() const {
  if (ViewController* top = topViewController()) return {top};
  return {};
}

void NavigationController::showTop() {
  if (!isViewLoaded()) return;
  View& container = view();
  while (!container.subviews().empty())
    container.subviews().back()->removeFromSuperview();
  if (ViewController* top = topViewController()) container.addSubview(top->viewPointer());
}

void NavigationController::pushViewController(std::shared_ptr<ViewController> controller,
                                              bool animated) {
  if (!controller) return;
  ViewController* previous = topViewController();
  const bool shown = isVisible();
  if (shown && previous != nullptr) previous->beginAppearance(false, animated);
  auto& pushed = *controller;
  addChild(std::move(controller));
  if (shown) pushed.beginAppearance(true, animated);
  showTop();
  if (Window* shownIn = window(); shownIn != nullptr && shownIn->presenter() != nullptr) {
    shownIn->presenter()->didPush(*this, pushed, animated);
  }
  if (shown && previous != nullptr) previous->endAppearance(false, animated);
  if (shown) pushed.endAppearance(true, animated);
}

std::shared_ptr<ViewController> NavigationController::popViewController(bool animated) {
  if (children().size() < 2) return nullptr;
  auto popped = children().back();
  ViewController* below = children()[children().size() - 2].get();
  const bool shown = isVisible();
  if (shown) {
    popped->beginAppearance(false, animated);
    below->beginAppearance(true, animated);
  }
  removeChild(*popped);
  showTop();
  if (Window* shownIn = window(); shownIn != nullptr && shownIn->presenter() != nullptr) {
    shownIn->presenter()->didPop(*this, *popped, animated);
  }
  if (shown) {
    popped->endAppearance(false, animated);
    below->endAppearance(true, animated);
  }
  return popped;
}

}  // namespace nutrition
