#pragma once
// An image view: a bundle image or image bytes, tinted when the image is a template.

#include <optional>

#include "views/ImageRef.h"
#include "views/View.h"
#include "views/ViewVisitor.h"

namespace nutrition {

enum class ContentMode { scaleToFill, scaleAspectFit, scaleAspectFill, center };

class ImageView : public View {
 public:
  ImageView() = default;
  explicit ImageView(std::optional<ImageRef> initial) : image(std::move(initial)) {}

  [[nodiscard]] std::string_view kind() const override { return "ImageView"; }
  void accept(ViewVisitor& visitor) const override { visitor.visit(*this); }

  std::optional<ImageRef> image;
  ContentMode contentMode = ContentMode::scaleAspectFit;
};

}  // namespace nutrition
