#pragma once
// Everything NutritionKit needs from the system it runs on, in one bundle. The platform shell
// (the Linux command line, the iOS framework) installs its own at start; tests install fakes
// and restore the previous bundle. Until one is installed, portable defaults apply: the system
// clock, UTC, in-memory stores, no device language, no network, a main queue that runs only
// when drained, no resources, fonts only remembered and a documents folder under the
// temporary directory.
//
// The core is built from the installed bundle (facade/Core.h); installing another one discards
// everything built from the old one.

#include <memory>
#include <string>

#include "platform/Calendar.h"
#include "platform/Clock.h"
#include "platform/DeviceLocale.h"
#include "platform/FontRegistry.h"
#include "platform/HttpClient.h"
#include "platform/KeyValueStore.h"
#include "platform/MainQueue.h"
#include "platform/NotificationScheduler.h"
#include "platform/ResourceBundle.h"

namespace nutrition {

// The screens' presentation mirror; its interface lives with the screen toolkit (views/).
class Presenter;

struct Platform {
  std::shared_ptr<const Clock> clock;
  std::shared_ptr<const Calendar> calendar;
  std::shared_ptr<KeyValueStores> keyValueStores;
  std::shared_ptr<const DeviceLocale> locale;
  std::shared_ptr<HttpClient> http;
  std::shared_ptr<MainQueue> mainQueue;
  std::shared_ptr<const ResourceBundle> resources;
  std::shared_ptr<NotificationScheduler> notifications;
  std::shared_ptr<FontRegistry> fonts;
  // Shows what the core presents on the key window; none: screens exist only in the core.
  std::shared_ptr<Presenter> presenter;
  // The user's documents folder; the image cache lives below it.
  std::string documentsDirectory;

  // The installed bundle; never null.
  static std::shared_ptr<const Platform> current();
  // Installs `platform` (its empty members filled with the portable defaults), tells the
  // observer, and returns the bundle it replaces.
  static std::shared_ptr<const Platform> install(std::shared_ptr<const Platform> platform);
  static std::shared_ptr<Platform> portableDefaults();
  // `observer` runs after every install, on the installing thread. One observer: the
  // composition root, which drops what it built from the old bundle.
  static void setInstallObserver(void (*observer)());
};

}  // namespace nutrition
