#pragma once
// The module's read-only resources: JSON files (questionnaire pages, fasting phases, waiting
// screens, information texts), images and the localised string tables.

#include <map>
#include <optional>
#include <string>
#include <string_view>

namespace nutrition {

class ResourceBundle {
 public:
  virtual ~ResourceBundle() = default;
  // The bytes of "name.extension"; nothing when the bundle has no such resource.
  virtual std::optional<std::string> resource(std::string_view name,
                                              std::string_view extension) const = 0;
  // The string table `table` for a language code ("es", "en", ...): Spanish text to
  // translation. Nothing when the bundle has no such table.
  virtual std::optional<std::map<std::string, std::string, std::less<>>> strings(
      std::string_view table, std::string_view language) const = 0;
};

// A bundle with nothing in it: the portable default.
class EmptyResourceBundle final : public ResourceBundle {
 public:
  std::optional<std::string> resource(std::string_view, std::string_view) const override {
    return std::nullopt;
  }
  std::optional<std::map<std::string, std::string, std::less<>>> strings(
      std::string_view, std::string_view) const override {
    return std::nullopt;
  }
};

}  // namespace nutrition
