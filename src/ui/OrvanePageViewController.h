#pragma once
// The module's page controller: a page view controller that tells a size delegate when a page
// asks for another content size, so the screen around it can follow.

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

  // A page's preferred content size changed.
  void preferredContentSizeDidChange(ViewController& page) {
    if (sizeDelegate != nullptr) sizeDelegate->pageContentSizeDidChange(page);
  }
};

}  // namespace nutrition
