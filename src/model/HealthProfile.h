#pragma once
// The health questionnaire as the shipped files describe it: pages of panels of questions.
// A question's `identifier` names the profile field it edits (see NutritionProfileUtils).

#include <array>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <tuple>
#include <utility>
#include <vector>

#include "base/RawEnum.h"
#include "json/JsonFields.h"

namespace nutrition {

enum class AnswerType { number, closed, date, buttons, list, slider, picker };

template <>
struct RawValues<AnswerType> {
  static constexpr std::array table{
      std::pair{AnswerType::number, std::string_view{"number"}},
      std::pair{AnswerType::closed, std::string_view{"closed"}},
      std::pair{AnswerType::date, std::string_view{"date"}},
      std::pair{AnswerType::buttons, std::string_view{"buttons"}},
      std::pair{AnswerType::list, std::string_view{"list"}},
      std::pair{AnswerType::slider, std::string_view{"slider"}},
      std::pair{AnswerType::picker, std::string_view{"picker"}},
  };
};

struct QuestionaryAnswer {
  std::optional<std::string> title;
  std::optional<std::int64_t> score;
  std::optional<bool> hasAnswers;

  bool operator==(const QuestionaryAnswer&) const = default;

  static constexpr auto jsonFields() {
    using A = QuestionaryAnswer;
    return std::tuple{json::field("title", &A::title), json::field("score", &A::score),
                      json::field("hasAnswers", &A::hasAnswers)};
  }
};

struct HealthQuestion {
  std::optional<std::string> title;
  std::optional<std::string> identifier;
  std::optional<AnswerType> type;
  std::optional<std::string> placeholder;
  std::optional<std::string> info;
  std::optional<std::vector<std::int64_t>> fixed;
  std::optional<std::vector<QuestionaryAnswer>> answers;
  std::optional<std::vector<std::string>> closedAnswers;
  std::optional<bool> isMultipleSelection;

  bool operator==(const HealthQuestion&) const = default;

  static constexpr auto jsonFields() {
    using Q = HealthQuestion;
    using json::field;
    return std::tuple{field("title", &Q::title),
                      field("identifier", &Q::identifier),
                      field("type", &Q::type),
                      field("placeholder", &Q::placeholder),
                      field("info", &Q::info),
                      field("fixed", &Q::fixed),
                      field("answers", &Q::answers),
                      field("closedAnswers", &Q::closedAnswers),
                      field("isMultipleSelection", &Q::isMultipleSelection)};
  }
};

// The older, smaller question record of the single-question view.
struct QuestionaryQuestion {
  std::optional<std::string> title;
  std::optional<std::string> identifier;
  std::optional<AnswerType> type;
  std::optional<std::string> placeholder;
  std::optional<std::vector<QuestionaryAnswer>> answers;

  bool operator==(const QuestionaryQuestion&) const = default;

  static constexpr auto jsonFields() {
    using Q = QuestionaryQuestion;
    using json::field;
    return std::tuple{field("title", &Q::title), field("identifier", &Q::identifier),
                      field("type", &Q::type), field("placeholder", &Q::placeholder),
                      field("answers", &Q::answers)};
  }
};

struct HealthProfilePanel {
  std::vector<HealthQuestion> questions;

  bool operator==(const HealthProfilePanel&) const = default;

  static constexpr auto jsonFields() {
    return std::tuple{json::required("questions", &HealthProfilePanel::questions)};
  }
};

struct HealthProfilePage {
  std::int64_t page = 0;
  std::optional<std::vector<HealthProfilePanel>> panels;

  bool operator==(const HealthProfilePage&) const = default;

  static constexpr auto jsonFields() {
    return std::tuple{json::required("page", &HealthProfilePage::page),
                      json::field("panels", &HealthProfilePage::panels)};
  }
};

}  // namespace nutrition
