// The presentation mirror: UIKit's presentations follow the core's presentation graph.
//
// The core's graph is the truth. After every turn of the main run loop (an observer just
// before the loop sleeps, so after taps, typing, timers, network answers and main-queue tasks
// alike) one pass compares it with what UIKit shows and makes at most one UIKit transition:
// - a hosting controller mirroring a presentation the core no longer has is dismissed;
// - a screen the core presents and UIKit does not show yet is presented, in a new hosting
//   controller, on the controller of the screen presenting it (for the key window's root,
//   which stands for the app's own screens, on the top view controller of the app's key
//   window).
// When that transition completes, or UIKit is busy with one of its own, the pass runs again.
// Then every shown hosting controller refreshes its views from the core. The presenter the
// core's windows hold only asks for a pass, records whether a dismissal is animated and marks
// pushes and pops to slide in.

#include "IosScreens.h"

#import <QuartzCore/QuartzCore.h>

#include <utility>
#include <vector>

#include "IosHosting.h"
#include "IosViews.h"
#include "facade/Core.h"
#include "views/NavigationController.h"
#include "views/Window.h"

namespace nutrition::ios {
namespace {

struct MirrorState {
  NSHashTable<NKHostingViewController*>* hostings = [NSHashTable weakObjectsHashTable];
  // The key window's root: it stands for the app's own screens.
  std::weak_ptr<ViewController> keyRoot;
  bool dismissAnimated = true;
  bool transitioning = false;
  CFTimeInterval transitionStarted = 0;
  bool updating = false;
  bool updateScheduled = false;
  int retries = 0;
  CFRunLoopObserverRef observer = nullptr;
};

MirrorState& state() {
  static auto* shared = new MirrorState();  // lives as long as the app
  return *shared;
}

// A transition UIKit never completes (refused) does not hold the mirror for longer than this.
constexpr CFTimeInterval kTransitionTimeout = 3;
// UIKit busy with a transition of its own: try again a little later, for a while.
constexpr double kRetryDelay = 0.25;
constexpr int kMaxRetries = 40;

void update();

void retrySoon() {
  MirrorState& mirror = state();
  if (mirror.retries >= kMaxRetries) return;
  ++mirror.retries;
  dispatch_after(dispatch_time(DISPATCH_TIME_NOW, static_cast<int64_t>(kRetryDelay * NSEC_PER_SEC)),
                 dispatch_get_main_queue(), ^{
                   update();
                 });
}

void beginTransition() {
  state().transitioning = true;
  state().transitionStarted = CACurrentMediaTime();
}

void endTransition() {
  state().transitioning = false;
  setNeedsScreenUpdate();
}

UIWindow* _Nullable appKeyWindow() {
  UIWindow* fallback = nil;
  for (UIScene* scene in UIApplication.sharedApplication.connectedScenes) {
    if (![scene isKindOfClass:[UIWindowScene class]]) continue;
    UIWindow* window = static_cast<UIWindowScene*>(scene).keyWindow;
    if (window == nil) continue;
    if (scene.activationState == UISceneActivationStateForegroundActive) return window;
    fallback = window;
  }
  return fallback;
}

UIViewController* _Nullable topOfChain(UIViewController* _Nullable controller) {
  while (controller.presentedViewController != nil &&
         !controller.presentedViewController.isBeingDismissed) {
    controller = controller.presentedViewController;
  }
  return controller;
}

NSUInteger presentationDepth(UIViewController* controller) {
  NSUInteger depth = 0;
  for (UIViewController* up = controller.presentingViewController; up != nil;
       up = up.presentingViewController) {
    ++depth;
  }
  return depth;
}

// Hosting controllers UIKit shows (presented, or in a window), lowest presentation first.
NSArray<NKHostingViewController*>* shownHostings() {
  NSMutableArray<NKHostingViewController*>* shown = [NSMutableArray array];
  for (NKHostingViewController* hosting in state().hostings.allObjects) {
    if (hosting.presentingViewController != nil || hosting.viewIfLoaded.window != nil) {
      [shown addObject:hosting];
    }
  }
  [shown sortUsingComparator:^NSComparisonResult(UIViewController* a, UIViewController* b) {
    const NSUInteger depthA = presentationDepth(a);
    const NSUInteger depthB = presentationDepth(b);
    return depthA < depthB ? NSOrderedAscending
                           : (depthA > depthB ? NSOrderedDescending : NSOrderedSame);
  }];
  return shown;
}

// Dismisses the first mirrored presentation the core no longer has. True when it started a
// transition or must wait for UIKit.
bool dismissStale(NSArray<NKHostingViewController*>* shown) {
  for (NKHostingViewController* hosting in shown) {
    UIViewController* anchor = hosting.presentingViewController;
    if (!hosting.mirrorsPresentation || anchor == nil) continue;
    const auto presenting = hosting.presentingScreen;
    if (presenting && presenting->presentedViewController() == hosting.screen.get()) continue;
    if (hosting.isBeingPresented || hosting.isBeingDismissed || anchor.transitionCoordinator) {
      retrySoon();
      return true;
    }
    beginTransition();
    [anchor dismissViewControllerAnimated:state().dismissAnimated
                               completion:^{
                                 endTransition();
                               }];
    return true;
  }
  return false;
}

bool isMirrored(const ViewController& presenting, const ViewController& presented) {
  for (NKHostingViewController* hosting in state().hostings.allObjects) {
    if (hosting.mirrorsPresentation && hosting.screen.get() == &presented &&
        hosting.presentingScreen.get() == &presenting &&
        (hosting.presentingViewController != nil || hosting.isBeingPresented)) {
      return true;
    }
  }
  return false;
}

// Presents the first core presentation UIKit does not show yet. True when it started a
// transition or must wait for UIKit.
bool presentMissing(NSArray<NKHostingViewController*>* shown) {
  std::vector<std::pair<std::shared_ptr<ViewController>, UIViewController*>> presenters;
  if (auto root = state().keyRoot.lock()) {
    presenters.emplace_back(root, topOfChain(appKeyWindow().rootViewController));
  }
  for (NKHostingViewController* hosting in shown) {
    if (hosting.viewIfLoaded.window != nil) {
      presenters.emplace_back(hosting.screen, topOfChain(hosting));
    }
  }
  for (const auto& [screen, anchor] : presenters) {
    ViewController* presented = screen->presentedViewController();
    if (presented == nullptr || isMirrored(*screen, *presented)) continue;
    if (anchor == nil || anchor.viewIfLoaded.window == nil || anchor.transitionCoordinator ||
        anchor.isBeingDismissed) {
      retrySoon();
      return true;
    }
    NKHostingViewController* hosting =
        [[NKHostingViewController alloc] initWithPresentedScreen:presented->shared_from_this()
                                                     presentedBy:screen];
    beginTransition();
    [anchor presentViewController:hosting
                         animated:presented->wasPresentedAnimated()
                       completion:^{
                         endTransition();
                       }];
    if (hosting.presentingViewController == nil) {  // refused: UIKit logged why
      state().transitioning = false;
      retrySoon();
    }
    return true;
  }
  return false;
}

void update() {
  MirrorState& mirror = state();
  if (mirror.updating) return;
  mirror.updating = true;
  @autoreleasepool {
    if (mirror.transitioning &&
        CACurrentMediaTime() - mirror.transitionStarted > kTransitionTimeout) {
      mirror.transitioning = false;
    }
    if (!mirror.transitioning) {
      forwardInput("presentation mirror", [] {
        NSArray<NKHostingViewController*>* shown = shownHostings();
        if (!dismissStale(shown) && !presentMissing(shown)) state().retries = 0;
      });
    }
    for (NKHostingViewController* hosting in mirror.hostings.allObjects) {
      if (hosting.viewIfLoaded.window != nil) [hosting refresh];
    }
  }
  mirror.updating = false;
}

void observeRunLoop() {
  MirrorState& mirror = state();
  if (mirror.observer != nullptr) return;
  // Before Core Animation's commit (a later order), so what changed shows in the same frame.
  mirror.observer =
      CFRunLoopObserverCreateWithHandler(kCFAllocatorDefault, kCFRunLoopBeforeWaiting, true, 0,
                                         ^(CFRunLoopObserverRef, CFRunLoopActivity) {
                                           update();
                                         });
  CFRunLoopAddObserver(CFRunLoopGetMain(), mirror.observer, kCFRunLoopCommonModes);
}

class MirrorPresenter final : public Presenter {
 public:
  explicit MirrorPresenter(bool keyWindow) : keyWindow_(keyWindow) {}

