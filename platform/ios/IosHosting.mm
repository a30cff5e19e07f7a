// The UIKit view controller of one core screen (IosHosting.h).

#include "IosHosting.h"

#import <QuartzCore/QuartzCore.h>

#include <optional>
#include <string>

#include "IosRenderer.h"
#include "IosViews.h"
#include "Marshal+Private.h"
#include "views/NavigationController.h"
#include "views/Window.h"

namespace nutrition::ios {
namespace {

UIModalPresentationStyle toPresentationStyle(ModalPresentationStyle style) {
  switch (style) {
    case ModalPresentationStyle::automatic:
      return UIModalPresentationAutomatic;
    case ModalPresentationStyle::fullScreen:
      return UIModalPresentationFullScreen;
    case ModalPresentationStyle::overFullScreen:
      return UIModalPresentationOverFullScreen;
    case ModalPresentationStyle::overCurrentContext:
      return UIModalPresentationOverCurrentContext;
    case ModalPresentationStyle::pageSheet:
      return UIModalPresentationPageSheet;
  }
  return UIModalPresentationAutomatic;
}

std::string colorKey(const std::optional<Color>& color) {
  if (!color) return "-;";
  return std::to_string(color->red) + "," + std::to_string(color->green) + "," +
         std::to_string(color->blue) + "," + std::to_string(color->alpha) + ";";
}

enum class BarSlot { left, right };

// The action of the bar item in `slot` of `screen`'s navigation item, read when tapped, so
// that it is always the screen's current one.
NKAction* barItemAction(const std::shared_ptr<ViewController>& screen, BarSlot slot) {
  std::weak_ptr<ViewController> weak = screen;
  return [[NKAction alloc]
      initWithName:"bar button"
             block:[weak, slot] {
               auto owner = weak.lock();
               if (!owner) return;
               const auto& item = slot == BarSlot::left ? owner->navigationItem.leftBarButtonItem
                                                        : owner->navigationItem.rightBarButtonItem;
               if (!item || !item->action) return;
               auto action = item->action;  // may replace the item
               action();
             }];
}

std::string itemKey(const ViewController& screen) {
  const NavigationItem& item = screen.navigationItem;
  std::string key = item.title + "|" + screen.title + "|" + (item.hidesBackButton ? "h" : "-");
  if (item.leftBarButtonItem) key += "L" + barItemSignature(*item.leftBarButtonItem);
  if (item.rightBarButtonItem) key += "R" + barItemSignature(*item.rightBarButtonItem);
  return key;
}

// Gives `target` the title and bar items of `screen`; `back`, when not nil, stands in for the
// left item the screen does not set. Returns the targets of the items' actions.
NSArray<NKAction*>* showNavigationItem(const std::shared_ptr<ViewController>& screen,
                                       UINavigationItem* target, UIBarButtonItem* _Nullable back) {
  const NavigationItem& item = screen->navigationItem;
  target.title = toNSString(item.title.empty() ? screen->title : item.title);
  target.hidesBackButton = item.hidesBackButton;
  NSMutableArray<NKAction*>* actions = [NSMutableArray array];
  auto barItem = [&](const std::optional<BarButtonItem>& shown, BarSlot slot) -> UIBarButtonItem* {
    if (!shown) return nil;
    NKAction* action = barItemAction(screen, slot);
    [actions addObject:action];
    return toBarButtonItem(*shown, action, @selector(run:));
  };
  UIBarButtonItem* left = barItem(item.leftBarButtonItem, BarSlot::left);
  target.leftBarButtonItem = left != nil ? left : back;
  target.rightBarButtonItem = barItem(item.rightBarButtonItem, BarSlot::right);
  return actions;
}

}  // namespace
}  // namespace nutrition::ios

using nutrition::ios::forwardInput;
using nutrition::ios::toNSString;
using nutrition::ios::toUIColor;

@implementation NKHostingViewController {
  std::shared_ptr<nutrition::ViewController> _screen;
  std::weak_ptr<nutrition::ViewController> _presentingScreen;
  BOOL _mirrors;
  std::weak_ptr<nutrition::MainQueue> _mainQueue;
  // A handed-over screen's window, made when UIKit first shows it.
  std::shared_ptr<nutrition::Window> _window;
  std::unique_ptr<nutrition::ios::ViewTreeRenderer> _renderer;
  UIView* _canvas;
  UINavigationBar* _bar;
  std::string _barKey;
  std::string _itemKey;
  NSArray<NKAction*>* _barActions;
  CATransitionSubtype _slide;
}

- (instancetype)initWithScreen:(std::shared_ptr<nutrition::ViewController>)screen {
  if ((self = [super initWithNibName:nil bundle:nil])) {
    _screen = std::move(screen);
    _renderer = std::make_unique<nutrition::ios::ViewTreeRenderer>();
    self.modalPresentationStyle =
        nutrition::ios::toPresentationStyle(_screen->modalPresentationStyle);
    // The core's screens are drawn in their light colours.
    self.overrideUserInterfaceStyle = UIUserInterfaceStyleLight;
    nutrition::ios::registerHosting(self);
  }
  return self;
}

