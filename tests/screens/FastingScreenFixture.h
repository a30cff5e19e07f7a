#pragma once
// The fasting screens built from real services over a test platform: a member with a scheme,
// the real phase table, a key window with a recording presenter, and a fake clock that also
// drives the screens' timers.

#include <gtest/gtest.h>

#include <memory>

#include "config/NutritionSDKUtils.h"
#include "fasting/AyunoUtils.h"
#include "screens/ScreenContext.h"
#include "screens/fasting/AyunoViewController.h"
#include "support/FakeLinks.h"
#include "support/RecordingPresenter.h"
#include "support/TestPlatform.h"
#include "support/UnusedScreenLinks.h"
#include "text/StringTables.h"
#include "views/Window.h"

namespace nutrition::test {

class FastingScreenFixture : public ::testing::Test {
 protected:
  FastingScreenFixture() {
    window_->setRootViewController(root_);
    application_.setKeyWindow(window_);
    setScheme(3);
  }

  void setScheme(std::optional<std::int64_t> scheme) {
    links_.member = NutritionUser::empty();
    links_.member->intermittentFastingID = scheme;
  }
  // A fast that started `seconds` ago.
  void elapse(std::int64_t seconds) {
    preferences()->set("ayuno_timer", platform_.nowSeconds() - static_cast<double>(seconds));
  }
  std::shared_ptr<KeyValueStore> preferences() {
    return platform_.stores().suite("NutritionPreferences");
  }
  // Lets `seconds` pass and runs what fell due, the screens' timers included.
  void pass(std::int64_t seconds) {
    platform_.clock().advance(std::chrono::seconds(seconds));
    platform_.queue().runUntilIdle();
  }
  std::shared_ptr<AyunoViewController> openScreen() {
    auto screen = std::make_shared<AyunoViewController>(screens_);
    screen->modalPresentationStyle = ModalPresentationStyle::fullScreen;
    window_->topViewController()->present(screen, false);
    return screen;
  }

  TestPlatform platform_{{.now = utc(2026, 11, 21, 12), .realResources = true}};
  StringTables strings_{*platform_.bundle().resources, "es"};
  NutritionSDKUtils config_{platform_.bundle(), "es"};
  FakeLinks links_;
  AyunoUtils ayuno_{platform_.bundle(), links_, strings_};
  NotificationCenter notifications_;
  Application application_;
  UIContext ui_{config_, strings_, application_, notifications_, platform_.bundle().mainQueue};
  test::UnusedScreenLinks unused_;
  ScreenContext screens_{ui_, ayuno_, links_, unused_, unused_};
  std::shared_ptr<RecordingPresenter> presenter_ = std::make_shared<RecordingPresenter>();
  std::shared_ptr<Window> window_ =
      std::make_shared<Window>(presenter_, platform_.bundle().mainQueue);
  std::shared_ptr<ViewController> root_ = std::make_shared<ViewController>();
};

}  // namespace nutrition::test
