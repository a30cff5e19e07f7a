#pragma once
// The key window: a root screen, the chain of screens presented on it, the platform presenter
// that mirrors them and the main queue that outlives dismissed screens. `Application` holds
// the key window, if the host has one.

#include <memory>

#include "platform/MainQueue.h"
#include "views/Presenter.h"
#include "views/ViewController.h"

namespace nutrition {

class Window {
 public:
  explicit Window(std::shared_ptr<Presenter> presenter = nullptr,
                  std::weak_ptr<MainQueue> mainQueue = {})
      : presenter_(std::move(presenter)), mainQueue_(std::move(mainQueue)) {}
  ~Window();
  Window(const Window&) = delete;
  Window& operator=(const Window&) = delete;

  // Shows `root` (loaded, appeared) in place of the current root.
  void setRootViewController(std::shared_ptr<ViewController> root);
  [[nodiscard]] ViewController* rootViewController() const { return root_.get(); }
  // The root, then each presented screen to the last: where new screens go.
  [[nodiscard]] ViewController* topViewController() const;

  [[nodiscard]] Presenter* presenter() const { return presenter_.get(); }
  [[nodiscard]] const std::weak_ptr<MainQueue>& mainQueue() const { return mainQueue_; }

 private:
  std::shared_ptr<Presenter> presenter_;
  std::weak_ptr<MainQueue> mainQueue_;
  std::shared_ptr<ViewController> root_;
};

class Application {
 public:
  [[nodiscard]] Window* keyWindow() const { return keyWindow_.get(); }
  void setKeyWindow(std::shared_ptr<Window> window) { keyWindow_ = std::move(window); }
  // The key window's top screen; null without a key window or a root.
  [[nodiscard]] ViewController* topViewController() const {
    return keyWindow_ ? keyWindow_->topViewController() : nullptr;
  }

 private:
  std::shared_ptr<Window> keyWindow_;
};

}  // namespace nutrition
