#pragma once
// One page of the waiting screens shown while the backend builds a menu, read from the shipped
// resource "wait_screens.json". Both keys are required.

#include <string>
#include <tuple>

#include "json/JsonFields.h"

namespace nutrition {

struct WaitScreen {
  std::string image;
  std::string text;

  bool operator==(const WaitScreen&) const = default;

  static constexpr auto jsonFields() {
    return std::tuple{json::required("image", &WaitScreen::image),
                      json::required("text", &WaitScreen::text)};
  }
};

}  // namespace nutrition
