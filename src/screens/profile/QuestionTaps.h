#pragma once
// Answers a question view with the taps a member would make, from answers written as text:
// the typed text of a number question, a date as "dd/MM/yyyy", and for the other kinds the
// title (or score) of the buttons, rows or wheel rows to choose. A yes answer that opens rows
// takes the rows to tick after it ("Sí", "Sin gluten"). The command-line host drives the
// editor with it, and tests drive the views through it.

#include <string>
#include <vector>

#include "screens/profile/HealthQuestionView.h"

namespace nutrition {

struct TapResult {
  bool ok = true;
  std::string problem;  // why the answer could not be given, when not ok
  // Rows to tick once the rows a yes answer opened have arrived (see tapRows).
  std::vector<std::string> waitingRows;
};

TapResult tapAnswer(HealthQuestionView& view, const std::vector<std::string>& choices);
// Leaves exactly the rows named by `choices` ticked; locked rows stay as they are.
TapResult tapRows(HealthQuestionView& view, const std::vector<std::string>& choices);

}  // namespace nutrition
