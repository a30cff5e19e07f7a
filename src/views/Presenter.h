#pragma once
// How a platform mirrors the core's presentation graph: the core decides which screen is
// presented on which, pushed or popped, and tells the key window's presenter; the platform
// shows it (UIKit presentations on iOS, the preview page on Linux). The test fake records it.

namespace nutrition {

class ViewController;
class NavigationController;
class Window;

class Presenter {
 public:
  virtual ~Presenter() = default;
  virtual void didSetRoot(Window& window, ViewController& root) = 0;
  virtual void didPresent(ViewController& presenting, ViewController& presented, bool animated) = 0;
  virtual void didDismiss(ViewController& presenting, ViewController& dismissed, bool animated) = 0;
  virtual void didPush(NavigationController& navigation, ViewController& pushed, bool animated) = 0;
  virtual void didPop(NavigationController& navigation, ViewController& popped, bool animated) = 0;
};

}  // namespace nutrition
