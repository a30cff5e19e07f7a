#include "screens/fasting/AyunoTimerView.h"

#include <chrono>
#include <cmath>
#include <limits>

#include "views/SystemColors.h"

namespace nutrition {
namespace {

constexpr Color kLateRingColor{0xFF, 0x00, 0x2E, 255};

// The percentage as shown: the 0.999 cap reads 100; anything not representable (no scheme
// gives 0/0) reads 0 rather than stopping the host.
int shownPercentage(double percentage) {
  const double value = percentage == 0.999 ? 100 : percentage * 100;
  if (!std::isfinite(value)) return 0;
  if (value >= static_cast<double>(std::numeric_limits<int>::max())) {
    return std::numeric_limits<int>::max();
  }
  if (value <= static_cast<double>(std::numeric_limits<int>::min())) {
    return std::numeric_limits<int>::min();
  }
  return static_cast<int>(value);
}

}  // namespace

Color fastingRingColor(const AyunoUtils& ayuno, const NutritionSDKUtils& config) {
  auto elapsed = ayuno.getCurrentTime();
  if (!elapsed || *elapsed < AyunoTimerView::kRedFromSeconds) return config.primaryColor;
  return kLateRingColor;
}

AyunoTimerView::AyunoTimerView(const ScreenContext& context, bool small)
    : View(Rect{{}, small ? Size{150, 150} : Size{350, 300}}), isSmall(small), context_(context) {
  commonInit();
}

void AyunoTimerView::commonInit() {
  // The layout of the two forms: the ring centred, the texts inside it.
  const double side = isSmall ? 130 : 260;
  contentView = addOutlet<View>(*this, "contentView");
  roundedView = addOutlet<View>(*contentView, "roundedView");
  roundedView->setSize({side, side});
  roundedView->alpha = 0.12;
  chart = makeView<PieChartView>(Size{side, side});
  chart->name = "chart";
  contentView->addSubview(chart);
  phaseIcon = addOutlet<ImageView>(*contentView, "phaseIcon");
  phaseIcon->setSize(isSmall ? Size{22, 22} : Size{40, 40});
  titleLabel = addOutlet<Label>(*contentView, "titleLabel");
  titleLabel->font = Font::system(isSmall ? 10 : 15);
  titleLabel->textColor = systemColors::secondaryLabel;
  titleLabel->textAlignment = TextAlignment::center;
  timerLabel = addOutlet<Label>(*contentView, "timerLabel");
  timerLabel->font = Font::system(isSmall ? 20 : 40, FontWeight::bold);
  timerLabel->textAlignment = TextAlignment::center;
  percentageLabel = addOutlet<Label>(*contentView, "percentageLabel");
  percentageLabel->font = Font::system(isSmall ? 12 : 17, FontWeight::semibold);
  percentageLabel->textAlignment = TextAlignment::center;
  layoutSubviews();
  loadUI();
}

void AyunoTimerView::layoutSubviews() {
  const Size size = frame().size;
  contentView->setFrame({{}, size});
  const double side = chart->frame().width();
  const Point ring{(size.width - side) / 2, (size.height - side) / 2};
  chart->setFrame({ring, chart->frame().size});
  roundedView->setFrame({ring, roundedView->frame().size});
  const double width = side * 0.8;
  const double x = (size.width - width) / 2;
  const double scale = side / 260;
  const Size icon = phaseIcon->frame().size;
  phaseIcon->setFrame({{(size.width - icon.width) / 2, ring.y + 38 * scale}, icon});
  titleLabel->setFrame({{x, ring.y + 88 * scale}, {width, 20 * scale}});
  timerLabel->setFrame({{x, ring.y + 110 * scale}, {width, 48 * scale}});
  percentageLabel->setFrame({{x, ring.y + 162 * scale}, {width, 22 * scale}});
}

void AyunoTimerView::loadUI() {
  titleLabel->setText(context_.ui.localized("Tiempo transcurrido"));
  roundedView->cornerRadius = roundedView->frame().height() / 2;
  reloadUI();
  timer_ = Timer::scheduled(context_.ui.mainQueue, std::chrono::seconds(1), true,
                            [this] { reloadUI(); });
}

void AyunoTimerView::reloadUI() {
  const Color ring = fastingRingColor(context_.ayuno, context_.ui.config);
  chart->cornerRadius = chart->frame().height() / 2;
  roundedView->cornerRadius = chart->frame().height() / 2;
  roundedView->backgroundColor = ring;
  timerLabel->setText(context_.ayuno.getCurrentTimeString());
  percentageLabel->setText(std::to_string(shownPercentage(context_.ayuno.getCurrentPercentage())) +
                           "%");
  auto phase = context_.ayuno.getCurrentPhase();
  phaseIcon->image.reset();
  if (phase.image) phaseIcon->image = ImageRef::named(*phase.image).withTemplateRendering();
  phaseIcon->setTintColor(ring);
  updateChart();
}

void AyunoTimerView::updateChart() {
  const double percentage = context_.ayuno.getCurrentPercentage();
  const Color ring = fastingRingColor(context_.ayuno, context_.ui.config);
  chart->slices = std::vector<Slice>{{percentage, ring, true},
                                     {0.99999 - percentage, systemColors::systemGray, true}};
  chart->sliceIndex = 0;
  chart->currentPercent = 0;
  chart->canvasView->layer().removeAllSublayers();
  for (const Slice& slice : *chart->slices) {
    chart->addSlice(slice.color, slice.percent);
    chart->currentPercent += slice.percent;
    ++chart->sliceIndex;
  }
}

}  // namespace nutrition
