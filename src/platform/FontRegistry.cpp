#include "platform/FontRegistry.h"

namespace nutrition {

FontRegistry::Outcome InMemoryFontRegistry::registerFont(std::string_view bytes) {
  if (bytes.empty()) return Outcome::noDataProvider;
  const std::string_view signature = bytes.substr(0, 4);
  const bool isFont = signature == std::string_view("\x00\x01\x00\x00", 4) || signature == "OTTO" ||
                      signature == "true" || signature == "ttcf";
  if (!isFont || bytes.size() < 12) return Outcome::notAFont;
  std::lock_guard lock(mutex_);
  return fonts_.emplace(bytes).second ? Outcome::registered : Outcome::refused;
}

std::size_t InMemoryFontRegistry::count() const {
  std::lock_guard lock(mutex_);
  return fonts_.size();
}

}  // namespace nutrition
