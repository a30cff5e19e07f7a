#pragma once
// The local image folders under the documents directory and the dish-image cache in them.
// A cached image is stored under the last "/"-separated component of its URL, so two URLs that
// end in the same name share one file. A URL whose last component is empty, "." or ".." is
// never written: it names no file inside the folder. Only whole images are cached: one cut
// short on the way is not written, and a file cut short is not read back.

#include <functional>
#include <optional>
#include <string>
#include <string_view>

#include "base/Image.h"

namespace nutrition {

// The six folders, in the order they are created at start. Only `recipes` holds dish images.
enum class Folder { customWorkout, staticWorkout, wearables, customization, vimeo, recipes };

inline constexpr Folder kAllFolders[] = {Folder::customWorkout, Folder::staticWorkout,
                                         Folder::wearables,     Folder::customization,
                                         Folder::vimeo,         Folder::recipes};

// The folder's path relative to the documents directory ("MyOrvane/recipes").
std::string_view folderPath(Folder folder);

// Whether `bytes` start like a PNG, JPEG, GIF or WebP image.
bool looksLikeImage(std::string_view bytes);

// Whether `bytes` are a PNG, JPEG, GIF or WebP image that arrived whole: its structure, walked
// from the start, reaches the format's own end exactly at the last byte. PNG: chunk after chunk
// up to an empty IEND chunk; JPEG: segment after segment (and through entropy-coded data) up to
// the EOI marker; GIF: block after block up to the trailer; WebP: a RIFF size that matches the
// byte count. Pixels are not decoded.
bool isWholeImage(std::string_view bytes);

class ImageCache {
 public:
  explicit ImageCache(std::string documentsDirectory)
      : documentsDirectory_(std::move(documentsDirectory)) {}

  [[nodiscard]] std::string folderURL(Folder folder) const;
  // Creates the folder (and its parents) unless something exists there; logs a failure.
  void createFolder(Folder folder) const;
  [[nodiscard]] bool exists(std::string_view url, Folder folder) const;
  // Stores the image under its URL's file name; an image that is not whole, or cannot be
  // written, is dropped.
  void write(const Image& image, std::string_view url, Folder folder) const;
  // The cached image; nothing when there is none or the file does not hold a whole image, in
  // which case the file is removed so that the image is fetched again.
  [[nodiscard]] std::optional<Image> read(std::string_view url, Folder folder) const;

  // The cache file name for `url`, or nothing when the URL names no file.
  static std::optional<std::string> fileName(std::string_view url);

 private:
  std::string documentsDirectory_;
};

}  // namespace nutrition
