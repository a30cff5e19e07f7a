#pragma once
// A button: a title, title colour and image for each state, insets, and a font for its title.
// What shows in a state falls back to the normal state's value, as on a phone.

#include <map>
#include <optional>
#include <string>

#include "views/Control.h"
#include "views/ImageRef.h"
#include "views/Text.h"
#include "views/ViewVisitor.h"

namespace nutrition {

enum class ControlState { normal, highlighted, disabled, selected };

class Button : public Control {
 public:
  [[nodiscard]] std::string_view kind() const override { return "Button"; }
  void accept(ViewVisitor& visitor) const override { visitor.visit(*this); }

  void setTitle(std::optional<std::string> title, ControlState state = ControlState::normal) {
    set(titles_, state, std::move(title));
  }
  void setTitleColor(std::optional<Color> color, ControlState state = ControlState::normal) {
    set(titleColors_, state, color);
  }
  void setImage(std::optional<ImageRef> image, ControlState state = ControlState::normal) {
    set(images_, state, std::move(image));
  }
  void setAttributedTitle(std::optional<AttributedText> title,
                          ControlState state = ControlState::normal) {
    set(attributedTitles_, state, std::move(title));
  }

  [[nodiscard]] std::optional<std::string> title(ControlState state) const {
    return get(titles_, state);
  }
  [[nodiscard]] std::optional<Color> titleColor(ControlState state) const {
    return get(titleColors_, state);
  }
  [[nodiscard]] std::optional<ImageRef> image(ControlState state) const {
    return get(images_, state);
  }
  [[nodiscard]] std::optional<AttributedText> attributedTitle(ControlState state) const {
    return get(attributedTitles_, state);
  }

  // The state the button shows now: disabled, else selected, else normal.
  [[nodiscard]] ControlState state() const {
    if (!isEnabled) return ControlState::disabled;
    return isSelected() ? ControlState::selected : ControlState::normal;
  }
  [[nodiscard]] std::optional<std::string> currentTitle() const {
    if (auto attributed = attributedTitle(state())) return attributed->string();
    return title(state());
  }
  [[nodiscard]] std::optional<Color> currentTitleColor() const { return titleColor(state()); }
  [[nodiscard]] std::optional<ImageRef> currentImage() const { return image(state()); }

  Font titleFont{17, FontWeight::regular};
  EdgeInsets contentEdgeInsets;
  EdgeInsets titleEdgeInsets;
  EdgeInsets imageEdgeInsets;

 private:
  template <class T>
  static void set(std::map<ControlState, T>& values, ControlState state, std::optional<T> value) {
    if (value) {
      values[state] = std::move(*value);
    } else {
      values.erase(state);
    }
  }
  template <class T>
  static std::optional<T> get(const std::map<ControlState, T>& values, ControlState state) {
    if (auto found = values.find(state); found != values.end()) return found->second;
    if (auto normal = values.find(ControlState::normal); normal != values.end())
      return normal->second;
    return std::nullopt;
  }

  std::map<ControlState, std::string> titles_;
  std::map<ControlState, AttributedText> attributedTitles_;
  std::map<ControlState, Color> titleColors_;
  std::map<ControlState, ImageRef> images_;
};

}  // namespace nutrition
