#include "config/ImageCache.h"

#include <cstdint>
#include <filesystem>
#include <system_error>

#include "base/File.h"
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

namespace {

constexpr auto npos = std::string_view::npos;

unsigned byteAt(std::string_view bytes, std::size_t at) {
  return static_cast<unsigned char>(bytes[at]);
}

std::uint32_t bigEndian(std::string_view bytes, std::size_t at, int count) {
  std::uint32_t value = 0;
  for (int i = 0; i < count; ++i)
    value = value << 8 | byteAt(bytes, at + std::size_t(i));
  return value;
}

// Chunks (length, type, data, CRC) from the signature on, up to an empty IEND chunk that ends
// the bytes.
bool isWholePng(std::string_view bytes) {
  constexpr std::string_view kEnd("\0\0\0\0IEND\xAE\x42\x60\x82", 12);
  std::size_t at = 8;
  while (bytes.size() - at >= 12) {
    const std::size_t length = bigEndian(bytes, at, 4);
    if (length > bytes.size() - at - 12) return false;
    if (bytes.substr(at + 4, 4) == "IEND") return bytes.substr(at) == kEnd;
    at += 12 + length;
  }
  return false;
}

// Marker segments from SOI on, through the entropy-coded data after each SOS (where FF is
// followed by 00 or a restart marker, or repeated as fill), up to EOI at the last byte.
bool isWholeJpeg(std::string_view bytes) {
  std::size_t at = 2;
  while (at < bytes.size()) {
    if (byteAt(bytes, at) != 0xFF) return false;
    while (at < bytes.size() && byteAt(bytes, at) == 0xFF)
      ++at;
    if (at == bytes.size()) return false;
    const unsigned marker = byteAt(bytes, at++);
    if (marker == 0xD9) return at == bytes.size();
    if (marker == 0x01 || (marker >= 0xD0 && marker <= 0xD7)) continue;  // no length
    if (bytes.size() - at < 2) return false;
    const std::size_t length = bigEndian(bytes, at, 2);
    if (length < 2 || length > bytes.size() - at) return false;
    at += length;
    if (marker != 0xDA) continue;
    while ((at = bytes.find('\xFF', at)) != npos && at + 1 < bytes.size()) {
      const unsigned next = byteAt(bytes, at + 1);
      if (next == 0x00 || (next >= 0xD0 && next <= 0xD7)) {
        at += 2;
      } else if (next == 0xFF) {
        at += 1;
      } else {
        break;
      }
    }
    if (at == npos || at + 1 >= bytes.size()) return false;
  }
  return false;
}

// Data sub-blocks (a size byte and that many bytes) up to an empty one; where the next block
// starts, or npos when the bytes end first.
std::size_t skipSubBlocks(std::string_view bytes, std::size_t at) {
  while (at < bytes.size()) {
    const std::size_t size = byteAt(bytes, at);
    at += 1 + size;
    if (size == 0) return at;
  }
  return npos;
}

// The screen descriptor and its colour table, then extensions and images, up to the trailer.
bool isWholeGif(std::string_view bytes) {
  if (bytes.size() < 13) return false;
  const auto colourTable = [](unsigned flags) {
    return flags & 0x80 ? std::size_t{3} << ((flags & 7) + 1) : 0;
  };
  std::size_t at = 13 + colourTable(byteAt(bytes, 10));
  while (at < bytes.size()) {
    switch (byteAt(bytes, at)) {
      case 0x3B:
        return at + 1 == bytes.size();
      case 0x21:  // introducer, label, sub-blocks
        at = skipSubBlocks(bytes, at + 2);
        break;
      case 0x2C:  // descriptor, local colour table, LZW code size, sub-blocks
        if (bytes.size() - at < 10) return false;
        at += 10 + colourTable(byteAt(bytes, at + 9));
        at = skipSubBlocks(bytes, at + 1);
        break;
      default:
        return false;
    }
    if (at == npos) return false;
  }
  return false;
}

bool isWholeWebp(std::string_view bytes) {
  const std::uint32_t riffSize = byteAt(bytes, 4) | byteAt(bytes, 5) << 8 | byteAt(bytes, 6) << 16 |
                                 std::uint32_t(byteAt(bytes, 7)) << 24;
  return std::uint64_t{riffSize} + 8 == bytes.size();
}

}  // namespace

bool isWholeImage(std::string_view bytes) {
  if (bytes.starts_with("\x89PNG\r\n\x1A\n")) return isWholePng(bytes);
  if (bytes.starts_with("\xFF\xD8\xFF")) return isWholeJpeg(bytes);
  if (bytes.starts_with("GIF87a") || bytes.starts_with("GIF89a")) return isWholeGif(bytes);
  if (bytes.size() >= 12 && bytes.starts_with("RIFF") && bytes.substr(8, 4) == "WEBP") {
    return isWholeWebp(bytes);
  }
  return false;
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
  const std::string_view bytes(reinterpret_cast<const char*>(image.data.data()), image.data.size());
  if (!isWholeImage(bytes)) {
    log(LogLevel::warning, "not caching " + *name + ": not a whole image");
    return;
  }
  if (!writeFileAtomically(std::filesystem::path(folderURL(folder)) / *name, bytes)) {
    log(LogLevel::warning, "could not cache the image " + *name);
  }
}

std::optional<Image> ImageCache::read(std::string_view url, Folder folder) const {
  const auto name = fileName(url);
  if (!name) return std::nullopt;
  const auto path = std::filesystem::path(folderURL(folder)) / *name;
  const auto bytes = readFile(path);
  if (!bytes) return std::nullopt;
  if (!isWholeImage(*bytes)) {
    std::error_code error;
    std::filesystem::remove(path, error);
    return std::nullopt;
  }
  return Image{std::vector<std::uint8_t>(bytes->begin(), bytes->end())};
}

}  // namespace nutrition
