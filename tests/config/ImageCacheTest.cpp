#include "config/ImageCache.h"

#include <gtest/gtest.h>
#include <unistd.h>

#include <filesystem>
#include <fstream>

#include "sandbox/PngImage.h"

namespace nutrition {
namespace {

namespace fs = std::filesystem;

std::string bytes(std::initializer_list<unsigned> values) {
  std::string out;
  for (const unsigned value : values)
    out += static_cast<char>(value);
  return out;
}

// A real PNG: the sandbox's drawing of a dish.
std::string png() {
  return sandbox::dishImagePng(sandbox::SeedData::embedded().dishes.front());
}

// A progressive JPEG's structure: an EXIF thumbnail (a JPEG of its own, with its own EOI), two
// scans whose data hold a stuffed FF, restart markers and fill bytes, then EOI.
std::string jpeg() {
  const std::string thumbnail =
      bytes({0xFF, 0xD8, 0xFF, 0xDA, 0x00, 0x04, 0x01, 0x02, 0x03, 0x04, 0xFF, 0xD9});
  const std::string app1 = "Exif" + bytes({0, 0}) + thumbnail;
  return bytes({0xFF, 0xD8}) + bytes({0xFF, 0xE0, 0x00, 0x10}) + "JFIF" +
         bytes({0x00, 0x01, 0x01, 0x00, 0x00, 0x01, 0x00, 0x01, 0x00, 0x00}) +
         bytes({0xFF, 0xE1, 0x00, unsigned(app1.size() + 2)}) + app1 +
         bytes({0xFF, 0xC2, 0x00, 0x0B, 0x08, 0x00, 0x01, 0x00, 0x01, 0x01, 0x01, 0x11, 0x00}) +
         bytes({0xFF, 0xDA, 0x00, 0x08, 0x01, 0x01, 0x00, 0x00, 0x3F, 0x00}) +
         bytes({0x12, 0xFF, 0x00, 0x34, 0xFF, 0xD0, 0x56, 0xFF, 0xFF, 0xD1, 0xD9}) +
         bytes({0xFF, 0xDA, 0x00, 0x08, 0x01, 0x01, 0x00, 0x01, 0x3F, 0x00, 0xAB, 0xCD}) +
         bytes({0xFF, 0xD9});
}

// A 1x1 GIF with a global colour table, a graphic control extension and an image whose data
// hold the trailer's byte value.
std::string gif() {
  return "GIF89a" + bytes({0x01, 0x00, 0x01, 0x00, 0x80, 0x00, 0x00}) +
         bytes({0xFF, 0xFF, 0xFF, 0x00, 0x00, 0x00}) +
         bytes({0x21, 0xF9, 0x04, 0x01, 0x00, 0x00, 0x00, 0x00}) +
         bytes({0x2C, 0x00, 0x00, 0x00, 0x00, 0x01, 0x00, 0x01, 0x00, 0x00}) +
         bytes({0x02, 0x03, 0x44, 0x3B, 0x01, 0x00}) + bytes({0x3B});
}

// A lossless WebP: RIFF, its size, and one padded VP8L chunk.
std::string webp() {
  return "RIFF" + bytes({18, 0, 0, 0}) + "WEBPVP8L" + bytes({5, 0, 0, 0}) +
         bytes({0x2F, 0x00, 0x00, 0x00, 0x00, 0x00});
}

TEST(IsWholeImage, EveryFormatIsWholeOnlyToItsLastByte) {
  for (const auto& [name, image] : {std::pair{"PNG", png()}, std::pair{"JPEG", jpeg()},
                                    std::pair{"GIF", gif()}, std::pair{"WebP", webp()}}) {
    SCOPED_TRACE(name);
    EXPECT_TRUE(looksLikeImage(image));
    EXPECT_TRUE(isWholeImage(image));
    // Cut anywhere, including right after the JPEG thumbnail's EOI or the GIF data's 0x3B.
    for (std::size_t size = 0; size < image.size(); ++size) {
      if (isWholeImage(image.substr(0, size))) ADD_FAILURE() << "whole when cut to " << size;
    }
    EXPECT_FALSE(isWholeImage(image + '\0'));
  }
}

TEST(IsWholeImage, DamagedOrForeignBytesAreNotWhole) {
  const std::string whole = png();
  const std::string iend = whole.substr(whole.size() - 12);
  std::string wrongCrc = whole;
  wrongCrc.back() ^= 1;
  std::string hugeChunk = whole;
  hugeChunk.replace(8, 4, bytes({0xFF, 0xFF, 0xFF, 0xF0}));
  std::string shortRiff = webp();
  shortRiff[4] = 17;
  const std::string jpegWithoutEoi = jpeg().substr(0, jpeg().size() - 2) + bytes({0xFF, 0xD8});
  struct Case {
    const char* name;
    std::string bytes;
  };
  for (const Case& c : {
           Case{"nothing", ""},
           Case{"an HTML error page", "<html><body>Not found</body></html>"},
           Case{"a PNG signature alone", whole.substr(0, 8)},
           Case{"PNG data after IEND", whole + iend},
           Case{"PNG IEND with a wrong CRC", wrongCrc},
           Case{"PNG chunk longer than the file", hugeChunk},
           Case{"JPEG ending in another marker", jpegWithoutEoi},
           Case{"WebP size off by one", shortRiff},
       }) {
    SCOPED_TRACE(c.name);
    EXPECT_FALSE(isWholeImage(c.bytes));
  }
}

class ImageCacheTest : public ::testing::Test {
 protected:
  void SetUp() override {
    fs::remove_all(documents_);
    cache_.createFolder(Folder::recipes);
  }
  void TearDown() override { fs::remove_all(documents_); }

  static Image image(const std::string& bytes) { return Image{{bytes.begin(), bytes.end()}}; }

  const fs::path documents_ =
      fs::temp_directory_path() / ("nutrition-image-cache-" + std::to_string(::getpid()));
  ImageCache cache_{documents_.string()};
};

TEST_F(ImageCacheTest, KeepsOnlyWholeImages) {
  const std::string whole = png();
  const std::string url = "https://cdn.test/img/dish-1.png";

  cache_.write(image(whole.substr(0, whole.size() / 2)), url, Folder::recipes);
  EXPECT_FALSE(cache_.exists(url, Folder::recipes));
  EXPECT_FALSE(cache_.read(url, Folder::recipes).has_value());

  cache_.write(image(whole), url, Folder::recipes);
  EXPECT_TRUE(cache_.exists(url, Folder::recipes));
  EXPECT_EQ(cache_.read(url, Folder::recipes), image(whole));

  // A file cut short on disk is not read back, and goes, so the image is fetched again.
  const fs::path file = fs::path(cache_.folderURL(Folder::recipes)) / "dish-1.png";
  std::ofstream(file, std::ios::binary | std::ios::trunc) << whole.substr(0, whole.size() - 1);
  EXPECT_FALSE(cache_.read(url, Folder::recipes).has_value());
  EXPECT_FALSE(cache_.exists(url, Folder::recipes));
}

}  // namespace
}  // namespace nutrition
