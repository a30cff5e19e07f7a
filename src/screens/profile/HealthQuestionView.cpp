#include "screens/profile/HealthQuestionView.h"

#include <algorithm>
#include <cmath>

#include "screens/profile/HealthToolbar.h"
#include "screens/profile/QuestionnaireRules.h"
#include "ui/ProfileAlertInfoViewController.h"
#include "ui/ThemedButtons.h"
#include "views/SystemColors.h"

namespace nutrition {
namespace {

constexpr Color kSystemRed{255, 59, 48, 255};
constexpr Color kPlaceholderColor{60, 60, 67, 204};  // alpha 0.8
constexpr double kControlHeight = 43;
constexpr double kRowHeight = 52;
constexpr double kRowSpacing = 8;
constexpr double kSpacing = 12;
constexpr std::size_t kButtonsInARow = 3;
constexpr const char* kDateFormat = "dd/MM/yyyy";

// A closed answer's button, tagged with the index of its label.
class ClosedAnswerButton : public RoundButton {
 public:
  ClosedAnswerButton(const UIContext& ui, int buttonTag) : RoundButton(ui), tag(buttonTag) {}
  int tag;
};

std::optional<std::string> plainText(const AnyValue& value) {
  if (auto text = value.text()) return text;
  if (auto integer = value.integer()) return std::to_string(*integer);
  return std::nullopt;
}

template <class T>
std::shared_ptr<HealthQuestionView> locked(const std::weak_ptr<T>& weak) {
  return std::static_pointer_cast<HealthQuestionView>(weak.lock());
}

}  // namespace

bool isPreselected(const AnyValue& selected, std::optional<std::int64_t> score) {
  if (auto integer = selected.integer()) return score && *score == *integer;
  if (auto list = selected.integerList()) {
    return std::find(list->begin(), list->end(), score.value_or(0)) != list->end();
  }
  return false;
}

HealthQuestionView::HealthQuestionView(const ScreenContext& context,
                                       std::shared_ptr<const Calendar> calendar,
                                       std::optional<HealthQuestion> edited, AnyValue defaultAnswer,
                                       std::optional<std::vector<std::int64_t>> lockedScores)
    : question(std::move(edited)),
      answer(std::move(defaultAnswer)),
      fixed(std::move(lockedScores)),
      context_(context),
      calendar_(std::move(calendar)) {
  setFrame({{}, {318, 0}});
  contentView = addOutlet<View>(*this, "contentView");
  content_ = makeView<StackView>(Axis::vertical);
  content_->spacing = kSpacing;
  contentView->addSubview(content_);
  header_ = makeView<View>();
  content_->addArrangedSubview(header_);
  questiontTitle = addOutlet<Label>(*header_, "questiontTitle");
  questiontTitle->font = Font::system(17, FontWeight::semibold);
  infoButton = addOutlet<Button>(*header_, "infoButton");
  infoButton->setTitle("ⓘ");
  infoButton->setTitleColor(context.ui.config.primaryColor);
  infoButton->addTarget(ControlEvent::touchUpInside, [this] { showAlertInfo(); });
  answersStackView = addOutlet<StackView>(*content_, "answersStackView", Axis::horizontal);
  answersStackView->spacing = kRowSpacing;
  answersStackView->distribution = StackDistribution::fillEqually;
  answersVerticalStackView =
      addOutlet<StackView>(*content_, "answersVerticalStackView", Axis::vertical);
  answersVerticalStackView->spacing = kRowSpacing;
}

bool HealthQuestionView::isMultipleSelection() const {
  return question && question->isMultipleSelection.value_or(false);
}

std::string HealthQuestionView::identifier() const {
  return question ? question->identifier.value_or("") : "";
}

bool HealthQuestionView::isYesNo() const {
  if (!question || !question->answers) return false;
  const auto& answers = *question->answers;
  return std::any_of(answers.begin(), answers.end(),
                     [](const QuestionaryAnswer& offered) { return offered.hasAnswers == true; });
}

std::vector<QuestionaryAnswerView*> HealthQuestionView::rows() const {
  std::vector<QuestionaryAnswerView*> found;
  for (const auto& view : answersVerticalStackView->arrangedSubviews()) {
    if (auto* row = dynamic_cast<QuestionaryAnswerView*>(view.get())) found.push_back(row);
  }
  return found;
}

AnyValue HealthQuestionView::tickedScores() const {
  AnyValue::List scores;
  for (const auto* row : rows()) {
    if (row->isSelected && row->answer) scores.push_back(row->answer->score);
  }
  return scores;
}

void HealthQuestionView::clearAnswersStack() {
  answersStackView->axis = Axis::horizontal;
  while (!answersStackView->subviews().empty())
    answersStackView->subviews().back()->removeFromSuperview();
  textField.reset();
  datePicker.reset();
  pickerView.reset();
}

void HealthQuestionView::clearRows() {
  while (!answersVerticalStackView->subviews().empty())
    answersVerticalStackView->subviews().back()->removeFromSuperview();
}

void HealthQuestionView::loadUI() {
  if (!question || !question->type) return;
  infoButton->isHidden = !question->info;
  questiontTitle->setText(context_.ui.localized(question->title.value_or("")));
  questiontTitle->numberOfLines = 0;
  switch (*question->type) {
    case AnswerType::number:
      loadDecimalField();
      break;
    case AnswerType::closed:
      loadClosedAnswers();
      break;
    case AnswerType::date:
      loadDateField();
      break;
    case AnswerType::buttons:
    case AnswerType::slider:
      loadButtonsAnswers();
      break;
    case AnswerType::list:
      loadListAnswers(AnyValue(answer));
      break;
    case AnswerType::picker: {
      const unsigned load = ++loads_;
      context_.utils().getAnswersFor(
          identifier(),
          [weak = weak_from_this(), load](std::optional<std::vector<QuestionaryAnswer>> answers) {
            auto self = locked(weak);
            if (!self || self->loads_ != load) return;
            self->loadPickerField(std::move(answers).value_or(std::vector<QuestionaryAnswer>{}));
          });
      break;
    }
  }
  fitContent();
}

std::shared_ptr<TextField> HealthQuestionView::makeField() {
  clearAnswersStack();
  textField = makeView<TextField>();
  textField->name = "textField";
  textField->setSize({0, kControlHeight});
  textField->attributedPlaceholder = AttributedText{
      {TextRun{context_.ui.localized(question ? question->placeholder.value_or("") : ""),
               Font::system(17), kPlaceholderColor}}};
  textField->backgroundColor = systemColors::secondarySystemBackground;
  answersStackView->addArrangedSubview(textField);
  return textField;
}

void HealthQuestionView::loadDecimalField() {
  auto field = makeField();
  field->keyboardType = KeyboardType::decimalPad;
  if (auto text = plainText(answer)) {
    field->text = *text;
    answer = *text;
  }
  auto toolbar = makeView<HealthToolbar>(context_.ui);
  TextField* raw = field.get();
  toolbar->selectAction = [this, raw] {
    answer = raw->text.empty() ? AnyValue() : AnyValue(raw->text);
    raw->resignFirstResponder();
  };
  toolbar->cancelAction = [raw] { raw->resignFirstResponder(); };
  field->inputAccessoryView = toolbar;
  field->addTarget(ControlEvent::editingChanged, [this, raw] { answer = raw->text; });
}

void HealthQuestionView::loadDateField() {
  auto field = makeField();
  datePicker = makeView<DatePicker>();
  datePicker->datePickerMode = DatePicker::Mode::date;
  datePicker->prefersWheels = true;
  field->inputView = datePicker;
  if (auto date = answer.date()) {
    datePicker->setDate(*date);
    field->text = calendar_->format(*date, kDateFormat);
  }
  auto toolbar = makeView<HealthToolbar>(context_.ui);
  TextField* raw = field.get();
  DatePicker* wheel = datePicker.get();
  toolbar->selectAction = [this, raw, wheel] {
    raw->text = calendar_->format(wheel->date(), kDateFormat);
    answer = wheel->date();
    raw->resignFirstResponder();
  };
  toolbar->cancelAction = [raw] { raw->resignFirstResponder(); };
  field->inputAccessoryView = toolbar;
}

void HealthQuestionView::loadClosedAnswers() {
  clearAnswersStack();
  const auto labels = question->closedAnswers.value_or(std::vector<std::string>{});
  for (const auto& label : labels) {
    const auto first = std::find(labels.begin(), labels.end(), label) - labels.begin();
    auto button = makeView<ClosedAnswerButton>(context_.ui, static_cast<int>(first));
    button->setTitle(context_.ui.localized(label));
    button->setSize({0, kControlHeight});
    button->backgroundColor = kSystemRed;
    answersStackView->addArrangedSubview(button);
  }
}

void HealthQuestionView::loadButtonsAnswers() {
  clearAnswersStack();
  subAnswersOpen_ = false;
  for (const auto& offered : question->answers.value_or(std::vector<QuestionaryAnswer>{})) {
    auto button = makeView<HealthRoundButton>(context_.ui);
    button->answer = offered;
    button->setTitle(context_.ui.localized(offered.title.value_or("")));
    button->titleEdgeInsets = {8, 8, 8, 8};
    button->setSize({0, kControlHeight});
    button->setSelected(false);
    HealthRoundButton* raw = button.get();
    button->addTarget(ControlEvent::touchUpInside, [this, raw] { selectedHealthButton(*raw); });
    answersStackView->addArrangedSubview(button);
  }
  // More answers than fit side by side on a phone are stacked instead.
  if (answersStackView->subviews().size() > kButtonsInARow) answersStackView->axis = Axis::vertical;
  const auto list = answer.integerList();
  if (!list) return;
  const std::int64_t chosen = list->empty() ? 0 : 1;
  for (const auto& view : answersStackView->arrangedSubviews()) {
    auto* button = dynamic_cast<HealthRoundButton*>(view.get());
    if (button && button->answer && button->answer->score == chosen) button->setSelected(true);
  }
  if (!list->empty()) {
    subAnswersOpen_ = true;
    loadSubAnswers(true, answer);
  }
}

void HealthQuestionView::selectedHealthButton(HealthRoundButton& tapped) {
  for (const auto& view : answersStackView->arrangedSubviews()) {
    if (auto* button = dynamic_cast<HealthRoundButton*>(view.get())) {
      button->setSelected(button == &tapped);
    }
  }
  const bool opens = tapped.answer && tapped.answer->hasAnswers.value_or(false);
  AnyValue chosen;
  if (opens || isYesNo()) {
    chosen = AnyValue::List{};  // no sub-answer ticked yet, or no
  } else if (tapped.answer && tapped.answer->score) {
    chosen = *tapped.answer->score;
  }
  subAnswersOpen_ = opens;
  loadSubAnswers(opens, chosen);
  fitContent();
}

void HealthQuestionView::loadSubAnswers(bool hasAnswers, const AnyValue& selected) {
  clearRows();
  answer = selected;
  const unsigned load = ++loads_;
  if (!hasAnswers) return;
  context_.utils().getAnswersFor(
      identifier(), [weak = weak_from_this(), load,
                     selected](const std::optional<std::vector<QuestionaryAnswer>>& answers) {
        auto self = locked(weak);
        if (!self || self->loads_ != load) return;
        self->addCatalogueRows(answers.value_or(std::vector<QuestionaryAnswer>{}), selected);
      });
}

std::shared_ptr<QuestionaryAnswerView> HealthQuestionView::makeRow(const QuestionaryAnswer& value,
                                                                   const AnyValue& selected) {
  auto row = makeView<QuestionaryAnswerView>(context_.ui);
  row->load(value, identifier());
  row->delegate = this;
  if (isPreselected(selected, value.score)) {
    row->isSelected = true;
    row->setEnabledLook();
  }
  answersVerticalStackView->addArrangedSubview(row);
  return row;
}

void HealthQuestionView::addCatalogueRows(const std::vector<QuestionaryAnswer>& answers,
                                          const AnyValue& selected) {
  clearRows();
  for (const auto& offered : answers) {
    auto row = makeRow(offered, selected);
    const std::int64_t score = offered.score.value_or(-1);
    if (fixed && std::find(fixed->begin(), fixed->end(), score) != fixed->end()) {
      row->isFixed = true;
      row->isSelected = true;
      row->setEnabledLook();
    }
  }
  if (subAnswersOpen_) answer = tickedScores();
  fitContent();
}

void HealthQuestionView::loadListAnswers(const AnyValue& selected) {
  clearAnswersStack();
  answer = selected;
  answersStackView->isHidden = true;
  clearRows();
  if (question->answers) {
    ++loads_;
    for (QuestionaryAnswer offered : *question->answers) {
      if (offered.title) offered.title = context_.ui.localized(*offered.title);
      makeRow(offered, selected);
    }
  } else {
    loadSubAnswers(true, selected);
  }
  if (!selected.hasValue() && isMultipleSelection()) answer = AnyValue::List{};
}

void HealthQuestionView::loadPickerField(std::vector<QuestionaryAnswer> answers) {
  question->answers = std::move(answers);
  auto field = makeField();
  pickerView = makeView<PickerView>();
  pickerView->dataSource = this;
  field->inputView = pickerView;
  const auto& offered = *question->answers;
  for (std::size_t i = 0; i < offered.size(); ++i) {
    if (offered[i].score && answer.integer() == offered[i].score) {
      field->text = offered[i].title.value_or("");
      pickerView->selectRow(static_cast<int>(i));
    }
  }
  auto toolbar = makeView<HealthToolbar>(context_.ui);
  TextField* raw = field.get();
  toolbar->selectAction = [this, raw] {
    const auto& choices = question->answers.value();
    const int row = pickerView ? pickerView->selectedRow() : -1;
    if (row >= 0 && static_cast<std::size_t>(row) < choices.size()) {
      const auto& picked = choices[static_cast<std::size_t>(row)];
      answer = picked.score ? AnyValue(*picked.score) : AnyValue();
      raw->text = picked.title.value_or("");
    }
    raw->resignFirstResponder();
  };
  toolbar->cancelAction = [raw] { raw->resignFirstResponder(); };
  field->inputAccessoryView = toolbar;
  fitContent();
}

int HealthQuestionView::numberOfRows(const PickerView& /*picker*/, int /*component*/) const {
  return question && question->answers ? static_cast<int>(question->answers->size()) : 0;
}

std::string HealthQuestionView::titleForRow(const PickerView& /*picker*/, int row,
                                            int /*component*/) const {
  if (!question || !question->answers || row < 0 ||
      static_cast<std::size_t>(row) >= question->answers->size()) {
    return "";
  }
  return (*question->answers)[static_cast<std::size_t>(row)].title.value_or("");
}

void HealthQuestionView::selectAnswer(QuestionaryAnswerView& row) {
  if (!isMultipleSelection()) {
    for (auto* other : rows()) {
      if (other == &row || other->isFixed) continue;
      other->isSelected = false;
      other->setDisabledLook();
    }
  }
  if (subAnswersOpen_) {
    answer = tickedScores();
    return;
  }
  std::optional<std::int64_t> score;
  if (row.answer) score = row.answer->score;
  if (!isMultipleSelection()) {
    answer = row.isSelected && score ? AnyValue(*score) : AnyValue();
    return;
  }
  if (!score) return;
  auto list = answer.integerList().value_or(std::vector<std::int64_t>{});
  list.erase(std::remove(list.begin(), list.end(), *score), list.end());
  if (row.isSelected) list.push_back(*score);
  answer = list;
}

void HealthQuestionView::selectAnswerButton(HealthRoundButton& tapped) {
  if (isMultipleSelection()) return;
  for (const auto& view : answersVerticalStackView->arrangedSubviews()) {
    auto* button = dynamic_cast<HealthRoundButton*>(view.get());
    if (button != nullptr && button != &tapped) button->setSelected(false);
  }
}

void HealthQuestionView::showAlertInfo() {
  if (!question || !question->info) return;
  auto info = std::make_shared<ProfileAlertInfoViewController>(context_.ui);
  info->items = context_.utils().getInfoFile(*question->info);
  if (ViewController* top = context_.ui.application.topViewController()) top->present(info, true);
}

AnyValue HealthQuestionView::getSelectedAnswer() const {
  for (const auto& view : answersVerticalStackView->arrangedSubviews()) {
    if (dynamic_cast<QuestionaryAnswerView*>(view.get()) == nullptr) return answer;
  }
  if (!isMultipleSelection()) return answer;
  AnyValue::List scores;
  for (const auto* row : rows()) {
    if (row->isSelected) scores.push_back(row->answer ? row->answer->score : std::nullopt);
  }
  return multipleSelectionValue(scores);
}

bool HealthQuestionView::isFilled() const {
  // A closed question only shows the member's value and offers nothing to tap, so it never
  // holds the page back: a new member, whose record has no value for it, could not go on.
  if (question && question->type == AnswerType::closed) return true;
  if (question && question->type == AnswerType::buttons && isMultipleSelection() &&
      answersVerticalStackView->arrangedSubviews().empty()) {
    return true;
  }
  return getSelectedAnswer().hasValue();
}

double HealthQuestionView::fitContent() {
  const double width = frame().width();
  const double characters = static_cast<double>(questiontTitle->text().size());
  const double lines = std::max(1.0, std::ceil(characters * 9 / (width - 32)));
  const double titleHeight = 22 * lines;
  header_->setSize({width, titleHeight});
  questiontTitle->setFrame({{}, {width - 32, titleHeight}});
  infoButton->setFrame({{width - 24, 0}, {24, 24}});
  const bool controls = !answersStackView->isHidden && !answersStackView->subviews().empty();
  const auto stacked = answersStackView->axis == Axis::vertical
                           ? static_cast<double>(answersStackView->subviews().size())
                           : 1.0;
  const double controlsHeight =
      controls ? stacked * (kControlHeight + kRowSpacing) - kRowSpacing : 0;
  answersStackView->setSize({width, controlsHeight});
  const auto count = static_cast<double>(answersVerticalStackView->subviews().size());
  const double rowsHeight = count > 0 ? count * kRowHeight + (count - 1) * kRowSpacing : 0;
  answersVerticalStackView->setSize({width, rowsHeight});
  double total = titleHeight;
  if (controls) total += kSpacing + controlsHeight;
  if (rowsHeight > 0) total += kSpacing + rowsHeight;
  content_->setFrame({{}, {width, total}});
  contentView->setFrame({{}, {width, total}});
  setSize({width, total});
  return total;
}

}  // namespace nutrition
