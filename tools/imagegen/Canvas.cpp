#include "tools/imagegen/Canvas.h"

#include <zlib.h>

#include <algorithm>
#include <cmath>
#include <fstream>

namespace nutrition::imagegen {
namespace {

double length(P p) {
  return std::sqrt(p.x * p.x + p.y * p.y);
}

void put32(std::vector<std::uint8_t>& out, std::uint32_t value) {
  for (int shift = 24; shift >= 0; shift -= 8)
    out.push_back(static_cast<std::uint8_t>(value >> shift));
}

void chunk(std::vector<std::uint8_t>& out, const char* type,
           const std::vector<std::uint8_t>& data) {
  put32(out, static_cast<std::uint32_t>(data.size()));
  const std::size_t start = out.size();
  out.insert(out.end(), type, type + 4);
  out.insert(out.end(), data.begin(), data.end());
  uLong crc = crc32(0, out.data() + start, static_cast<uInt>(out.size() - start));
  put32(out, static_cast<std::uint32_t>(crc));
}

}  // namespace

Canvas::Canvas(double widthPoints, double heightPoints, int scale)
    : width_(static_cast<int>(std::lround(widthPoints * scale))),
      height_(static_cast<int>(std::lround(heightPoints * scale))),
      scale_(scale),
      rgba_(static_cast<std::size_t>(width_) * static_cast<std::size_t>(height_) * 4, 0) {}

void Canvas::fill(const Shape& shape, Color color) {
  for (int y = 0; y < height_; ++y) {
    for (int x = 0; x < width_; ++x) {
      const P at{(x + 0.5) / scale_, (y + 0.5) / scale_};
      const double coverage = std::clamp(0.5 - shape(at) * scale_, 0.0, 1.0);
      if (coverage <= 0) continue;
      auto* pixel = &rgba_[(static_cast<std::size_t>(y) * static_cast<std::size_t>(width_) +
                            static_cast<std::size_t>(x)) *
                           4];
      const double a = coverage * color.alpha / 255.0;
      const double below = pixel[3] / 255.0;
      const double outA = a + below * (1 - a);
      auto mix = [&](std::uint8_t top, std::uint8_t bottom) {
        if (outA <= 0) return std::uint8_t{0};
        return static_cast<std::uint8_t>(std::lround((top * a + bottom * below * (1 - a)) / outA));
      };
      pixel[0] = mix(color.red, pixel[0]);
      pixel[1] = mix(color.green, pixel[1]);
      pixel[2] = mix(color.blue, pixel[2]);
      pixel[3] = static_cast<std::uint8_t>(std::lround(outA * 255));
    }
  }
}

Canvas::Shape Canvas::circle(P center, double radius) {
  return [=](P p) { return length({p.x - center.x, p.y - center.y}) - radius; };
}

Canvas::Shape Canvas::ring(P center, double radius, double width) {
  return [=](P p) {
    return std::abs(length({p.x - center.x, p.y - center.y}) - radius) - width / 2;
  };
}

Canvas::Shape Canvas::line(P from, P to, double width) {
  return [=](P p) {
    const P d{to.x - from.x, to.y - from.y};
    const P v{p.x - from.x, p.y - from.y};
    const double t = std::clamp((v.x * d.x + v.y * d.y) / (d.x * d.x + d.y * d.y), 0.0, 1.0);
    return length({v.x - d.x * t, v.y - d.y * t}) - width / 2;
  };
}

Canvas::Shape Canvas::roundedRect(P origin, double width, double height, double radius) {
  return [=](P p) {
    const P c{origin.x + width / 2, origin.y + height / 2};
    const P q{std::abs(p.x - c.x) - (width / 2 - radius),
              std::abs(p.y - c.y) - (height / 2 - radius)};
    return length({std::max(q.x, 0.0), std::max(q.y, 0.0)}) + std::min(std::max(q.x, q.y), 0.0) -
           radius;
  };
}

Canvas::Shape Canvas::polygon(std::vector<P> points) {
  return [points = std::move(points)](P p) {
    double distance = 1e9;
    bool inside = false;
    for (std::size_t i = 0, j = points.size() - 1; i < points.size(); j = i++) {
      const P a = points[j];
      const P b = points[i];
      distance = std::min(distance, line(a, b, 0)(p));
      if ((b.y > p.y) != (a.y > p.y) && p.x < (a.x - b.x) * (p.y - b.y) / (a.y - b.y) + b.x) {
        inside = !inside;
      }
    }
    return inside ? -distance : distance;
  };
}

Canvas::Shape Canvas::unite(Shape a, Shape b) {
  return [=](P p) { return std::min(a(p), b(p)); };
}

Canvas::Shape Canvas::subtract(Shape a, Shape b) {
  return [=](P p) { return std::max(a(p), -b(p)); };
}

bool Canvas::writePng(const std::filesystem::path& file) const {
  std::vector<std::uint8_t> raw;
  raw.reserve(rgba_.size() + static_cast<std::size_t>(height_));
  const std::size_t stride = static_cast<std::size_t>(width_) * 4;
  for (int y = 0; y < height_; ++y) {
    raw.push_back(0);  // no filter
    const auto* row = &rgba_[static_cast<std::size_t>(y) * stride];
    raw.insert(raw.end(), row, row + stride);
  }
  uLongf packedSize = compressBound(static_cast<uLong>(raw.size()));
  std::vector<std::uint8_t> packed(packedSize);
  if (compress2(packed.data(), &packedSize, raw.data(), static_cast<uLong>(raw.size()), 9) !=
      Z_OK) {
    return false;
  }
  packed.resize(packedSize);

  std::vector<std::uint8_t> png{0x89, 'P', 'N', 'G', '\r', '\n', 0x1A, '\n'};
  std::vector<std::uint8_t> header;
  put32(header, static_cast<std::uint32_t>(width_));
  put32(header, static_cast<std::uint32_t>(height_));
  header.insert(header.end(), {8, 6, 0, 0, 0});  // 8-bit RGBA, no interlace
  chunk(png, "IHDR", header);
  chunk(png, "IDAT", packed);
  chunk(png, "IEND", {});
  std::ofstream out(file, std::ios::binary | std::ios::trunc);
  out.write(reinterpret_cast<const char*>(png.data()), static_cast<std::streamsize>(png.size()));
  return static_cast<bool>(out);
}

}  // namespace nutrition::imagegen
