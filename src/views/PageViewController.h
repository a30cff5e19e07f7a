#pragma once
// A page view controller: one page (a screen) shown at a time; a member's swipe asks the data
// source for the page before or after, unless swiping is turned off.

#include <functional>
#include <memory>

#include "views/ViewController.h"

namespace nutrition {

class PageViewController;

class PageViewControllerDataSource {
 public:
  virtual std::shared_ptr<ViewController> viewControllerBefore(PageViewController& pages,
                                                               ViewController& current) = 0;
  virtual std::shared_ptr<ViewController> viewControllerAfter(PageViewController& pages,
                                                              ViewController& current) = 0;

 protected:
  ~PageViewControllerDataSource() = default;
};

class PageViewController : public ViewController {
 public:
  enum class Direction { forward, reverse };

  [[nodiscard]] std::string_view kind() const override { return "PageViewController"; }

  // Not owned: the screen that owns the pages is their source.
  PageViewControllerDataSource* dataSource = nullptr;
  bool isScrollEnabled = true;
  // Told after a swipe turned the page.
  std::function<void(PageViewController&)> didFinishAnimating;

  void setViewController(std::shared_ptr<ViewController> page, Direction direction, bool animated,
                         const std::function<void()>& completion = nullptr);
  [[nodiscard]] ViewController* currentViewController() const {
    return children().empty() ? nullptr : children().front().get();
  }
  [[nodiscard]] Direction lastDirection() const { return lastDirection_; }
  // A member swipes towards `direction`; false when swiping is off or there is no such page.
  bool swipe(Direction direction);

 protected:
  void loadView() override;

 private:
  Direction lastDirection_ = Direction::forward;
};

}  // namespace nutrition
