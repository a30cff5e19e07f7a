#pragma once
// What the profile editor uses beyond the screen context: the REST client that sends the
// member, the standard store and clock that hold the menu screens after a send, and the
// calendar that shows dates.

#include <memory>

#include "backend/DataServiceNutrition.h"
#include "platform/Platform.h"

namespace nutrition {

struct ProfileEditorServices {
  const DataServiceNutrition& service;
  std::shared_ptr<KeyValueStore> standard;
  std::shared_ptr<const Clock> clock;
  std::shared_ptr<const Calendar> calendar;

  static ProfileEditorServices from(const Platform& platform, const DataServiceNutrition& service) {
    return {service, platform.keyValueStores->standard(), platform.clock, platform.calendar};
  }
};

}  // namespace nutrition
