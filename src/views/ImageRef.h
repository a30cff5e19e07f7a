#pragma once
// What an image view or button shows: an image of the module's bundle by name (the platform
// picks the 1x, 2x or 3x file), or encoded bytes (a dish photo from the image cache).
// A template image is drawn in the tint colour of its view.

#include <memory>
#include <string>

#include "base/Image.h"

namespace nutrition {

struct ImageRef {
  std::string name;
  std::shared_ptr<const Image> bytes;
  bool isTemplate = false;

  static ImageRef named(std::string name) { return {std::move(name), nullptr, false}; }
  static ImageRef data(Image image) {
    return {{}, std::make_shared<const Image>(std::move(image)), false};
  }
  [[nodiscard]] ImageRef withTemplateRendering() const {
    ImageRef copy = *this;
    copy.isTemplate = true;
    return copy;
  }
  bool operator==(const ImageRef& other) const {
    return name == other.name && isTemplate == other.isTemplate &&
           (bytes == other.bytes || (bytes && other.bytes && *bytes == *other.bytes));
  }
};

}  // namespace nutrition
