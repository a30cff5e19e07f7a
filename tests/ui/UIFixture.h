#pragma once
// A UI context from real services over a test platform, and a key window with a recording
// presenter to present on.

#include <gtest/gtest.h>

#include <memory>

#include "config/NutritionSDKUtils.h"
#include "support/RecordingPresenter.h"
#include "support/TestPlatform.h"
#include "text/StringTables.h"
#include "ui/UIContext.h"
#include "views/Window.h"

namespace nutrition::test {

class UIFixture : public ::testing::Test {
 protected:
  UIFixture() {
    window_->setRootViewController(root_);
    application_.setKeyWindow(window_);
  }

  TestPlatform platform_{{.realResources = true}};
  StringTables strings_{*platform_.bundle().resources, "es"};
  NutritionSDKUtils config_{platform_.bundle(), "es"};
  NotificationCenter notifications_;
  Application application_;
  UIContext ui_{config_, strings_, application_, notifications_, platform_.bundle().mainQueue};
  std::shared_ptr<RecordingPresenter> presenter_ = std::make_shared<RecordingPresenter>();
  std::shared_ptr<Window> window_ =
      std::make_shared<Window>(presenter_, platform_.bundle().mainQueue);
  std::shared_ptr<ViewController> root_ = std::make_shared<ViewController>();
};

}  // namespace nutrition::test
