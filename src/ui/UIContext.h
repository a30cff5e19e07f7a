#pragma once
// What every themed control and screen reads: the host's configuration (colours, titles), the
// string tables, the key window (to find the top screen), the in-module notification centre
// and the main queue for timers. The Core owns one; controls and screens keep a reference and
// do not outlive the Core that made them.

#include <memory>
#include <string>
#include <string_view>

#include "config/NutritionSDKUtils.h"
#include "platform/MainQueue.h"
#include "text/StringTables.h"
#include "views/NotificationCenter.h"
#include "views/Window.h"

namespace nutrition {

struct UIContext {
  NutritionSDKUtils& config;
  const StringTables& strings;
  Application& application;
  NotificationCenter& notifications;
  std::weak_ptr<MainQueue> mainQueue;

  [[nodiscard]] std::string localized(std::string_view spanishText) const {
    return strings.localized(spanishText);
  }
};

}  // namespace nutrition
