#pragma once
// Registers a font file shipped in a bundle with the system's font manager, for hosts that
// want the module's fonts in their own screens. Each failure is logged with its own message
// and stops the registration.
//
//   registerFont("DejaVuSans.ttf", *platform.resources, *platform.fonts);

#include <string_view>

#include "platform/FontRegistry.h"
#include "platform/ResourceBundle.h"

namespace nutrition {

// True when the font was registered.
bool registerFont(std::string_view fileName, const ResourceBundle& bundle, FontRegistry& fonts);

}  // namespace nutrition
