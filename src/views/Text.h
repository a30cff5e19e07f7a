#pragma once
// Fonts and attributed text: what labels, buttons and text fields show.

#include <string>
#include <vector>

#include "base/Color.h"

namespace nutrition {

enum class FontWeight { regular, medium, semibold, bold };

struct Font {
  double size = 17;
  FontWeight weight = FontWeight::regular;
  bool operator==(const Font&) const = default;

  static Font system(double size, FontWeight weight = FontWeight::regular) {
    return {size, weight};
  }
};

enum class TextAlignment { natural, left, center, right };

// One run of attributed text: its characters and how they look.
struct TextRun {
  std::string text;
  Font font;
  Color color;
  bool operator==(const TextRun&) const = default;
};

// Runs in order, and the paragraph's extra space between lines.
struct AttributedText {
  std::vector<TextRun> runs;
  double lineSpacing = 0;
  bool operator==(const AttributedText&) const = default;

  [[nodiscard]] std::string string() const {
    std::string text;
    for (const auto& run : runs)
      text += run.text;
    return text;
  }
};

}  // namespace nutrition
