#pragma once
// The iOS platform bundle: NSURLSession, NSUserDefaults, UNUserNotificationCenter, the device's
// time zone and languages, the main dispatch queue, the framework's bundle, Core Text fonts and
// the app's documents folder. The framework installs it before the first call into the core.

#include <memory>

#include "platform/Platform.h"

namespace nutrition::ios {

std::shared_ptr<Platform> makeIosPlatform();

}  // namespace nutrition::ios

#ifdef __OBJC__
@class NSBundle;

namespace nutrition::ios {

// The bundle that holds the module's resources and images: the framework itself, or the
// resource bundle a Swift package build puts beside the code.
NSBundle* resourceBundle();

}  // namespace nutrition::ios
#endif
