#include "config/ImageCache.h"

#include <filesystem>
#include <fstream>
#include <sstream>
#include <system_error>

#include "base/Log.h"

namespace nutrition {

std::string_view folderPath(Folder folder) {
  switch (folder) {
    case Folder::customWorkout:
      return "MyOrvane/workouts";
    case Folder::staticWorkout:
      return "MyOrvane/staticWorkouts";
    case Folder::wearables:
      return "MyOrvane/wearables";
    case Folder::customization:
      return "MyOrvane/customization";
    case Folder::vimeo:
      return "MyOrvane/vimeo";
    case Folder::recipes:
      return "MyOrvane/recipes";
  }
  return "MyOrvane";
}

bool looksLikeImage(std::string_view bytes) {
  return bytes.starts_with("\x89PNG\r\n\x1A\n") || bytes.starts_with("\xFF\xD8\xFF") ||
         bytes.starts_with("GIF87a") || bytes.starts_with("GIF89a") ||
         (bytes.size() >= 12 && bytes.starts_with("RIFF") && bytes.substr(8, 4) == "WEBP");
}

std::optional<std::string> ImageCache::fileName(std::string_view url) {
  const auto slash = url.rfind('/');
  const std::string_view name = slash == std::string_view::npos ? url : url.substr(slash + 1);
  if (name.empty() || name == "." || name == ".." || name.find('\0') != std::string_view::npos) {
    return std::nullopt;
  }
  return std::string(name);
}

std::string ImageCache::folderURL(Folder folder) const {
  return (std::filesystem::path(documentsDirectory_) / folderPath(folder)).string();
}

void ImageCache::createFolder(Folder folder) const {
  std::error_code error;
  const std::filesystem::path path = folderURL(folder);
  if (std::filesystem::exists(path, error)) return;
  std::filesystem::create_directories(path, error);
  if (error) log(LogLevel::error, "Couldn't create document directory");
}

bool ImageCache::exists(std::string_view url, Folder folder) const {
  const auto name = fileName(url);
  std::error_code error;
  return name && std::filesystem::exists(std::filesystem::path(folderURL(folder)) / *name, error);
}

void ImageCache::write(const Image& image, std::string_view url, Folder folder) const {
  const auto name = fileName(url);
  if (!name) return;
  std::ofstream out(std::filesystem::path(folderURL(folder)) / *name,
                    std::ios::binary | std::ios::trunc);
  out.write(reinterpret_cast<const char*>(image.data.data()), std::streamsize(image.data.size()));
  if (!out) log(LogLevel::warning, "could not cache the image " + *name);
}

std::optional<Image> ImageCache::read(std::string_view url, Folder folder) const {
  const auto name = fileName(url);
  if (!name) return std::nullopt;
  std::ifstream in(std::filesystem::path(folderURL(folder)) / *name, std::ios::binary);
  if (!in) return std::nullopt;
  std::stringstream contents;
  contents << in.rdbuf();
  const std::string bytes = contents.str();
  if (!looksLikeImage(bytes)) return std::nullopt;
  return Image{std::vector<std::uint8_t>(bytes.begin(), bytes.end())};
}

}  // namespace nutrition
