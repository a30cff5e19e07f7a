#include "screens/menu/NutricionDayView.h"

#include "text/TextCase.h"
#include "text/WeekdaySymbols.h"
#include "views/SystemColors.h"

namespace nutrition {

namespace {
constexpr double kCrossDissolveSeconds = 0.25;
}

NutricionDayView::NutricionDayView(const ScreenContext& context) : context_(context) {
  setFrame({{}, {44, 64}});
  contentView = addOutlet<View>(*this, "contentView");
  contentView->setFrame(bounds());
  weekDayLabel = addOutlet<Label>(*contentView, "weekDayLabel");
  weekDayLabel->setFrame({{0, 10}, {44, 18}});
  weekDayLabel->font = Font::system(13);
  weekDayLabel->textAlignment = TextAlignment::center;
  monthDay = addOutlet<Label>(*contentView, "monthDay");
  monthDay->setFrame({{0, 32}, {44, 22}});
  monthDay->textAlignment = TextAlignment::center;
  addTapGesture([this] { didTapOnDay(); });
  applyLook(false);
}

void NutricionDayView::setSelected(bool selected) {
  isSelected_ = selected;
  contentView->lastAnimationDuration = kCrossDissolveSeconds;
  applyLook(selected);
}

void NutricionDayView::applyLook(bool selected) {
  if (selected) {
    monthDay->font = Font::system(17, FontWeight::bold);
    contentView->backgroundColor = context_.ui.config.primaryColor.withAlpha(0.75);
    weekDayLabel->textColor = systemColors::white;
    monthDay->textColor = systemColors::white;
  } else {
    monthDay->font = Font::system(17);
    contentView->backgroundColor = systemColors::clear;
    weekDayLabel->textColor = systemColors::secondaryLabel;
    monthDay->textColor = systemColors::secondaryLabel;
  }
}

void NutricionDayView::loadDate(Date day) {
  date = day;
  const LocalDateTime local = context_.services.platform().calendar->components(day);
  const auto symbols = shortWeekdaySymbols(context_.ui.strings.language());
  weekDayLabel->setText(capitalizingFirstLetter(symbols[local.weekday - 1]));
  monthDay->setText(std::to_string(local.day));
}

void NutricionDayView::didTapOnDay() {
  setSelected(true);
  if (dayDelegate != nullptr) dayDelegate->changeDay(*this);
}

}  // namespace nutrition
