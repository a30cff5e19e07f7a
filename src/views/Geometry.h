#pragma once
// Points, sizes and rectangles of the headless toolkit, in points (not pixels), origin at the
// top left as on a phone screen.

namespace nutrition {

struct Point {
  double x = 0;
  double y = 0;
  bool operator==(const Point&) const = default;
};

struct Size {
  double width = 0;
  double height = 0;
  bool operator==(const Size&) const = default;
};

struct Rect {
  Point origin;
  Size size;
  bool operator==(const Rect&) const = default;

  [[nodiscard]] double width() const { return size.width; }
  [[nodiscard]] double height() const { return size.height; }
  [[nodiscard]] Point center() const {
    return {origin.x + size.width / 2, origin.y + size.height / 2};
  }
};

struct EdgeInsets {
  double top = 0;
  double left = 0;
  double bottom = 0;
  double right = 0;
  bool operator==(const EdgeInsets&) const = default;

  static EdgeInsets all(double inset) { return {inset, inset, inset, inset}; }
};

enum class Axis { horizontal, vertical };

// A phone's screen in points: where a screen lays itself out until a platform says otherwise.
inline constexpr Size kPhoneScreen{390, 844};

}  // namespace nutrition
