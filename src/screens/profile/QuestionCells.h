#pragma once
// Table cells of the older question list: a cell with one name label, and a cell that holds a
// question view. Neither has logic of its own.

#include <memory>

#include "screens/profile/QuestionView.h"
#include "views/CollectionView.h"
#include "views/Label.h"

namespace nutrition {

class QuestionaryCell : public TableViewCell {
 public:
  QuestionaryCell() {
    setFrame({{}, {390, 44}});
    testName = addOutlet<Label>(*this, "testName");
    testName->setFrame({{16, 0}, {358, 44}});
  }
  [[nodiscard]] std::string_view kind() const override { return "QuestionaryCell"; }

  std::shared_ptr<Label> testName;
};

class QuestionCell : public TableViewCell {
 public:
  [[nodiscard]] std::string_view kind() const override { return "QuestionCell"; }

  std::weak_ptr<QuestionView> questionView;
};

}  // namespace nutrition
