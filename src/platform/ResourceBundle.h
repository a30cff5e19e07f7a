#pragma once
// The module's read-only resources, as bytes: JSON files (questionnaire pages, fasting phases,
// waiting screens, information texts), the "NutritionStrings" tables, images and fonts. The
// core parses what it reads itself.
//
// A name is a path relative to the bundle made of plain segments ("fasesAyuno",
// "strings/NutritionStrings.en"); the extension comes without its dot ("json") or empty.

#include <optional>
#include <string>
#include <string_view>

namespace nutrition {

class ResourceBundle {
 public:
  virtual ~ResourceBundle() = default;
  // The bytes of "name.extension"; nothing when the bundle has no such resource or it cannot
  // be read.
  [[nodiscard]] virtual std::optional<std::string> resource(std::string_view name,
                                                            std::string_view extension) const = 0;
  // Whether the bundle has the resource at all, readable or not.
  [[nodiscard]] virtual bool contains(std::string_view name, std::string_view extension) const {
    return resource(name, extension).has_value();
  }
};

// A bundle with nothing in it: the portable default.
class EmptyResourceBundle final : public ResourceBundle {
 public:
  [[nodiscard]] std::optional<std::string> resource(std::string_view,
                                                    std::string_view) const override {
    return std::nullopt;
  }
};

// Whether `name` is a relative path of plain segments: no empty segment, no "." or "..", no
// leading "/" and no NUL, so that it cannot name anything outside the bundle.
bool isBundleRelativeName(std::string_view name);

}  // namespace nutrition
