#pragma once
// One day of the home screen's week strip: the short weekday name over the day of the month.
// Tapping it selects it and tells the strip's owner.

#include <memory>
#include <optional>

#include "base/Date.h"
#include "screens/ScreenContext.h"
#include "views/Label.h"
#include "views/View.h"

namespace nutrition {

class NutricionDayView;

class NutricionDayDelegate {
 public:
  virtual void changeDay(NutricionDayView& dayView) = 0;

 protected:
  ~NutricionDayDelegate() = default;
};

class NutricionDayView : public View {
 public:
  explicit NutricionDayView(const ScreenContext& context);

  [[nodiscard]] std::string_view kind() const override { return "NutricionDayView"; }

  std::optional<Date> date;
  std::shared_ptr<Label> weekDayLabel;
  std::shared_ptr<Label> monthDay;
  std::shared_ptr<View> contentView;
  NutricionDayDelegate* dayDelegate = nullptr;

  [[nodiscard]] bool isSelected() const { return isSelected_; }
  // Restyles the day in a short cross-dissolve.
  void setSelected(bool selected);

  void loadDate(Date day);
  void didTapOnDay();
  // The selected or unselected look, without touching the selection.
  void applyLook(bool selected);

 private:
  const ScreenContext& context_;
  bool isSelected_ = false;
};

}  // namespace nutrition
