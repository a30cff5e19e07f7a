#pragma once
// A bar of items: the accessory toolbar above a picker wheel ("Hecho", "Cancelar"), and the
// items of a navigation bar.

#include <functional>
#include <optional>
#include <string>
#include <vector>

#include "views/ImageRef.h"
#include "views/View.h"
#include "views/ViewVisitor.h"

namespace nutrition {

struct BarButtonItem {
  enum class Style { plain, done };
  enum class System { none, flexibleSpace };

  std::string title;
  Style style = Style::plain;
  System system = System::none;
  std::optional<ImageRef> image;
  std::optional<Color> tintColor;
  std::function<void()> action;

  static BarButtonItem flexibleSpace() {
    BarButtonItem item;
    item.system = System::flexibleSpace;
    return item;
  }
};

class Toolbar : public View {
 public:
  [[nodiscard]] std::string_view kind() const override { return "Toolbar"; }
  void accept(ViewVisitor& visitor) const override { visitor.visit(*this); }

  std::vector<BarButtonItem> items;
  std::optional<Color> barTintColor;

  // A member's tap on the item titled `title`; false when there is none or it has no action.
  bool tapItem(const std::string& title) {
    for (const auto& item : items) {
      if (item.title == title && item.action) {
        auto action = item.action;  // the action may replace the items
        action();
        return true;
      }
    }
    return false;
  }
};

}  // namespace nutrition
