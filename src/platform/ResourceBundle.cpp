#include "platform/ResourceBundle.h"

namespace nutrition {

bool isBundleRelativeName(std::string_view name) {
  if (name.find('\0') != std::string_view::npos) return false;
  while (true) {
    const auto slash = name.find('/');
    const std::string_view segment = name.substr(0, slash);
    if (segment.empty() || segment == "." || segment == "..") return false;
    if (slash == std::string_view::npos) return true;
    name.remove_prefix(slash + 1);
  }
}

}  // namespace nutrition
