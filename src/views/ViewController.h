#pragma once
// A screen: a root view loaded on first use, the lifecycle the product's screens hook into
// (`viewDidLoad`, `viewWillAppear`, ...), modal presentation with completion and style,
// containment (navigation and page controllers) and a navigation item.
//
// Presenting makes the presented controller owned by its presenter until it is dismissed;
// the window's presenter (a platform) is told of every change. A dismissed controller lives
// on until the main queue's next turn, so the action that dismissed it may finish safely.

#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "views/Toolbar.h"
#include "views/View.h"

namespace nutrition {

class NavigationController;
class Window;

enum class ModalPresentationStyle {
  automatic,
  fullScreen,
  overFullScreen,
  overCurrentContext,
  pageSheet
};

struct NavigationItem {
  std::string title;
  std::optional<BarButtonItem> leftBarButtonItem;
  std::optional<BarButtonItem> rightBarButtonItem;
  // What the screen pushed next shows to come back here; a plain back arrow when absent.
  std::optional<BarButtonItem> backBarButtonItem;
  bool hidesBackButton = false;
};

class ViewController : public std::enable_shared_from_this<ViewController> {
 public:
  ViewController() = default;
  virtual ~ViewController();
  ViewController(const ViewController&) = delete;
  ViewController& operator=(const ViewController&) = delete;

  // The product's name of the screen type, for renderers and snapshots.
  [[nodiscard]] virtual std::string_view kind() const { return "ViewController"; }

  // The root view, loaded (and `viewDidLoad` run) on first access.
  View& view();
  [[nodiscard]] std::shared_ptr<View> viewPointer();
  [[nodiscard]] bool isViewLoaded() const { return view_ != nullptr; }
  void loadViewIfNeeded() { (void)view(); }

  std::string title;
  NavigationItem navigationItem;
  ModalPresentationStyle modalPresentationStyle = ModalPresentationStyle::automatic;

  // Presents `controller` on this one, or, for a child of a container, on the outermost
  // container. A controller already presenting another, or a controller already presented
  // elsewhere, is refused (logged; no completion).
  void present(const std::shared_ptr<ViewController>& controller, bool animated,
               const std::function<void()>& completion = nullptr);
  // Dismisses what this controller presents or, when it presents nothing, the presented
  // screen it belongs to (itself, or the container it is a child of); `completion` runs once
  // the dismissal is done. Nothing happens, and no completion runs, when there is neither.
  void dismiss(bool animated, const std::function<void()>& completion = nullptr);
  [[nodiscard]] ViewController* presentedViewController() const { return presented_.get(); }
  // The screen that presented this one or the container this one is a child of.
  [[nodiscard]] ViewController* presentingViewController() const;
  // Whether the last presentation of this controller was animated.
  [[nodiscard]] bool wasPresentedAnimated() const { return presentedAnimated_; }
  // Between viewDidAppear and viewWillDisappear.
  [[nodiscard]] bool isVisible() const { return visible_; }

  [[nodiscard]] ViewController* parent() const { return parent_; }
  [[nodiscard]] const std::vector<std::shared_ptr<ViewController>>& children() const {
    return children_;
  }
  [[nodiscard]] NavigationController* navigationController() const;
  // The window this controller is shown in, through its parents and presenters.
  [[nodiscard]] Window* window() const;

  // Lifecycle hooks; the toolkit calls them, screens override them.
  virtual void viewDidLoad() {}
  virtual void viewWillAppear(bool /*animated*/) {}
  virtual void viewDidAppear(bool /*animated*/) {}
  virtual void viewWillDisappear(bool /*animated*/) {}
  virtual void viewDidDisappear(bool /*animated*/) {}

 protected:
  // Makes the root view; the default is a plain view the size of a phone's screen.
  virtual void loadView();
  void setView(std::shared_ptr<View> view);
  void addChild(std::shared_ptr<ViewController> child);
  void removeChild(ViewController& child);
  // The children that appear with this controller: all of them, unless a container shows one.
  [[nodiscard]] virtual std::vector<ViewController*> visibleChildren() const;

  // Lifecycle delivery: this controller, then its visible children.
  void beginAppearance(bool appearing, bool animated);
  void endAppearance(bool appearing, bool animated);

 private:
  friend class Window;
  friend class NavigationController;
  friend class PageViewController;
  void dismissPresented(bool animated, const std::function<void()>& completion);
  // Keeps a dismissed controller alive until the main queue's next turn.
  void releaseLater(std::shared_ptr<ViewController> controller) const;

  std::shared_ptr<View> view_;
  ViewController* parent_ = nullptr;
  std::vector<std::shared_ptr<ViewController>> children_;
  std::shared_ptr<ViewController> presented_;
  ViewController* presenting_ = nullptr;
  Window* window_ = nullptr;
  bool presentedAnimated_ = false;
  bool hidPresenter_ = false;
  bool visible_ = false;
};

}  // namespace nutrition
