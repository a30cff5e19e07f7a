#include "screens/profile/QuestionTaps.h"

#include <charconv>

#include "views/Toolbar.h"

namespace nutrition {
namespace {

bool matches(const std::optional<QuestionaryAnswer>& answer, const std::string& choice) {
  if (!answer) return false;
  if (answer->title == choice) return true;
  return answer->score && std::to_string(*answer->score) == choice;
}

TapResult failed(std::string problem) {
  return {false, std::move(problem)};
}

// "Hecho" on the field's bar.
void tapDone(TextField& field) {
  if (field.inputAccessoryView && !field.inputAccessoryView->items.empty()) {
    field.inputAccessoryView->tapItem(field.inputAccessoryView->items.front().title);
  }
}

std::optional<Date> parseDay(const std::string& text) {
  int day = 0;
  int month = 0;
  int year = 0;
  if (text.size() != 10 || text[2] != '/' || text[5] != '/') return std::nullopt;
  const char* begin = text.data();
  if (std::from_chars(begin, begin + 2, day).ec != std::errc{} ||
      std::from_chars(begin + 3, begin + 5, month).ec != std::errc{} ||
      std::from_chars(begin + 6, begin + 10, year).ec != std::errc{}) {
    return std::nullopt;
  }
  const std::chrono::year_month_day ymd{std::chrono::year{year},
                                        std::chrono::month{static_cast<unsigned>(month)},
                                        std::chrono::day{static_cast<unsigned>(day)}};
  if (!ymd.ok()) return std::nullopt;
  return Date{std::chrono::sys_days{ymd}};
}

}  // namespace

TapResult tapRows(HealthQuestionView& view, const std::vector<std::string>& choices) {
  std::vector<QuestionaryAnswerView*> rows;
  for (const auto& subview : view.answersVerticalStackView->arrangedSubviews()) {
    if (auto* row = dynamic_cast<QuestionaryAnswerView*>(subview.get())) rows.push_back(row);
  }
  for (const auto& choice : choices) {
    bool found = false;
    for (auto* row : rows)
      found |= matches(row->answer, choice);
    if (!found) return failed("no answer '" + choice + "'");
  }
  for (auto* row : rows) {
    bool wanted = false;
    for (const auto& choice : choices)
      wanted |= matches(row->answer, choice);
    if (row->isSelected && !wanted && !row->isFixed) row->didTapOnAnswer();
  }
  for (const auto& choice : choices) {
    for (auto* row : rows) {
      if (matches(row->answer, choice) && !row->isSelected) row->didTapOnAnswer();
    }
  }
  return {};
}

TapResult tapAnswer(HealthQuestionView& view, const std::vector<std::string>& choices) {
  if (!view.question || !view.question->type) return failed("the question cannot be answered");
  const AnswerType type = *view.question->type;
  if (choices.empty() && type != AnswerType::list) return failed("no answer given");
  switch (type) {
    case AnswerType::number: {
      if (!view.textField) return failed("no field");
      view.textField->tap();
      view.textField->type(choices.front());
      tapDone(*view.textField);
      return {};
    }
    case AnswerType::date: {
      const auto date = parseDay(choices.front());
      if (!date) return failed("'" + choices.front() + "' is not a date dd/MM/yyyy");
      if (!view.textField || !view.datePicker) return failed("no field");
      view.textField->tap();
      view.datePicker->pick(*date);
      tapDone(*view.textField);
      return {};
    }
    case AnswerType::picker: {
      if (!view.textField || !view.pickerView) return failed("the answers did not arrive");
      const auto& offered = view.question->answers.value_or(std::vector<QuestionaryAnswer>{});
      for (std::size_t i = 0; i < offered.size(); ++i) {
        if (!matches(offered[i], choices.front())) continue;
        view.textField->tap();
        view.pickerView->pick(static_cast<int>(i));
        tapDone(*view.textField);
        return {};
      }
      return failed("no answer '" + choices.front() + "'");
    }
    case AnswerType::closed:
    case AnswerType::buttons:
    case AnswerType::slider: {
      for (const auto& subview : view.answersStackView->arrangedSubviews()) {
        auto* button = dynamic_cast<Button*>(subview.get());
        if (button == nullptr) continue;
        auto* round = dynamic_cast<HealthRoundButton*>(button);
        const bool chosen = button->currentTitle() == choices.front() ||
                            (round != nullptr && matches(round->answer, choices.front()));
        if (!chosen) continue;
        button->tap();
        const std::vector<std::string> rest(choices.begin() + 1, choices.end());
        if (rest.empty()) return {};
        if (view.answersVerticalStackView->arrangedSubviews().empty()) return {true, {}, rest};
        return tapRows(view, rest);
      }
      return failed("no answer '" + choices.front() + "'");
    }
    case AnswerType::list:
      return tapRows(view, choices);
  }
  return {};
}

}  // namespace nutrition
