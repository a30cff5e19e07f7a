#pragma once
// The profile editor: the questionnaire's pages one at a time, with a row of page dots and a
// close item. The pages turn only through their buttons (there is no swiping); closing
// dismisses the editor at once, saving nothing more.
//
//   auto editor = makeProfileEditor(context, services, *utils.getProfileQuestionary());
//   top->present(editor, true);

#include <memory>
#include <optional>
#include <vector>

#include "model/HealthProfile.h"
#include "screens/ScreenContext.h"
#include "screens/profile/CustomPageControl.h"
#include "screens/profile/NutritionProfileViewController.h"
#include "screens/profile/ProfileEditorServices.h"
#include "ui/OrvanePageViewController.h"

namespace nutrition {

class ProfilePageViewController : public OrvaneViewController, public ProfileDelegate {
 public:
  ProfilePageViewController(const ScreenContext& context, ProfileEditorServices services);

  [[nodiscard]] std::string_view kind() const override { return "ProfilePageViewController"; }

  std::shared_ptr<OrvanePageViewController> pageViewController;
  std::shared_ptr<View> content;
  std::shared_ptr<CustomPageControl> pageControl;
  std::optional<std::vector<HealthProfilePage>> pages;

  void viewDidLoad() override;
  void viewWillAppear(bool animated) override;
  void loadPageViewController();
  [[nodiscard]] std::shared_ptr<NutritionProfileViewController> viewControllerAtIndex(
      std::size_t index);
  // The page shown; null before the first appearance.
  [[nodiscard]] NutritionProfileViewController* currentPage() const;
  void didTapCloseButton();
  void pageDidFinishAnimating();

  void nextProfilePage() override;
  void previousProfilePage() override;
  void dismissProfile(bool animated, std::function<void()> completion) override;

 protected:
  void loadView() override;

 private:
  const ScreenContext& context_;
  ProfileEditorServices services_;
};

// A new editor over `pages`, ready to present.
std::shared_ptr<ProfilePageViewController> makeProfileEditor(const ScreenContext& context,
                                                             const ProfileEditorServices& services,
                                                             std::vector<HealthProfilePage> pages);

}  // namespace nutrition
