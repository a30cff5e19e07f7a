#include <gtest/gtest.h>

#include "FastingScreenFixture.h"
#include "screens/fasting/AyunoPhaseView.h"
#include "screens/fasting/PhaseAlertViewController.h"
#include "support/Snapshot.h"
#include "views/NavigationController.h"
#include "views/SystemColors.h"
#include "views/TextRenderer.h"

namespace nutrition {
namespace {

using FastingScreen = test::FastingScreenFixture;

std::vector<AyunoPhaseView*> rows(const AyunoViewController& screen) {
  std::vector<AyunoPhaseView*> shown;
  for (const auto& view : screen.phasesView->arrangedSubviews()) {
    shown.push_back(dynamic_cast<AyunoPhaseView*>(view.get()));
  }
  return shown;
}

TEST_F(FastingScreen, OpeningStartsAFastOnlyWhenNoneRuns) {
  auto screen = openScreen();
  EXPECT_EQ(preferences()->getDouble("ayuno_timer"), platform_.nowSeconds());
  ASSERT_EQ(platform_.bundle().notifications->pending().size(), 1u);
  EXPECT_EQ(screen->ayunoTitle->text(), "16/8");
  EXPECT_EQ(screen->estasAyunando->text(), "¡Estás ayunando ahora!");
  EXPECT_EQ(screen->finishButton->currentTitle(), "Terminar ayuno");
  EXPECT_EQ(screen->startTime->text(), "Hoy, 12:00");
  EXPECT_EQ(screen->finishTime->text(), "Mañana, 04:00");
  EXPECT_EQ(screen->contentTimes->cornerRadius, 12);
  for (const auto& point : screen->points) {
    EXPECT_EQ(point->cornerRadius, point->frame().height() / 2);
  }
  screen->dismiss(false);

  // A fast that is running keeps its start...
  elapse(3 * 3600);
  const double runningStart = *preferences()->getDouble("ayuno_timer");
  openScreen()->dismiss(false);
  EXPECT_EQ(preferences()->getDouble("ayuno_timer"), runningStart);

  // ...one that ran its 16 hours and the day after is over: the screen starts a new one and
  // moves the notification to the new end.
  platform_.clock().advance(std::chrono::hours(1));
  elapse(40 * 3600);
  openScreen();
  EXPECT_EQ(preferences()->getDouble("ayuno_timer"), platform_.nowSeconds());
  const auto pending = platform_.bundle().notifications->pending();
  ASSERT_EQ(pending.size(), 1u);
  EXPECT_EQ(pending[0].trigger.day, 22u);
  EXPECT_EQ(pending[0].trigger.hour, 5);
}

TEST_F(FastingScreen, PhaseRowsFollowTheSchemeAndTheElapsedHours) {
  setScheme(1);
  elapse(9 * 3600);
  auto screen = openScreen();
  EXPECT_EQ(screen->ayunoTitle->text(), "12/12");
  auto shown = rows(*screen);
  ASSERT_EQ(shown.size(), 4u);  // the 14- and 16-hour phases lie beyond a 12-hour fast
  const std::vector<bool> enabled{true, true, true, false};
  for (std::size_t i = 0; i < shown.size(); ++i) {
    SCOPED_TRACE(i);
    ASSERT_NE(shown[i], nullptr);
    EXPECT_EQ(shown[i]->isEnabled, enabled[i]);
    const Color expected = enabled[i] ? config_.primaryColor : systemColors::tertiaryLabel;
    EXPECT_EQ(shown[i]->titleLabel->textColor, expected);
    EXPECT_EQ(shown[i]->timeHelp->textColor, expected);
    EXPECT_EQ(shown[i]->icon->tintColor(), expected);
    EXPECT_EQ(shown[i]->button->backgroundColor, expected);
    EXPECT_EQ(shown[i]->bullet->cornerRadius, 4.5);
  }
  EXPECT_EQ(shown[2]->titleLabel->text(), ayuno_.phases[2].name);

  // Each appearance adds the rows again.
  auto cover = std::make_shared<ViewController>();
  cover->modalPresentationStyle = ModalPresentationStyle::fullScreen;
  screen->present(cover, false);
  cover->dismiss(false);
  EXPECT_EQ(rows(*screen).size(), 8u);

  setScheme(std::nullopt);
  auto unschemed = std::make_shared<AyunoViewController>(screens_);
  root_->dismiss(false);
  root_->present(unschemed, false);
  EXPECT_EQ(unschemed->ayunoTitle->text(), "16/8");
  EXPECT_EQ(rows(*unschemed).size(), 1u);  // only the phase from hour 0
}

TEST_F(FastingScreen, APhaseRowOpensItsPopUpOnTheTopScreen) {
  elapse(10 * 3600);
  auto screen = openScreen();
  auto shown = rows(*screen);
  ASSERT_EQ(shown.size(), 6u);
  ASSERT_TRUE(shown[3]->button->tap());
  auto* popUp = dynamic_cast<PhaseAlertViewController*>(screen->presentedViewController());
  ASSERT_NE(popUp, nullptr);
  EXPECT_TRUE(popUp->wasPresentedAnimated());
  EXPECT_EQ(popUp->titleLabel->text(), ayuno_.phases[3].name);
  EXPECT_EQ(popUp->textLabel->text(), ayuno_.phases[3].helpText);
  ASSERT_TRUE(popUp->icon->image.has_value());
  EXPECT_EQ(popUp->icon->image->name, ayuno_.phases[3].image);
  EXPECT_EQ(presenter_->events.back(),
            "present PhaseAlertViewController on AyunoViewController (animated)");
}

TEST_F(FastingScreen, FinishingEndsTheFastAndClosesWhatTheScreenWasShownIn) {
  auto home = std::make_shared<NavigationController>(std::make_shared<ViewController>());
  root_->present(home, false);
  auto screen = std::make_shared<AyunoViewController>(screens_);
  home->pushViewController(screen, true);
  ASSERT_TRUE(preferences()->getDouble("ayuno_timer").has_value());

  ASSERT_TRUE(screen->finishButton->tap());
  EXPECT_FALSE(preferences()->getDouble("ayuno_timer").has_value());
  EXPECT_EQ(home->viewControllers().size(), 1u);
  EXPECT_EQ(root_->presentedViewController(), nullptr);
  EXPECT_EQ(presenter_->events.back(),
            "dismiss NavigationController from ViewController (animated)");
  // The notification of the ended fast stays scheduled.
  EXPECT_EQ(platform_.bundle().notifications->pending().size(), 1u);
}

TEST_F(FastingScreen, Snapshots) {
  struct Case {
    const char* name;
    std::int64_t elapsedAtOpening;
    std::int64_t passedAfter;
  };
  for (const Case& c :
       {Case{"AyunoViewController_0s", 0, 0}, Case{"AyunoViewController_9h", 9 * 3600, 0},
        Case{"AyunoViewController_14h1s", 14 * 3600, 1},
        Case{"AyunoViewController_40h", 30 * 3600, 10 * 3600}}) {
    SCOPED_TRACE(c.name);
    preferences()->remove("ayuno_timer");
    if (c.elapsedAtOpening > 0) elapse(c.elapsedAtOpening);
    auto screen = openScreen();
    pass(c.passedAfter);
    test::expectSnapshot(c.name, renderText(*screen));
    screen->dismiss(false);
  }
}

}  // namespace
}  // namespace nutrition
