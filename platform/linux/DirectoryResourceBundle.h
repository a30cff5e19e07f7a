#pragma once
// The module's resources on Linux: files in a directory ("name.extension"), the string tables
// under "strings/".

#include <filesystem>

#include "platform/ResourceBundle.h"

namespace nutrition {

class DirectoryResourceBundle final : public ResourceBundle {
 public:
  explicit DirectoryResourceBundle(std::filesystem::path root) : root_(std::move(root)) {}

  std::optional<std::string> resource(std::string_view name,
                                      std::string_view extension) const override;
  bool contains(std::string_view name, std::string_view extension) const override;

 private:
  // The file of a resource; nothing for a name that is not bundle-relative.
  std::optional<std::filesystem::path> pathOf(std::string_view name,
                                              std::string_view extension) const;

  std::filesystem::path root_;
};

}  // namespace nutrition
