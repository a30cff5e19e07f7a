#pragma once
// One explanatory item of a question's information list (an info file of the resources).

#include <optional>
#include <string>
#include <tuple>

#include "json/JsonFields.h"

namespace nutrition {

struct AlertItem {
  std::optional<std::string> title;
  std::optional<std::string> icon;
  std::optional<std::string> text;

  bool operator==(const AlertItem&) const = default;

  static constexpr auto jsonFields() {
    return std::tuple{json::field("title", &AlertItem::title),
                      json::field("icon", &AlertItem::icon), json::field("text", &AlertItem::text)};
  }
};

}  // namespace nutrition