- (instancetype)initWithHandedOverScreen:(std::shared_ptr<nutrition::ViewController>)screen
                               mainQueue:(std::weak_ptr<nutrition::MainQueue>)mainQueue {
  if ((self = [self initWithScreen:std::move(screen)])) _mainQueue = std::move(mainQueue);
  return self;
}

- (instancetype)initWithPresentedScreen:(std::shared_ptr<nutrition::ViewController>)screen
                            presentedBy:(std::weak_ptr<nutrition::ViewController>)presenting {
  if ((self = [self initWithScreen:std::move(screen)])) {
    _presentingScreen = std::move(presenting);
    _mirrors = YES;
    // A member's swipe that closes the sheet is told to the core.
    self.presentationController.delegate = self;
  }
  return self;
}

- (std::shared_ptr<nutrition::ViewController>)screen {
  return _screen;
}

- (std::shared_ptr<nutrition::ViewController>)presentingScreen {
  return _presentingScreen.lock();
}

- (BOOL)mirrorsPresentation {
  return _mirrors;
}

- (void)loadView {
  UIView* root = [[UIView alloc] init];
  const auto style = _screen->modalPresentationStyle;
  // Screens presented over others let them show through where they draw nothing.
  const bool over = _mirrors && (style == nutrition::ModalPresentationStyle::overFullScreen ||
                                 style == nutrition::ModalPresentationStyle::overCurrentContext);
  root.backgroundColor = over ? UIColor.clearColor : UIColor.systemBackgroundColor;
  root.clipsToBounds = YES;
  _canvas = [[UIView alloc] initWithFrame:CGRectMake(0, 0, nutrition::kPhoneScreen.width,
                                                     nutrition::kPhoneScreen.height)];
  [root addSubview:_canvas];
  if (std::dynamic_pointer_cast<nutrition::NavigationController>(_screen)) {
    _bar = [[UINavigationBar alloc] init];
    _bar.delegate = self;
    [root addSubview:_bar];
  }
  self.view = root;
}

- (void)viewDidLayoutSubviews {
  [super viewDidLayoutSubviews];
  const CGSize size = self.view.bounds.size;
  CGFloat top = self.view.safeAreaInsets.top;
  if (_bar != nil && !_bar.hidden) {
    const CGFloat height = [_bar sizeThatFits:CGSizeMake(size.width, CGFLOAT_MAX)].height;
    _bar.frame = CGRectMake(0, top, size.width, height);
    top += height;
  }
  const CGFloat scale = size.width / nutrition::kPhoneScreen.width;
  _canvas.transform = CGAffineTransformMakeScale(scale, scale);
  _canvas.center = CGPointMake(size.width / 2, top + nutrition::kPhoneScreen.height * scale / 2);
}

- (void)viewWillAppear:(BOOL)animated {
  [super viewWillAppear:animated];
  if (!_mirrors) {
    if (!_window)
      _window = std::make_shared<nutrition::Window>(nutrition::ios::makeMirrorPresenter(false),
                                                    _mainQueue);
    if (_window->rootViewController() != _screen.get()) {
      forwardInput("appearance", [&] { _window->setRootViewController(_screen); });
    }
  }
  [self refresh];
}

- (void)viewWillDisappear:(BOOL)animated {
  [super viewWillDisappear:animated];
  if (_mirrors || !_window || _window->rootViewController() != _screen.get()) return;
  // Covered by what the screen itself presented: the core ran that disappearance already.
  id covering = self.presentedViewController;
  if ([covering isKindOfClass:[NKHostingViewController class]] &&
      static_cast<NKHostingViewController*>(covering).presentingScreen == _screen) {
    return;
  }
  forwardInput("disappearance", [&] { _window->setRootViewController(nullptr); });
}

- (void)slideNextRefresh:(BOOL)forward {
  _slide = forward ? kCATransitionFromRight : kCATransitionFromLeft;
}

- (void)refresh {
  if (!self.isViewLoaded) return;
  forwardInput("screen refresh", [&] {
    if (_slide != nil) {
      CATransition* slide = [CATransition animation];
      slide.type = kCATransitionPush;
      slide.subtype = _slide;
      slide.duration = 0.3;
      slide.timingFunction =
          [CAMediaTimingFunction functionWithName:kCAMediaTimingFunctionEaseInEaseOut];
      [_canvas.layer addAnimation:slide forKey:@"navigation"];
      _slide = nil;
    }
    _renderer->render(_screen->viewPointer(), _canvas);
    if (auto navigation = std::dynamic_pointer_cast<nutrition::NavigationController>(_screen)) {
      [self showNavigationBar:*navigation];
    } else {
      [self showOwnNavigationItem];
    }
  });
}

