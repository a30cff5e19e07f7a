#include "ui/FontRegistration.h"

#include "base/Log.h"

namespace nutrition {
namespace {

bool failed(std::string_view reason) {
  log(LogLevel::error, "UIFont+:  Failed to register font - " + std::string(reason));
  return false;
}

}  // namespace

bool registerFont(std::string_view fileName, const ResourceBundle& bundle, FontRegistry& fonts) {
  if (!isBundleRelativeName(fileName) || !bundle.contains(fileName, "")) {
    return failed("path for resource not found.");
  }
  const auto bytes = bundle.resource(fileName, "");
  if (!bytes) return failed("font data could not be loaded.");
  switch (fonts.registerFont(*bytes)) {
    case FontRegistry::Outcome::registered:
      return true;
    case FontRegistry::Outcome::noDataProvider:
      return failed("data provider could not be loaded.");
    case FontRegistry::Outcome::notAFont:
      return failed("font could not be loaded.");
    case FontRegistry::Outcome::refused:
      return failed(
          "register graphics font failed - this font may have already been registered in the "
          "main bundle.");
  }
  return false;
}

}  // namespace nutrition
