#include "platform/linux/DirectoryResourceBundle.h"

#include <system_error>

#include "base/File.h"

namespace nutrition {

std::optional<std::filesystem::path> DirectoryResourceBundle::pathOf(
    std::string_view name, std::string_view extension) const {
  std::string file(name);
  if (!extension.empty()) {
    file += '.';
    file += extension;
  }
  if (!isBundleRelativeName(file)) return std::nullopt;
  return root_ / file;
}

std::optional<std::string> DirectoryResourceBundle::resource(std::string_view name,
                                                             std::string_view extension) const {
  const auto path = pathOf(name, extension);
  if (!path) return std::nullopt;
  std::error_code error;
  if (!std::filesystem::is_regular_file(*path, error)) return std::nullopt;
  return readFile(*path);
}

bool DirectoryResourceBundle::contains(std::string_view name, std::string_view extension) const {
  const auto path = pathOf(name, extension);
  std::error_code error;
  return path && std::filesystem::is_regular_file(*path, error);
}

}  // namespace nutrition
