#pragma once
// The fasting timer: the ring of the elapsed share of the fast, the elapsed time, the
// percentage and the current phase's icon, refreshed every second by its own timer. A large
// form sits on the fasting screen, a small one on the home screen's fasting card.
//
// The timer belongs to the view: when the view goes away (a reused home card replacing its
// timer view), its timer stops with it.

#include <memory>

#include "screens/ScreenContext.h"
#include "screens/fasting/PieChartView.h"
#include "views/ImageView.h"
#include "views/Label.h"
#include "views/Timer.h"

namespace nutrition {

// The ring's colour: the host's primary colour until 14 hours and 1 second have passed (or
// while nothing is known), red from then on, whatever the member's scheme.
Color fastingRingColor(const AyunoUtils& ayuno, const NutritionSDKUtils& config);

class AyunoTimerView : public View {
 public:
  static constexpr std::int64_t kRedFromSeconds = 50401;

  AyunoTimerView(const ScreenContext& context, bool isSmall);

  [[nodiscard]] std::string_view kind() const override { return "AyunoTimerView"; }

  std::shared_ptr<View> contentView;
  std::shared_ptr<PieChartView> chart;
  std::shared_ptr<View> roundedView;
  std::shared_ptr<Label> timerLabel;
  std::shared_ptr<Label> percentageLabel;
  std::shared_ptr<Label> titleLabel;
  std::shared_ptr<ImageView> phaseIcon;
  const bool isSmall;

  void loadUI();
  void reloadUI();
  void updateChart();

  void layoutSubviews() override;

 private:
  void commonInit();

  const ScreenContext& context_;
  Timer timer_;
};

}  // namespace nutrition
