#pragma once
// The module's resources on Linux: files in a directory ("name.extension"), and string tables
// as JSON objects in "strings/<table>.<language>.json".

#include <filesystem>

#include "platform/ResourceBundle.h"

namespace nutrition {

class DirectoryResourceBundle final : public ResourceBundle {
 public:
  explicit DirectoryResourceBundle(std::filesystem::path root) : root_(std::move(root)) {}

  std::optional<std::string> resource(std::string_view name,
                                      std::string_view extension) const override;
  std::optional<std::map<std::string, std::string, std::less<>>> strings(
      std::string_view table, std::string_view language) const override;

 private:
  std::filesystem::path root_;
};

}  // namespace nutrition
