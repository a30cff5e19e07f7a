#pragma once
// The page controller of the module's paged screens. It tells its size delegate when a page
// asks for another content size.

#include "views/PageViewController.h"

namespace nutrition {

class OrvanePageDelegate {
 public:
  virtual void pageContentSizeDidChange(ViewController& page) = 0;

 protected:
  ~OrvanePageDelegate() = default;
};

class OrvanePageViewController : public PageViewController {
 public:
  [[nodiscard]] std::string_view kind() const override { return "OrvanePageViewController"; }

  // Not owned: the screen that holds the controller.
  OrvanePageDelegate* sizeDelegate = nullptr;

  void preferredContentSizeDidChange(ViewController& child) {
    if (sizeDelegate != nullptr) sizeDelegate->pageContentSizeDidChange(child);
  }
};

}  // namespace nutrition
