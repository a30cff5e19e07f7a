#pragma once
// Where the core's screens meet UIKit: the core's key window mirrors the app's, and a core
// screen handed to the host is wrapped in a UIViewController it can present or embed.

#import <UIKit/UIKit.h>

#include <memory>

namespace nutrition {
class Core;
class ViewController;
}  // namespace nutrition

namespace nutrition::ios {

// Gives `core` a key window whose presenter shows the core's presentations over the top view
// controller of the app's key window. Safe to call again; the window is made once per Core.
void attachKeyWindow(Core& core);

// A UIKit view controller that shows `screen` and forwards the member's input to it.
UIViewController* _Nonnull hostingController(std::shared_ptr<ViewController> screen);

}  // namespace nutrition::ios
