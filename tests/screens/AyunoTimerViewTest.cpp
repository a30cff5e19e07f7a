#include <gtest/gtest.h>

#include <numbers>

#include "FastingScreenFixture.h"
#include "screens/fasting/AyunoCells.h"
#include "views/SystemColors.h"

namespace nutrition {
namespace {

using AyunoTimer = test::FastingScreenFixture;

constexpr Color kLateRed{0xFF, 0x00, 0x2E, 255};

double degrees(double radians) {
  return radians * 180 / std::numbers::pi;
}

std::vector<const ShapeLayer*> arcs(const PieChartView& chart) {
  std::vector<const ShapeLayer*> layers;
  for (const auto& layer : chart.canvasView->layer().sublayers()) {
    layers.push_back(dynamic_cast<const ShapeLayer*>(layer.get()));
  }
  return layers;
}

TEST_F(AyunoTimer, RingColourTurnsRedAfterFourteenHoursWhateverTheScheme) {
  for (std::int64_t scheme : {1, 3}) {
    setScheme(scheme);
    struct Case {
      std::int64_t elapsed;
      Color ring;
    };
    for (const Case& c : {Case{50400, config_.primaryColor}, Case{50401, kLateRed}}) {
      SCOPED_TRACE(testing::Message() << "scheme " << scheme << ", " << c.elapsed << " s");
      elapse(c.elapsed);
      auto timer = makeView<AyunoTimerView>(screens_, false);
      EXPECT_EQ(timer->roundedView->backgroundColor, c.ring);
      EXPECT_EQ(timer->phaseIcon->tintColor(), c.ring);
      EXPECT_EQ(arcs(*timer->chart).front()->strokeColor, c.ring);
    }
  }
  preferences()->remove("ayuno_timer");
  EXPECT_EQ(makeView<AyunoTimerView>(screens_, true)->roundedView->backgroundColor,
            config_.primaryColor);
}

TEST_F(AyunoTimer, PercentageShowsTheCapAsAHundredAndNeverStopsOnNoScheme) {
  setScheme(1);
  struct Case {
    std::int64_t elapsed;
    const char* shown;
  };
  for (const Case& c : {Case{21600, "50%"}, Case{43200, "100%"}, Case{43201, "100%"},
                        Case{100000, "100%"}, Case{-3600, "-8%"}}) {
    SCOPED_TRACE(c.elapsed);
    elapse(c.elapsed);
    EXPECT_EQ(makeView<AyunoTimerView>(screens_, false)->percentageLabel->text(), c.shown);
  }
  // Without a scheme a fast just opened is 0 of 0 seconds: shown as 0 %, not a stop.
  setScheme(std::nullopt);
  elapse(0);
  EXPECT_EQ(makeView<AyunoTimerView>(screens_, false)->percentageLabel->text(), "0%");
}

TEST_F(AyunoTimer, RingIsTwoArcsFromTheTopClockwise) {
  setScheme(1);
  elapse(21600);  // half of a 12-hour fast
  auto timer = makeView<AyunoTimerView>(screens_, false);
  const auto layers = arcs(*timer->chart);
  ASSERT_EQ(layers.size(), 2u);
  const double width = timer->chart->canvasView->frame().width();
  for (const ShapeLayer* layer : layers) {
    ASSERT_NE(layer, nullptr);
    ASSERT_EQ(layer->path.size(), 1u);
    EXPECT_EQ(layer->path[0].radius, (width - 8) * 3 / 6);
    EXPECT_EQ(layer->path[0].center, timer->chart->canvasView->bounds().center());
    EXPECT_TRUE(layer->path[0].clockwise);
    EXPECT_EQ(layer->lineWidth, 8);
    EXPECT_FALSE(layer->fillColor.has_value());
    EXPECT_EQ(layer->strokeEnd, 1);
  }
  EXPECT_NEAR(degrees(layers[0]->path[0].startAngle), 270, 1e-9);
  EXPECT_NEAR(degrees(layers[0]->path[0].endAngle), 90, 1e-9);
  EXPECT_NEAR(degrees(layers[1]->path[0].startAngle), 90, 1e-9);
  EXPECT_NEAR(degrees(layers[1]->path[0].endAngle), 0.99999 * 360 + 270 - 360, 1e-9);
  EXPECT_EQ(layers[1]->strokeColor, systemColors::systemGray);
  EXPECT_EQ(timer->chart->sliceIndex, 2);
  EXPECT_EQ(timer->chart->cornerRadius, timer->chart->frame().height() / 2);

  // The animated path draws the same slices one after another.
  PieChartView chart({100, 100});
  chart.slices = std::vector<Slice>{{0.25, kLateRed, true}, {0.5, systemColors::systemGray, true}};
  chart.addSliceWithAnimation(kLateRed, 0.25);
  const auto chained = arcs(chart);
  ASSERT_EQ(chained.size(), 2u);
  EXPECT_EQ(chart.sliceIndex, 2);
  EXPECT_DOUBLE_EQ(chart.currentPercent, 0.75);
  EXPECT_NEAR(degrees(chained[1]->path[0].startAngle), 0, 1e-9);
  EXPECT_NEAR(degrees(chained[1]->path[0].endAngle), 180, 1e-9);
  ASSERT_EQ(chained[1]->animations().size(), 1u);
  EXPECT_EQ(chained[1]->animations()[0].keyPath, "strokeEnd");
  EXPECT_EQ(chained[1]->animations()[0].duration, 0);
}

TEST_F(AyunoTimer, TicksEverySecondUntilTheViewGoesAway) {
  elapse(6 * 3600);
  auto timer = makeView<AyunoTimerView>(screens_, false);
  EXPECT_EQ(timer->titleLabel->text(), "Tiempo transcurrido");
  EXPECT_EQ(timer->timerLabel->text(), "06:00:00");
  pass(1);
  EXPECT_EQ(timer->timerLabel->text(), "06:00:01");
  pass(1);
  EXPECT_EQ(timer->timerLabel->text(), "06:00:02");

  std::weak_ptr<AyunoTimerView> gone = timer;
  timer.reset();
  EXPECT_TRUE(gone.expired());
  pass(1);
  EXPECT_EQ(platform_.queue().pendingCount(), 0u);
}

TEST_F(AyunoTimer, FastingCardsTakeTheirLookAndTheInfoCardKeepsOneTimer) {
  auto card = makeView<AyunoCell>(screens_);
  EXPECT_EQ(card->veloView->cornerRadius, 15);
  EXPECT_EQ(card->button->currentTitleColor(), config_.primaryColor);
  EXPECT_EQ(card->button->backgroundColor, systemColors::white);
  EXPECT_EQ(card->button->cornerRadius, card->button->frame().height() / 2);

  elapse(12 * 3600);
  auto info = makeView<AyunoInfoCell>(screens_);
  info->loadAyunoView();
  std::weak_ptr<View> first = info->contentClock->subviews().at(0);
  info->loadAyunoView();
  ASSERT_EQ(info->contentClock->subviews().size(), 1u);
  auto* small = dynamic_cast<AyunoTimerView*>(info->contentClock->subviews()[0].get());
  ASSERT_NE(small, nullptr);
  EXPECT_TRUE(small->isSmall);
  EXPECT_TRUE(first.expired());
  pass(1);
  EXPECT_EQ(platform_.queue().pendingCount(), 1u);  // the new view's tick only

  ASSERT_TRUE(info->button->tap());
  auto* popUp = root_->presentedViewController();
  ASSERT_NE(popUp, nullptr);
  EXPECT_EQ(popUp->kind(), "PhaseAlertViewController");
}

}  // namespace
}  // namespace nutrition
