#pragma once
// A single-page form of health questions: one question view per question, stacked.

#include <memory>
#include <optional>
#include <vector>

#include "screens/ScreenContext.h"
#include "screens/profile/HealthQuestionView.h"
#include "screens/profile/ProfileEditorServices.h"
#include "views/ScrollView.h"
#include "views/StackView.h"
#include "views/ViewController.h"

namespace nutrition {

class HealthFormPageViewController : public ViewController {
 public:
  HealthFormPageViewController(const ScreenContext& context, ProfileEditorServices services)
      : context_(context), services_(std::move(services)) {}

  [[nodiscard]] std::string_view kind() const override { return "HealthFormPageViewController"; }

  std::optional<std::vector<HealthQuestion>> questions;
  std::shared_ptr<StackView> questionsContainer;

  void viewDidLoad() override;
  [[nodiscard]] std::vector<HealthQuestionView*> getAllQuestionViews() const;

 protected:
  void loadView() override;

 private:
  const ScreenContext& context_;
  ProfileEditorServices services_;
};

}  // namespace nutrition
