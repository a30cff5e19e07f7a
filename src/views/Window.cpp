#include "views/Window.h"

namespace nutrition {

Window::~Window() {
  if (root_) root_->window_ = nullptr;
}

void Window::setRootViewController(std::shared_ptr<ViewController> root) {
  if (root_) {
    root_->beginAppearance(false, false);
    root_->endAppearance(false, false);
    root_->window_ = nullptr;
  }
  root_ = std::move(root);
  if (!root_) return;
  root_->window_ = this;
  root_->beginAppearance(true, false);
  if (presenter_) presenter_->didSetRoot(*this, *root_);
  root_->endAppearance(true, false);
}

ViewController* Window::topViewController() const {
  ViewController* top = root_.get();
  while (top != nullptr && top->presentedViewController() != nullptr) {
    top = top->presentedViewController();
  }
  return top;
}

}  // namespace nutrition
