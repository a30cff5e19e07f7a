#pragma once
// A small anti-aliased rasteriser for the bundle's images, drawn in points and rendered at a
// scale (1, 2 or 3), and a PNG writer. Shapes are signed-distance functions, so every edge
// gets one pixel of smooth coverage at any scale; output is deterministic byte for byte.

#include <cstdint>
#include <filesystem>
#include <functional>
#include <string>
#include <vector>

#include "base/Color.h"

namespace nutrition::imagegen {

struct P {
  double x = 0;
  double y = 0;
};

class Canvas {
 public:
  Canvas(double widthPoints, double heightPoints, int scale);

  // Signed distance in points from a point to a shape's edge: negative inside.
  using Shape = std::function<double(P)>;
  void fill(const Shape& shape, Color color);

  static Shape circle(P center, double radius);
  static Shape ring(P center, double radius, double width);
  static Shape line(P from, P to, double width);
  static Shape roundedRect(P origin, double width, double height, double radius);
  static Shape polygon(std::vector<P> points);
  static Shape unite(Shape a, Shape b);
  static Shape subtract(Shape a, Shape b);

  [[nodiscard]] int width() const { return width_; }
  [[nodiscard]] int height() const { return height_; }
  // Writes RGBA PNG; false when the file cannot be written.
  bool writePng(const std::filesystem::path& file) const;

 private:
  int width_;
  int height_;
  int scale_;
  std::vector<std::uint8_t> rgba_;
};

}  // namespace nutrition::imagegen
