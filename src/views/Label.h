#pragma once
// A label: plain text in one font and colour, or attributed runs.

#include <optional>
#include <string>

#include "views/Text.h"
#include "views/View.h"
#include "views/ViewVisitor.h"

namespace nutrition {

class Label : public View {
 public:
  [[nodiscard]] std::string_view kind() const override { return "Label"; }
  void accept(ViewVisitor& visitor) const override { visitor.visit(*this); }

  // Setting plain text drops attributed runs, and the other way round.
  void setText(std::string text) {
    text_ = std::move(text);
    attributedText_.reset();
  }
  void setAttributedText(AttributedText text) {
    text_ = text.string();
    attributedText_ = std::move(text);
  }
  [[nodiscard]] const std::string& text() const { return text_; }
  [[nodiscard]] const std::optional<AttributedText>& attributedText() const {
    return attributedText_;
  }

  Font font;
  Color textColor{0, 0, 0, 255};
  TextAlignment textAlignment = TextAlignment::natural;
  // 0: as many lines as the text needs.
  int numberOfLines = 1;

 private:
  std::string text_;
  std::optional<AttributedText> attributedText_;
};

}  // namespace nutrition
