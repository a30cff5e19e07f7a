#pragma once
// One page of the profile editor: its panels of questions, "Anterior" and "Siguiente" (or
// "Enviar" on the last page). Moving forward requires every question answered, writes the
// page's answers into the member, and refuses the second page while the member's preferences
// hold both vegan and vegetarian. The last page asks for confirmation, then sends the member
// (POST while new, PATCH otherwise); a member coming back becomes current, the fast is reset,
// the menu screens are held for the new menu, and the editor closes on the weekly menu.

#include <cstddef>
#include <functional>
#include <memory>
#include <optional>
#include <vector>

#include "base/Lifetime.h"
#include "model/HealthProfile.h"
#include "screens/ScreenContext.h"
#include "screens/profile/ProfileEditorServices.h"
#include "screens/profile/QuestionPanelView.h"
#include "ui/CustomNavViewController.h"
#include "ui/ThemedButtons.h"
#include "views/Controls.h"
#include "views/ScrollView.h"
#include "views/StackView.h"

namespace nutrition {

// What a page asks of the editor that holds it.
class ProfileDelegate {
 public:
  virtual void nextProfilePage() = 0;
  virtual void previousProfilePage() = 0;
  // Closes the whole editor; `completion` runs once it is closed.
  virtual void dismissProfile(bool animated, std::function<void()> completion) = 0;

 protected:
  ~ProfileDelegate() = default;
};

class NutritionProfileViewController : public OrvaneViewController {
 public:
  NutritionProfileViewController(const ScreenContext& context, ProfileEditorServices services);

  [[nodiscard]] std::string_view kind() const override { return "NutritionProfileViewController"; }

  std::shared_ptr<CustomButton> previousButton;
  std::shared_ptr<CustomButton> nextButton;
  std::shared_ptr<ActivityIndicator> activityIndicator;
  std::shared_ptr<StackView> stackView;
  std::optional<std::vector<HealthProfilePanel>> panels;
  std::size_t pageIndex = 0;
  bool isLastPage = false;
  std::weak_ptr<ProfileDelegate> delegate;

  void viewDidLoad() override;
  void viewWillAppear(bool animated) override;
  void didTapPreviousButton();
  void didTapNextButton();
  [[nodiscard]] bool isFullFilled() const;
  void saveAll();
  [[nodiscard]] std::vector<QuestionPanelView*> panelViews() const;

 protected:
  void loadView() override;

 private:
  // The confirmation's completion: the member made ready and sent.
  void sendProfile();
  void didSend(std::optional<NutritionUser> returned);
  void showNotice(const std::string& message);
  void fitContent();

  const ScreenContext& context_;
  ProfileEditorServices services_;
  std::shared_ptr<ScrollView> scroll_;
  Lifetime lifetime_;
};

// "Generar nuevo menú" -> "GENERAR NUEVO MENÚ": ASCII and the accented Latin letters.
std::string upperCased(const std::string& text);

}  // namespace nutrition
