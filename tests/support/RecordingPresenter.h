#pragma once
// A presenter that writes down what the core shows, one line an event:
// "present AyunoViewController on ViewController (animated)", "dismiss ...", "push ...".

#include <string>
#include <vector>

#include "views/NavigationController.h"
#include "views/Presenter.h"
#include "views/ViewController.h"

namespace nutrition::test {

class RecordingPresenter final : public Presenter {
 public:
  std::vector<std::string> events;

  void didSetRoot(Window&, ViewController& root) override {
    events.push_back("root " + std::string(root.kind()));
  }
  void didPresent(ViewController& presenting, ViewController& presented, bool animated) override {
    events.push_back("present " + std::string(presented.kind()) + " on " +
                     std::string(presenting.kind()) + suffix(animated));
  }
  void didDismiss(ViewController& presenting, ViewController& dismissed, bool animated) override {
    events.push_back("dismiss " + std::string(dismissed.kind()) + " from " +
                     std::string(presenting.kind()) + suffix(animated));
  }
  void didPush(NavigationController&, ViewController& pushed, bool animated) override {
    events.push_back("push " + std::string(pushed.kind()) + suffix(animated));
  }
  void didPop(NavigationController&, ViewController& popped, bool animated) override {
    events.push_back("pop " + std::string(popped.kind()) + suffix(animated));
  }

 private:
  static std::string suffix(bool animated) { return animated ? " (animated)" : ""; }
};

}  // namespace nutrition::test
