#include "sandbox/PngImage.h"

#include <array>
#include <cstdint>
#include <vector>

namespace nutrition::sandbox {
namespace {

constexpr int kSize = 96;

std::uint32_t crc32(const std::uint8_t* data, std::size_t size, std::uint32_t crc = 0) {
  static const auto table = [] {
    std::array<std::uint32_t, 256> t{};
    for (std::uint32_t n = 0; n < 256; ++n) {
      std::uint32_t c = n;
      for (int k = 0; k < 8; ++k)
        c = (c & 1) ? 0xEDB88320u ^ (c >> 1) : c >> 1;
      t[n] = c;
    }
    return t;
  }();
  crc = ~crc;
  for (std::size_t i = 0; i < size; ++i)
    crc = table[(crc ^ data[i]) & 0xFF] ^ (crc >> 8);
  return ~crc;
}

void put32(std::vector<std::uint8_t>& out, std::uint32_t value) {
  for (int shift = 24; shift >= 0; shift -= 8)
    out.push_back(std::uint8_t(value >> shift));
}

void chunk(std::vector<std::uint8_t>& png, const char type[4],
           const std::vector<std::uint8_t>& data) {
  put32(png, std::uint32_t(data.size()));
  std::vector<std::uint8_t> typed(type, type + 4);
  typed.insert(typed.end(), data.begin(), data.end());
  png.insert(png.end(), typed.begin(), typed.end());
  put32(png, crc32(typed.data(), typed.size()));
}

// A zlib stream of stored (uncompressed) blocks.
std::vector<std::uint8_t> zlibStored(const std::vector<std::uint8_t>& raw) {
  std::vector<std::uint8_t> out{0x78, 0x01};
  std::uint32_t a = 1, b = 0;
  for (const auto byte : raw) {
    a = (a + byte) % 65521;
    b = (b + a) % 65521;
  }
  for (std::size_t offset = 0; offset < raw.size() || offset == 0;) {
    const std::size_t length = std::min<std::size_t>(65535, raw.size() - offset);
    const bool last = offset + length >= raw.size();
    out.push_back(last ? 1 : 0);
    out.push_back(std::uint8_t(length));
    out.push_back(std::uint8_t(length >> 8));
    out.push_back(std::uint8_t(~length));
    out.push_back(std::uint8_t(~length >> 8));
    out.insert(out.end(), raw.begin() + std::ptrdiff_t(offset),
               raw.begin() + std::ptrdiff_t(offset + length));
    offset += length;
    if (last) break;
  }
  put32(out, (b << 16) | a);
  return out;
}

}  // namespace

std::string dishImagePng(const SeedDish& dish) {
  static constexpr std::array<std::array<std::uint8_t, 3>, 4> kBackgrounds{
      {{0xF3, 0xE9, 0xDC}, {0xE3, 0xF1, 0xE0}, {0xF6, 0xDD, 0xCC}, {0xF2, 0xE1, 0xEE}}};
  const auto& background = kBackgrounds[std::size_t(dish.course) % kBackgrounds.size()];
  const auto hash = static_cast<std::uint32_t>(dish.id) * 2654435761u;
  const std::array<std::uint8_t, 3> food{std::uint8_t(96 + (hash >> 8) % 144),
                                         std::uint8_t(64 + (hash >> 16) % 144),
                                         std::uint8_t(32 + (hash >> 24) % 144)};
  const std::array<std::uint8_t, 3> plate{0xFF, 0xFF, 0xFF};

  std::vector<std::uint8_t> raw;
  raw.reserve(std::size_t(kSize) * (kSize * 3 + 1));
  const double centre = (kSize - 1) / 2.0;
  for (int y = 0; y < kSize; ++y) {
    raw.push_back(0);  // no filter
    for (int x = 0; x < kSize; ++x) {
      const double dx = x - centre, dy = y - centre;
      const double r2 = dx * dx + dy * dy;
      const auto& colour = r2 < 22.0 * 22.0 ? food : r2 < 40.0 * 40.0 ? plate : background;
      raw.insert(raw.end(), colour.begin(), colour.end());
    }
  }

  std::vector<std::uint8_t> png{0x89, 'P', 'N', 'G', '\r', '\n', 0x1A, '\n'};
  std::vector<std::uint8_t> header;
  put32(header, kSize);
  put32(header, kSize);
  header.insert(header.end(), {8, 2, 0, 0, 0});  // 8-bit RGB
  chunk(png, "IHDR", header);
  chunk(png, "IDAT", zlibStored(raw));
  chunk(png, "IEND", {});
  return std::string(png.begin(), png.end());
}

}  // namespace nutrition::sandbox
