#include "base/File.h"

#include <fstream>
#include <system_error>

namespace nutrition {

std::optional<std::string> readFile(const std::filesystem::path& path) {
  std::ifstream in(path, std::ios::binary);
  if (!in) return std::nullopt;
  std::string bytes;
  std::error_code error;
  const auto size = std::filesystem::file_size(path, error);
  if (!error) bytes.reserve(size);
  bytes.assign(std::istreambuf_iterator<char>(in), std::istreambuf_iterator<char>());
  if (in.bad()) return std::nullopt;
  return bytes;
}

bool writeFileAtomically(const std::filesystem::path& path, std::string_view bytes) {
  std::error_code error;
  if (path.has_parent_path()) std::filesystem::create_directories(path.parent_path(), error);
  const auto temporary = std::filesystem::path(path).concat(".tmp");
  {
    std::ofstream out(temporary, std::ios::binary | std::ios::trunc);
    out.write(bytes.data(), static_cast<std::streamsize>(bytes.size()));
    out.flush();
    if (!out) {
      std::filesystem::remove(temporary, error);
      return false;
    }
  }
  std::filesystem::rename(temporary, path, error);
  if (error) {
    std::filesystem::remove(temporary, error);
    return false;
  }
  return true;
}

}  // namespace nutrition
