#pragma once
// The two wheels a text field can edit with: a date wheel and a picker wheel of rows.

#include <functional>
#include <optional>
#include <string>
#include <vector>

#include "base/Date.h"
#include "views/Control.h"
#include "views/ViewVisitor.h"

namespace nutrition {

class DatePicker : public Control {
 public:
  enum class Mode { time, date, dateAndTime };

  [[nodiscard]] std::string_view kind() const override { return "DatePicker"; }
  void accept(ViewVisitor& visitor) const override { visitor.visit(*this); }

  Mode datePickerMode = Mode::date;
  bool prefersWheels = true;
  std::optional<Date> minimumDate;
  std::optional<Date> maximumDate;
  std::string localeIdentifier;

  [[nodiscard]] Date date() const { return date_; }
  // Set by the program: no value-changed action.
  void setDate(Date date) { date_ = clamp(date); }
  // A member turns the wheel: the date is clamped to the limits and value-changed is sent.
  void pick(Date date) {
    date_ = clamp(date);
    sendActions(ControlEvent::valueChanged);
  }

 private:
  [[nodiscard]] Date clamp(Date date) const {
    if (minimumDate && date < *minimumDate) return *minimumDate;
    if (maximumDate && date > *maximumDate) return *maximumDate;
    return date;
  }
  Date date_{};
};

class PickerView;

// The picker's data source and delegate in one, as screens implement them.
class PickerViewDataSource {
 public:
  [[nodiscard]] virtual int numberOfComponents(const PickerView&) const { return 1; }
  [[nodiscard]] virtual int numberOfRows(const PickerView& picker, int component) const = 0;
  [[nodiscard]] virtual std::string titleForRow(const PickerView& picker, int row,
                                                int component) const = 0;
  virtual void didSelectRow(PickerView&, int /*row*/, int /*component*/) {}

 protected:
  ~PickerViewDataSource() = default;
};

class PickerView : public View {
 public:
  [[nodiscard]] std::string_view kind() const override { return "PickerView"; }
  void accept(ViewVisitor& visitor) const override { visitor.visit(*this); }

  // Not owned: the screen that shows the wheel outlives it.
  PickerViewDataSource* dataSource = nullptr;

  [[nodiscard]] int selectedRow(int component = 0) const {
    return component >= 0 && static_cast<std::size_t>(component) < selected_.size()
               ? selected_[static_cast<std::size_t>(component)]
               : 0;
  }
  // Set by the program: the delegate is not told.
  void selectRow(int row, int component = 0) {
    if (component < 0) return;
    if (selected_.size() <= static_cast<std::size_t>(component)) {
      selected_.resize(static_cast<std::size_t>(component) + 1, 0);
    }
    selected_[static_cast<std::size_t>(component)] = row;
  }
  // A member turns the wheel to `row`; out-of-range rows are ignored.
  bool pick(int row, int component = 0) {
    if (dataSource == nullptr || row < 0 || row >= dataSource->numberOfRows(*this, component)) {
      return false;
    }
    selectRow(row, component);
    dataSource->didSelectRow(*this, row, component);
    return true;
  }

 private:
  std::vector<int> selected_;
};

}  // namespace nutrition
