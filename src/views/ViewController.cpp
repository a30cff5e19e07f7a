#include "views/ViewController.h"

#include <algorithm>

#include "base/Log.h"
#include "views/NavigationController.h"
#include "views/SystemColors.h"
#include "views/Window.h"

namespace nutrition {

ViewController::~ViewController() {
  for (auto& child : children_)
    child->parent_ = nullptr;
  if (presented_) presented_->presenting_ = nullptr;
  if (view_ && view_->viewController == this) view_->viewController = nullptr;
}

View& ViewController::view() {
  if (!view_) {
    loadView();
    if (!view_) setView(std::make_shared<View>());
    viewDidLoad();
  }
  return *view_;
}

std::shared_ptr<View> ViewController::viewPointer() {
  loadViewIfNeeded();
  return view_;
}

void ViewController::loadView() {
  auto root = std::make_shared<View>(Rect{{}, kPhoneScreen});
  root->backgroundColor = systemColors::systemBackground;
  setView(std::move(root));
}

void ViewController::setView(std::shared_ptr<View> view) {
  if (view_ && view_->viewController == this) view_->viewController = nullptr;
  view_ = std::move(view);
  if (view_) view_->viewController = this;
}

void ViewController::addChild(std::shared_ptr<ViewController> child) {
  if (!child || child->parent_ == this) return;
  if (child->parent_ != nullptr) child->parent_->removeChild(*child);
  child->parent_ = this;
  children_.push_back(std::move(child));
}

void ViewController::removeChild(ViewController& child) {
  auto found = std::find_if(children_.begin(), children_.end(),
                            [&](const auto& entry) { return entry.get() == &child; });
  if (found == children_.end()) return;
  child.parent_ = nullptr;
  releaseLater(*found);
  children_.erase(found);
}

std::vector<ViewController*> ViewController::visibleChildren() const {
  std::vector<ViewController*> shown;
  for (const auto& child : children_)
    shown.push_back(child.get());
  return shown;
}

void ViewController::beginAppearance(bool appearing, bool animated) {
  loadViewIfNeeded();
  if (appearing) {
    viewWillAppear(animated);
  } else {
    viewWillDisappear(animated);
    visible_ = false;
  }
  for (ViewController* child : visibleChildren())
    child->beginAppearance(appearing, animated);
}

void ViewController::endAppearance(bool appearing, bool animated) {
  if (appearing) {
    visible_ = true;
    viewDidAppear(animated);
  } else {
    viewDidDisappear(animated);
  }
  for (ViewController* child : visibleChildren())
    child->endAppearance(appearing, animated);
}

NavigationController* ViewController::navigationController() const {
  for (ViewController* up = parent_; up != nullptr; up = up->parent_) {
    if (auto* navigation = dynamic_cast<NavigationController*>(up)) return navigation;
  }
  return nullptr;
}

Window* ViewController::window() const {
  const ViewController* controller = this;
  while (true) {
    if (controller->window_ != nullptr) return controller->window_;
    if (controller->parent_ != nullptr) {
      controller = controller->parent_;
    } else if (controller->presenting_ != nullptr) {
      controller = controller->presenting_;
    } else {
      return nullptr;
    }
  }
}

void ViewController::present(const std::shared_ptr<ViewController>& controller, bool animated,
                             const std::function<void()>& completion) {
  if (!controller || controller.get() == this) return;
  // A child (a navigation or page controller's screen) presents through its outermost
  // container, which the presentation then covers.
  if (parent_ != nullptr) {
    ViewController* container = parent_;
    while (container->parent_ != nullptr)
      container = container->parent_;
    container->present(controller, animated, completion);
    return;
  }
  if (presented_) {
    log(LogLevel::warning, "A screen is already presented on " + std::string(kind()) + "; " +
                               std::string(controller->kind()) + " is not shown");
    return;
  }
  if (controller->presenting_ != nullptr || controller->parent_ != nullptr) {
    log(LogLevel::warning, std::string(controller->kind()) + " is already shown elsewhere");
    return;
  }
  // A full-screen presentation hides its presenter, which appears again at the dismissal.
  const bool hidesPresenter =
      controller->modalPresentationStyle == ModalPresentationStyle::fullScreen && visible_;
  auto keep = shared_from_this();
  presented_ = controller;
  controller->presenting_ = this;
  controller->presentedAnimated_ = animated;
  controller->hidPresenter_ = hidesPresenter;
  if (hidesPresenter) beginAppearance(false, animated);
  controller->beginAppearance(true, animated);
  if (Window* shownIn = window(); shownIn != nullptr && shownIn->presenter() != nullptr) {
    shownIn->presenter()->didPresent(*this, *controller, animated);
  }
  controller->endAppearance(true, animated);
  if (hidesPresenter) endAppearance(false, animated);
  if (completion) completion();
}

ViewController* ViewController::presentingViewController() const {
  for (const ViewController* up = this; up != nullptr; up = up->parent_) {
    if (up->presenting_ != nullptr) return up->presenting_;
  }
  return nullptr;
}

void ViewController::dismiss(bool animated, const std::function<void()>& completion) {
  if (presented_) {
    dismissPresented(animated, completion);
  } else if (ViewController* presenter = presentingViewController()) {
    presenter->dismissPresented(animated, completion);
  }
}

void ViewController::dismissPresented(bool animated, const std::function<void()>& completion) {
  auto dismissed = presented_;
  if (!dismissed) return;
  auto keep = shared_from_this();
  // Whatever the dismissed screen presents goes with it, quietly, from the top down.
  if (dismissed->presented_) dismissed->dismissPresented(false, nullptr);
  const bool coveredPresenter = dismissed->hidPresenter_;
  Window* shownIn = window();
  dismissed->beginAppearance(false, animated);
  if (coveredPresenter) beginAppearance(true, animated);
  presented_.reset();
  dismissed->presenting_ = nullptr;
  if (shownIn != nullptr && shownIn->presenter() != nullptr) {
    shownIn->presenter()->didDismiss(*this, *dismissed, animated);
  }
  dismissed->endAppearance(false, animated);
  if (coveredPresenter) endAppearance(true, animated);
  releaseLater(dismissed);
  if (completion) completion();
}

void ViewController::releaseLater(std::shared_ptr<ViewController> controller) const {
  Window* shownIn = window();
  if (shownIn == nullptr) return;
  postIfAlive(shownIn->mainQueue(), [controller = std::move(controller)] {});
}

}  // namespace nutrition
