#include "screens/profile/QuestionView.h"

#include "views/SystemColors.h"

namespace nutrition {

QuestionView::QuestionView(const UIContext& ui, std::optional<QuestionaryQuestion> edited)
    : question(std::move(edited)), ui_(ui) {
  setFrame({{}, {318, 160}});
  contentView = addOutlet<View>(*this, "contentView");
  contentView->setFrame(bounds());
  title = addOutlet<Label>(*contentView, "title");
  title->setFrame({{}, {318, 44}});
  title->numberOfLines = 0;
  answersHorizontalContainer =
      addOutlet<StackView>(*contentView, "answersHorizontalContainer", Axis::horizontal);
  answersHorizontalContainer->setFrame({{0, 52}, {318, 43}});
  answersHorizontalContainer->distribution = StackDistribution::fillEqually;
  answersHorizontalContainer->spacing = 8;
  answersContainer = addOutlet<StackView>(*contentView, "answersContainer", Axis::vertical);
  answersContainer->setFrame({{0, 103}, {318, 0}});
  answersContainer->spacing = 8;
  loadUI();
}

void QuestionView::loadUI() {
  for (auto* stack : {answersHorizontalContainer.get(), answersContainer.get()}) {
    while (!stack->subviews().empty())
      stack->subviews().back()->removeFromSuperview();
  }
  textField.reset();
  if (!question || !question->type) return;
  title->setText(question->title.value_or(""));
  const auto offered = question->answers.value_or(std::vector<QuestionaryAnswer>{});
  switch (*question->type) {
    case AnswerType::number:
    case AnswerType::date:
    case AnswerType::picker: {
      textField = makeView<TextField>();
      textField->name = "textField";
      textField->placeholder = question->placeholder.value_or("");
      textField->backgroundColor = systemColors::secondarySystemBackground;
      if (question->type == AnswerType::number) textField->keyboardType = KeyboardType::decimalPad;
      TextField* raw = textField.get();
      textField->addTarget(ControlEvent::editingChanged, [this, raw] {
        answer = raw->text;
        changed();
      });
      answersHorizontalContainer->addArrangedSubview(textField);
      break;
    }
    case AnswerType::buttons:
    case AnswerType::slider:
      for (const auto& value : offered) {
        auto button = makeView<HealthRoundButton>(ui_);
        button->answer = value;
        button->setTitle(value.title.value_or(""));
        HealthRoundButton* raw = button.get();
        button->addTarget(ControlEvent::touchUpInside, [this, raw] { selectedHealthButton(*raw); });
        answersHorizontalContainer->addArrangedSubview(button);
      }
      break;
    case AnswerType::list:
      for (const auto& value : offered) {
        auto row = makeView<QuestionaryAnswerView>(ui_);
        row->load(value, question->identifier.value_or(""));
        row->delegate = this;
        answersContainer->addArrangedSubview(row);
      }
      break;
    case AnswerType::closed:
      break;
  }
}

void QuestionView::selectedHealthButton(HealthRoundButton& tapped) {
  for (const auto& view : answersHorizontalContainer->arrangedSubviews()) {
    if (auto* button = dynamic_cast<HealthRoundButton*>(view.get())) {
      button->setSelected(button == &tapped);
    }
  }
  answer = tapped.answer && tapped.answer->score ? AnyValue(*tapped.answer->score) : AnyValue();
  changed();
}

void QuestionView::selectAnswer(QuestionaryAnswerView& row) {
  for (const auto& view : answersContainer->arrangedSubviews()) {
    auto* other = dynamic_cast<QuestionaryAnswerView*>(view.get());
    if (other == nullptr || other == &row) continue;
    other->isSelected = false;
    other->setDisabledLook();
  }
  answer =
      row.isSelected && row.answer && row.answer->score ? AnyValue(*row.answer->score) : AnyValue();
  changed();
}

void QuestionView::selectAnswerButton(HealthRoundButton& tapped) {
  for (const auto& view : answersContainer->arrangedSubviews()) {
    auto* button = dynamic_cast<HealthRoundButton*>(view.get());
    if (button != nullptr && button != &tapped) button->setSelected(false);
  }
}

void QuestionView::changed() {
  if (delegate != nullptr) delegate->questionDidChange(*this);
}

}  // namespace nutrition
