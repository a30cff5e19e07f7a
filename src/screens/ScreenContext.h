#pragma once
// What the product's screens reach besides the look: the services they read and drive, and the
// router for the screens that lead to other screens. The Core owns one and hands it to every
// screen it makes; a screen does not outlive that Core.

#include <functional>
#include <memory>

#include "backend/RequestContext.h"
#include "fasting/AyunoUtils.h"
#include "logic/NutritionProfileUtils.h"
#include "logic/NutritionUtils.h"
#include "session/NutritionAuth.h"
#include "ui/UIContext.h"
#include "views/ViewController.h"

namespace nutrition {

// The services behind the menu and profile screens. The data holder is made the first time it
// is asked for (making it sends its creation requests), so a screen asks only when it needs it.
class ScreenServices {
 public:
  virtual NutritionUtils& utils() = 0;
  virtual NutritionProfileUtils& profileUtils() = 0;
  virtual NutritionAuth& session() = 0;
  // The REST client, for the screens that send the member.
  [[nodiscard]] virtual const DataServiceNutrition& dataService() const = 0;
  // The clock and calendar the screens count days and times with.
  [[nodiscard]] virtual const Platform& platform() const = 0;

 protected:
  ~ScreenServices() = default;
};

// The router as the screens reach it: the router sits above the screens and makes them, so a
// screen asks for another screen through this.
class ScreenRoutes {
 public:
  using ScreenCompletion = std::function<void(std::shared_ptr<ViewController>)>;

  // The weekly menu, the waiting screens or the unregistered-member alert, as the session and
  // the held menu decide.
  virtual void showWeekMenu() = 0;
  // The profile editor over the top screen; nothing without questionnaire pages.
  virtual void showProfile() = 0;
  // A new fasting screen, made on the main queue's next turn.
  virtual void getAyunoViewController(ScreenCompletion completion) = 0;

 protected:
  ~ScreenRoutes() = default;
};

struct ScreenContext {
  const UIContext& ui;
  AyunoUtils& ayuno;
  // The session's member: the fasting scheme, the diet, the profile.
  const CurrentUserSource& user;
  ScreenServices& services;
  ScreenRoutes& routes;

  [[nodiscard]] NutritionUtils& utils() const { return services.utils(); }
};

}  // namespace nutrition