  void didSetRoot(Window&, ViewController& root) override {
    if (keyWindow_) state().keyRoot = root.weak_from_this();
    setNeedsScreenUpdate();
  }
  void didPresent(ViewController&, ViewController&, bool) override { setNeedsScreenUpdate(); }
  void didDismiss(ViewController&, ViewController&, bool animated) override {
    state().dismissAnimated = animated;
    setNeedsScreenUpdate();
  }
  void didPush(NavigationController& navigation, ViewController&, bool animated) override {
    slide(navigation, true, animated);
  }
  void didPop(NavigationController& navigation, ViewController&, bool animated) override {
    slide(navigation, false, animated);
  }

 private:
  static void slide(const NavigationController& navigation, bool forward, bool animated) {
    if (animated) {
      for (NKHostingViewController* hosting in state().hostings.allObjects) {
        if (hosting.screen.get() == &navigation) [hosting slideNextRefresh:forward];
      }
    }
    setNeedsScreenUpdate();
  }

  bool keyWindow_;
};

}  // namespace

std::shared_ptr<Presenter> makeMirrorPresenter(bool keyWindow) {
  return std::make_shared<MirrorPresenter>(keyWindow);
}

void registerHosting(NKHostingViewController* hosting) {
  observeRunLoop();
  [state().hostings addObject:hosting];
}

void setNeedsScreenUpdate() {
  MirrorState& mirror = state();
  if (mirror.updateScheduled) return;
  mirror.updateScheduled = true;
  dispatch_async(dispatch_get_main_queue(), ^{
    state().updateScheduled = false;
    update();
  });
}

void attachKeyWindow(Core& core) {
  Application& application = core.application();
  if (application.keyWindow() != nullptr) return;
  observeRunLoop();
  auto window = std::make_shared<Window>(makeMirrorPresenter(true), core.platform().mainQueue);
  application.setKeyWindow(window);
  // A plain screen standing for the app's: what the core presents on it goes over the top view
  // controller of the app's key window.
  window->setRootViewController(std::make_shared<ViewController>());
}

UIViewController* hostingController(std::shared_ptr<ViewController> screen) {
  return [[NKHostingViewController alloc]
      initWithHandedOverScreen:std::move(screen)
                     mainQueue:Core::current().platform().mainQueue];
}

}  // namespace nutrition::ios
