// Draws every image the module's bundle ships, at 1x, 2x and 3x, into a folder:
//
//   nutrition_imagegen RESOURCES_DIR OUTPUT_DIR
//
// The names come from the resources themselves (tools/imagegen/ImageNames.h); the drawings are
// flat shapes: icons the screens tint are black on transparent, the rest carry their colours.

#include <cmath>
#include <cstdio>
#include <functional>
#include <numbers>
#include <string>

#include "tools/imagegen/Canvas.h"
#include "tools/imagegen/ImageNames.h"

namespace nutrition::imagegen {
namespace {

using S = Canvas;
constexpr Color kInk{0, 0, 0, 255};
constexpr Color kWhite{255, 255, 255, 255};
constexpr Color kOrange{0xEA, 0x6E, 0x29, 255};
constexpr Color kSoftOrange{0xFB, 0xE3, 0xD5, 255};
constexpr Color kGrey{0xC7, 0xC7, 0xCC, 255};
constexpr Color kRed{0xFF, 0x3B, 0x30, 255};

struct Drawing {
  double width;
  double height;
  std::function<void(Canvas&)> draw;
};

Canvas::Shape heart(P center, double size) {
  std::vector<P> points;
  for (int i = 0; i < 96; ++i) {
    const double t = 2 * std::numbers::pi * i / 96;
    const double x = 16 * std::pow(std::sin(t), 3);
    const double y = 13 * std::cos(t) - 5 * std::cos(2 * t) - 2 * std::cos(3 * t) - std::cos(4 * t);
    points.push_back({center.x + x * size / 34, center.y - y * size / 34});
  }
  return S::polygon(std::move(points));
}

Canvas::Shape flame(P base, double size) {
  return S::polygon({{base.x, base.y - size},
                     {base.x + size * 0.45, base.y - size * 0.35},
                     {base.x + size * 0.35, base.y},
                     {base.x - size * 0.35, base.y},
                     {base.x - size * 0.45, base.y - size * 0.35}});
}

Canvas::Shape clockHands(P c, double r) {
  return S::unite(S::line(c, {c.x, c.y - r * 0.6}, r * 0.14),
                  S::line(c, {c.x + r * 0.45, c.y}, r * 0.14));
}

// One glyph per phase of the fast, inside a ring.
Drawing phaseIcon(int phase) {
  return {
      36, 36, [phase](Canvas& c) {
        const P m{18, 18};
        c.fill(S::ring(m, 15.5, 2.5), kInk);
        switch (phase) {
          case 1:
            c.fill(S::unite(S::line({18, 26}, {18, 10}, 3), S::line({12, 16}, {18, 10}, 3)), kInk);
            c.fill(S::line({24, 16}, {18, 10}, 3), kInk);
            break;
          case 2:
            c.fill(S::unite(S::line({18, 10}, {18, 26}, 3), S::line({12, 20}, {18, 26}, 3)), kInk);
            c.fill(S::line({24, 20}, {18, 26}, 3), kInk);
            break;
          case 3:
            for (int i = 0; i < 3; ++i)
              c.fill(S::roundedRect({11, 10.0 + i * 6}, 14, 4, 1.5), kInk);
            break;
          case 4:
            c.fill(flame({18, 27}, 16), kInk);
            break;
          case 5:
            c.fill(S::subtract(S::circle(m, 8), S::circle({21, 15}, 6)), kInk);
            break;
          default:
            c.fill(flame({18, 28}, 19), kInk);
            c.fill(S::circle({18, 24}, 3), Color{0, 0, 0, 0});
        }
      }};
}

Drawing infoIcon(const std::string& name) {
  return {40, 40, [name](Canvas& c) {
            const P m{20, 20};
            c.fill(S::circle(m, 19), kSoftOrange);
            if (name == "info-ayuno") {
              c.fill(S::ring(m, 11, 2.5), kOrange);
              c.fill(clockHands(m, 11), kOrange);
            } else if (name == "info-comidas") {
              c.fill(S::ring(m, 9, 2.5), kOrange);
              c.fill(S::line({9, 11}, {9, 29}, 2.5), kOrange);
              c.fill(S::line({31, 11}, {31, 29}, 2.5), kOrange);
            } else if (name == "info-actividad") {
              c.fill(S::circle({22, 11}, 3), kOrange);
              c.fill(S::line({20, 16}, {17, 25}, 3), kOrange);
              c.fill(S::line({17, 25}, {12, 31}, 3), kOrange);
              c.fill(S::line({17, 25}, {24, 31}, 3), kOrange);
              c.fill(S::line({13, 19}, {27, 18}, 3), kOrange);
            } else if (name == "info-alergia" || name == "info-intolerancia") {
              c.fill(S::ring(m, 10, 2.5), kOrange);
              c.fill(S::line({13, 27}, {27, 13}, 2.5), kOrange);
            } else {
              c.fill(S::polygon({{12, 28}, {14, 16}, {26, 12}, {28, 24}}), kOrange);
              c.fill(S::line({12, 28}, {22, 18}, 2), kSoftOrange);
            }
          }};
}

Drawing waitScreen(int index) {
  return {
      200, 200, [index](Canvas& c) {
        const P m{100, 100};
        c.fill(S::circle(m, 96), kSoftOrange);
        c.fill(S::circle(m, 62), kWhite);
        c.fill(S::ring(m, 62, 6), kOrange);
        for (int i = 0; i < index; ++i) {
          const double angle = -std::numbers::pi / 2 + i * std::numbers::pi / 2;
          c.fill(S::circle({m.x + 80 * std::cos(angle), m.y + 80 * std::sin(angle)}, 9), kOrange);
        }
        c.fill(S::ring(m, 30, 5), kOrange);
        c.fill(S::line({70, 70}, {70, 130}, 5), kOrange);
        c.fill(S::line({130, 70}, {130, 130}, 5), kOrange);
      }};
}

Drawing checkMark(const std::string& name) {
  unsigned hash = 2166136261u;
  for (char ch : name)
    hash = (hash ^ static_cast<unsigned char>(ch)) * 16777619u;
  const double dots = hash % 3;
  return {24, 24, [dots](Canvas& c) {
            c.fill(S::ring({12, 12}, 10, 2), kInk);
            c.fill(
                S::unite(S::line({7, 12.5}, {10.5, 16}, 2.4), S::line({10.5, 16}, {17, 8.5}, 2.4)),
                kInk);
            for (int i = 0; i < dots; ++i)
              c.fill(S::circle({20.0 - i * 3, 21}, 1), kInk);
          }};
}

Drawing screenImage(const std::string& name) {
  if (name == "ayuno-section") {
    return {
        350, 186, [](Canvas& c) {
          c.fill(S::roundedRect({0, 0}, 350, 186, 15), kOrange);
          c.fill(S::circle({300, 30}, 90), Color{255, 255, 255, 40});
          c.fill(S::ring({270, 93}, 52, 10), Color{255, 255, 255, 110});
          c.fill(S::subtract(S::ring({270, 93}, 52, 10),
                             S::polygon({{270, 93}, {270, 20}, {360, 20}, {360, 200}, {200, 200}})),
                 kWhite);
          c.fill(clockHands({270, 93}, 30), kWhite);
        }};
  }
  if (name == "food") {
    return {120, 120, [](Canvas& c) {
              c.fill(S::circle({60, 60}, 58), kSoftOrange);
              c.fill(S::circle({60, 62}, 34), kWhite);
              c.fill(S::ring({60, 62}, 34, 4), kOrange);
              c.fill(S::ring({60, 62}, 22, 2), kGrey);
              c.fill(S::line({18, 34}, {18, 92}, 5), kOrange);
              c.fill(S::roundedRect({12, 28}, 12, 24, 4), kOrange);
              c.fill(S::line({102, 30}, {102, 92}, 5), kOrange);
              c.fill(S::roundedRect({99, 28}, 8, 34, 4), kOrange);
            }};
  }
  if (name == "placeholder_menu") {
    return {300, 186, [](Canvas& c) {
              c.fill(S::roundedRect({0, 0}, 300, 186, 0), Color{0xEF, 0xEF, 0xF4, 255});
              c.fill(S::circle({150, 93}, 52), kWhite);
              c.fill(S::ring({150, 93}, 36, 3), kGrey);
              c.fill(S::line({80, 60}, {80, 126}, 5), kGrey);
              c.fill(S::line({220, 60}, {220, 126}, 5), kGrey);
            }};
  }
  if (name == "favorite-on") {
    return {24, 24, [](Canvas& c) { c.fill(heart({12, 12.5}, 20), kRed); }};
  }
  if (name == "favorite-off") {
    return {24, 24, [](Canvas& c) {
              c.fill(S::subtract(heart({12, 12.5}, 20), heart({12, 12.5}, 15)), kInk);
            }};
  }
  if (name == "back-image") {
    return {32, 32, [](Canvas& c) {
              c.fill(S::circle({16, 16}, 15.5), kWhite);
              c.fill(S::unite(S::line({18.5, 9}, {11.5, 16}, 2.6),
                              S::line({11.5, 16}, {18.5, 23}, 2.6)),
                     kInk);
            }};
  }
  return {32, 32, [](Canvas& c) {  // back-receta
            c.fill(S::line({8, 16}, {25, 16}, 2.6), kInk);
            c.fill(S::unite(S::line({15, 9}, {8, 16}, 2.6), S::line({8, 16}, {15, 23}, 2.6)), kInk);
          }};
}

Drawing drawingFor(const RequiredImage& image) {
  switch (image.kind) {
    case ImageKind::screen:
      return screenImage(image.name);
    case ImageKind::phaseIcon:
      return phaseIcon(image.name.back() - '0');
    case ImageKind::waitScreen:
      return waitScreen(image.name.back() - '0');
    case ImageKind::infoIcon:
      return infoIcon(image.name);
    case ImageKind::check:
      return checkMark(image.name);
  }
  return checkMark(image.name);
}

}  // namespace
}  // namespace nutrition::imagegen

int main(int argc, char** argv) {
  using namespace nutrition::imagegen;
  if (argc != 3) {
    std::fprintf(stderr, "usage: nutrition_imagegen RESOURCES_DIR OUTPUT_DIR\n");
    return 2;
  }
  const std::filesystem::path output = argv[2];
  std::filesystem::create_directories(output);
  int written = 0;
  for (const RequiredImage& image : requiredImages(argv[1])) {
    const Drawing drawing = drawingFor(image);
    for (int scale = 1; scale <= 3; ++scale) {
      Canvas canvas(drawing.width, drawing.height, scale);
      drawing.draw(canvas);
      const std::string suffix = scale == 1 ? "" : "@" + std::to_string(scale) + "x";
      if (!canvas.writePng(output / (image.name + suffix + ".png"))) {
        std::fprintf(stderr, "nutrition_imagegen: cannot write %s\n", image.name.c_str());
        return 1;
      }
      ++written;
    }
  }
  std::printf("%d images written to %s\n", written, output.c_str());
  return 0;
}
