#pragma once
// The editor of one question of the health questionnaire. The question's type picks the
// control: a decimal text field (number), a date wheel (date), a row of red buttons (closed),
// round answer buttons (buttons, slider), tickable rows (list) or a picker wheel (picker).
// `answer` holds what the member chose, starting from the member's current value; what the
// question answers is `getSelectedAnswer()`:
//   - number: the typed text, as text;  date: a date;  closed: the default, untouched;
//   - buttons, slider, list, picker: the chosen score; a multiple-selection question the list
//     of ticked scores (nothing when none is ticked);
//   - a yes/no question whose yes (score 1) opens sub-answers: the list of ticked sub-answer
//     scores, the empty list standing for no (score 0).
// Rows fetched from a catalogue whose score is in `fixed` are ticked and locked; rows of the
// question's own answers never are. Every loader clears what an earlier load added.

#include <cstdint>
#include <memory>
#include <optional>
#include <vector>

#include "logic/AnyValue.h"
#include "model/HealthProfile.h"
#include "platform/Calendar.h"
#include "screens/ScreenContext.h"
#include "screens/profile/AnswerDelegate.h"
#include "screens/profile/HealthRoundButton.h"
#include "screens/profile/QuestionaryAnswerView.h"
#include "views/Button.h"
#include "views/Label.h"
#include "views/Pickers.h"
#include "views/StackView.h"
#include "views/TextField.h"

namespace nutrition {

class HealthQuestionView : public View, public AnswerDelegate, public PickerViewDataSource {
 public:
  // `calendar` formats the date field; the content is loaded when the view wakes (makeView).
  HealthQuestionView(const ScreenContext& context, std::shared_ptr<const Calendar> calendar,
                     std::optional<HealthQuestion> edited, AnyValue defaultAnswer,
                     std::optional<std::vector<std::int64_t>> lockedScores);

  [[nodiscard]] std::string_view kind() const override { return "HealthQuestionView"; }
  void awakeFromNib() override { loadUI(); }

  std::shared_ptr<View> contentView;
  std::shared_ptr<StackView> answersStackView;
  std::shared_ptr<StackView> answersVerticalStackView;
  std::shared_ptr<Button> infoButton;
  std::shared_ptr<Label> questiontTitle;
  // The field of a number, date or picker question, and its wheel.
  std::shared_ptr<TextField> textField;
  std::shared_ptr<DatePicker> datePicker;
  std::shared_ptr<PickerView> pickerView;

  std::optional<HealthQuestion> question;
  AnyValue answer;
  std::optional<std::vector<std::int64_t>> fixed;

  void loadUI();
  void loadDecimalField();
  void loadClosedAnswers();
  void loadDateField();
  void loadButtonsAnswers();
  void loadListAnswers(const AnyValue& selected);
  void loadPickerField(std::vector<QuestionaryAnswer> answers);
  // Clears the rows and stores `selected` as the answer; with `hasAnswers`, lists the
  // question's catalogue as rows.
  void loadSubAnswers(bool hasAnswers, const AnyValue& selected);
  void showAlertInfo();

  [[nodiscard]] AnyValue getSelectedAnswer() const;
  [[nodiscard]] bool isFilled() const;

  // A tap on a top-level round button: the only one selected.
  void selectedHealthButton(HealthRoundButton& tapped);
  void selectAnswer(QuestionaryAnswerView& row) override;
  void selectAnswerButton(HealthRoundButton& tapped) override;

  [[nodiscard]] int numberOfRows(const PickerView& picker, int component) const override;
  [[nodiscard]] std::string titleForRow(const PickerView& picker, int row,
                                        int component) const override;

  // Sizes the stacks to their content and returns the height the question needs.
  double fitContent();

 private:
  [[nodiscard]] bool isMultipleSelection() const;
  [[nodiscard]] std::string identifier() const;
  // A question whose answers include one that opens sub-answers: yes (1) and no (0).
  [[nodiscard]] bool isYesNo() const;
  [[nodiscard]] std::vector<QuestionaryAnswerView*> rows() const;
  [[nodiscard]] AnyValue tickedScores() const;
  void clearAnswersStack();
  void clearRows();
  std::shared_ptr<TextField> makeField();
  std::shared_ptr<QuestionaryAnswerView> makeRow(const QuestionaryAnswer& value,
                                                 const AnyValue& selected);
  void addCatalogueRows(const std::vector<QuestionaryAnswer>& answers, const AnyValue& selected);

  const ScreenContext& context_;
  std::shared_ptr<const Calendar> calendar_;
  std::shared_ptr<StackView> content_;
  std::shared_ptr<View> header_;
  // True while the rows below a yes answer are shown.
  bool subAnswersOpen_ = false;
  // Only the latest catalogue load adds rows.
  unsigned loads_ = 0;
};

// Whether `selected` picks the answer scored `score`: an equal integer, or a list holding it
// (a missing score counts as 0 in a list and never matches an integer).
bool isPreselected(const AnyValue& selected, std::optional<std::int64_t> score);

}  // namespace nutrition
