#pragma once
// What the product's screens reach besides the look: the services they read and drive. The
// Core owns one and hands it to every screen it makes; a screen does not outlive that Core.

#include "backend/RequestContext.h"
#include "fasting/AyunoUtils.h"
#include "ui/UIContext.h"

namespace nutrition {

struct ScreenContext {
  const UIContext& ui;
  AyunoUtils& ayuno;
  // The session's member: the fasting scheme.
  const CurrentUserSource& user;
};

}  // namespace nutrition
