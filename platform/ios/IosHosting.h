#pragma once
// A UIKit view controller showing one core screen: the screen's view tree drawn by a
// ViewTreeRenderer on a phone-sized canvas, and for a navigation controller its bar. The core
// lays screens out on a 390-point-wide phone; the canvas is scaled to the width UIKit gives,
// below the safe area's top (and the bar).
//
// Two kinds of screens are hosted:
// - a screen handed to the host (getWeekMenu, getAyunoController, ...): the host presents,
//   pushes or embeds the controller, and its appearance in UIKit runs the screen's lifecycle
//   through a core window of its own, which also tells the presentation mirror what the
//   screen presents, pushes and pops;
// - a screen the core presented on another: the presentation mirror (IosScreens.mm) made the
//   controller and presented it; the core already ran the screen's lifecycle.
//
// `refresh` brings the UIKit views in step with the core; the mirror calls it for every shown
// controller after each turn of the main run loop.

#import <UIKit/UIKit.h>

#include <memory>

#include "platform/MainQueue.h"
#include "views/Presenter.h"
#include "views/ViewController.h"

NS_ASSUME_NONNULL_BEGIN

@interface NKHostingViewController
    : UIViewController <UINavigationBarDelegate, UIAdaptivePresentationControllerDelegate>

- (instancetype)initWithHandedOverScreen:(std::shared_ptr<nutrition::ViewController>)screen
                               mainQueue:(std::weak_ptr<nutrition::MainQueue>)mainQueue;
- (instancetype)initWithPresentedScreen:(std::shared_ptr<nutrition::ViewController>)screen
                            presentedBy:(std::weak_ptr<nutrition::ViewController>)presenting;
- (instancetype)initWithNibName:(nullable NSString*)nibName
                         bundle:(nullable NSBundle*)bundle NS_UNAVAILABLE;
- (nullable instancetype)initWithCoder:(NSCoder*)coder NS_UNAVAILABLE;

@property(nonatomic, readonly) std::shared_ptr<nutrition::ViewController> screen;
// The core screen whose presentation this controller mirrors; null for a handed-over screen
// and once that screen is gone.
@property(nonatomic, readonly) std::shared_ptr<nutrition::ViewController> presentingScreen;
@property(nonatomic, readonly) BOOL mirrorsPresentation;

- (void)refresh;
// The next refresh slides the new top screen in: from the right after a push, from the left
// after a pop.
- (void)slideNextRefresh:(BOOL)forward;

@end

NS_ASSUME_NONNULL_END

namespace nutrition::ios {

// The presenter of a core window, telling the mirror every change. Only the key window's
// presenter mirrors what its root presents on the app's top view controller.
std::shared_ptr<Presenter> makeMirrorPresenter(bool keyWindow);
// Every hosting controller is known to the mirror, which refreshes those shown.
void registerHosting(NKHostingViewController* _Nonnull hosting);
// A mirror pass and a refresh of the shown screens on the main queue's next turn.
void setNeedsScreenUpdate();

}  // namespace nutrition::ios