// A screen that is not a navigation controller may still be pushed on the host's: its title
// and bar items go on this controller's navigation item.
- (void)showOwnNavigationItem {
  std::string key = nutrition::ios::itemKey(*_screen);
  if (key == _itemKey) return;
  _itemKey = std::move(key);
  _barActions = nutrition::ios::showNavigationItem(_screen, self.navigationItem, nil);
}

- (void)showNavigationBar:(nutrition::NavigationController&)navigation {
  const nutrition::NavigationBar& look = navigation.navigationBar;
  if (_bar.hidden != look.isHidden || _bar.prefersLargeTitles != look.prefersLargeTitles) {
    _bar.hidden = look.isHidden;
    _bar.prefersLargeTitles = look.prefersLargeTitles;
    [self.view setNeedsLayout];
  }
  std::string barKey =
      nutrition::ios::colorKey(look.barTintColor) + nutrition::ios::colorKey(look.backgroundColor) +
      nutrition::ios::colorKey(look.tintColor) + nutrition::ios::colorKey(look.titleColor) +
      std::to_string(look.titleFont.size) +
      std::to_string(static_cast<int>(look.titleFont.weight)) + (look.isTranslucent ? "t" : "o");
  if (barKey != _barKey) {
    _barKey = std::move(barKey);
    UINavigationBarAppearance* appearance = [[UINavigationBarAppearance alloc] init];
    if (look.isTranslucent) {
      [appearance configureWithDefaultBackground];
    } else {
      [appearance configureWithOpaqueBackground];
    }
    const auto background = look.backgroundColor ? look.backgroundColor : look.barTintColor;
    if (background) appearance.backgroundColor = toUIColor(*background);
    UIColor* titleColor = look.titleColor ? toUIColor(*look.titleColor) : UIColor.labelColor;
    appearance.titleTextAttributes = @{
      NSFontAttributeName : nutrition::ios::toUIFont(look.titleFont),
      NSForegroundColorAttributeName : titleColor,
    };
    appearance.largeTitleTextAttributes = @{NSForegroundColorAttributeName : titleColor};
    _bar.standardAppearance = appearance;
    _bar.scrollEdgeAppearance = appearance;
    _bar.compactAppearance = appearance;
    _bar.tintColor = toUIColor(look.tintColor);
  }
  const auto& stack = navigation.viewControllers();
  if (stack.empty()) {
    if (!_itemKey.empty()) [_bar setItems:@[] animated:NO];
    _itemKey.clear();
    return;
  }
  const auto& top = stack.back();
  const nutrition::ViewController* below =
      stack.size() > 1 ? stack[stack.size() - 2].get() : nullptr;
  const auto& backItem = below != nullptr ? below->navigationItem.backBarButtonItem : std::nullopt;
  std::string itemKey = std::to_string(reinterpret_cast<std::uintptr_t>(top.get())) +
                        nutrition::ios::itemKey(*top) + (below != nullptr ? "B" : "-") +
                        (backItem ? backItem->title : "<");
  if (itemKey == _itemKey) return;
  _itemKey = std::move(itemKey);
  // The screen below gives the way back: its back item's title, or a back arrow.
  UIBarButtonItem* back = nil;
  NKAction* pop = nil;
  if (below != nullptr && !top->navigationItem.hidesBackButton) {
    std::weak_ptr<nutrition::ViewController> weak = navigation.weak_from_this();
    pop = [[NKAction alloc]
        initWithName:"back"
               block:[weak] {
                 auto owner =
                     std::dynamic_pointer_cast<nutrition::NavigationController>(weak.lock());
                 if (owner) owner->popViewController(true);
               }];
    back = backItem ? [[UIBarButtonItem alloc] initWithTitle:toNSString(backItem->title)
                                                       style:UIBarButtonItemStylePlain
                                                      target:pop
                                                      action:@selector(run:)]
                    : [[UIBarButtonItem alloc]
                          initWithImage:[UIImage systemImageNamed:@"chevron.backward"]
                                  style:UIBarButtonItemStylePlain
                                 target:pop
                                 action:@selector(run:)];
  }
  UINavigationItem* item = [[UINavigationItem alloc] init];
  NSArray<NKAction*>* actions = nutrition::ios::showNavigationItem(top, item, back);
  _barActions = pop != nil ? [actions arrayByAddingObject:pop] : actions;
  [_bar setItems:@[ item ] animated:NO];
}

- (UIBarPosition)positionForBar:(id<UIBarPositioning>)bar {
  // The bar's colour runs up under the status bar.
  return UIBarPositionTopAttached;
}

- (void)presentationControllerDidDismiss:(UIPresentationController*)presentationController {
  auto presenting = _presentingScreen.lock();
  if (presenting && presenting->presentedViewController() == _screen.get()) {
    forwardInput("sheet dismissal", [&] { presenting->dismiss(false); });
  }
  nutrition::ios::setNeedsScreenUpdate();
}

@end
