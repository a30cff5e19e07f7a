#pragma once
// The full intake: one recipe page per dish, paged horizontally, with floating favourite,
// alternative and close buttons that fade while a page scrolls, and the supplement notice of
// the member's diet on every appearance.
//
// Paging wraps forward (after the last dish comes the first) and stops backward at the first.
// What the screen decides where the product leaves it open:
//  - close dismisses the screen;
//  - the favourite button toggles the dish of the page shown, as the page's own button does,
//    and then shows that dish's state;
//  - an intake without an `intakeId` (a favourite opened from the carousel) is not a meal of
//    the held menu, so there is nothing to replace: its alternative buttons are hidden.

#include <cstddef>
#include <memory>
#include <optional>

#include "model/NutritionIntake.h"
#include "screens/ScreenContext.h"
#include "screens/menu/MenuDelegates.h"
#include "screens/menu/NutricionRecetaViewController.h"
#include "ui/OrvanePageViewController.h"
#include "views/Button.h"
#include "views/Controls.h"
#include "views/ViewController.h"

namespace nutrition {

class IntakeViewController : public ViewController,
                             public PageViewControllerDataSource,
                             public RecetaScrollDelegate {
 public:
  explicit IntakeViewController(const ScreenContext& context) : context_(context) {}

  [[nodiscard]] std::string_view kind() const override { return "IntakeViewController"; }

  std::optional<NutritionIntake> ingesta;
  std::shared_ptr<OrvanePageViewController> pageViewController;
  bool isExtended = false;
  IntakeViewDelegate* favoriteDelegate = nullptr;
  std::shared_ptr<ActivityIndicator> activityIndicator;
  std::shared_ptr<Button> alternativeButton;
  std::shared_ptr<Button> favoriteButton;
  std::shared_ptr<Button> closeButton;
  std::shared_ptr<View> content;

  void viewDidLoad() override;
  void viewWillAppear(bool animated) override;
  void viewDidAppear(bool animated) override;
  void loadPageViewController();
  std::shared_ptr<NutricionRecetaViewController> viewControllerAtIndex(std::size_t index);
  std::shared_ptr<ViewController> viewControllerBefore(PageViewController& pages,
                                                       ViewController& current) override;
  std::shared_ptr<ViewController> viewControllerAfter(PageViewController& pages,
                                                      ViewController& current) override;
  [[nodiscard]] std::size_t presentationCount() const;
  [[nodiscard]] std::size_t presentationIndex() const;
  void showButtons(bool show);
  void showSupplements();
  // The page now shown, if any.
  [[nodiscard]] NutricionRecetaViewController* currentPage() const;

  void didTapClose();
  void didTapFavorite();
  void didTapAlternative();

  // RecetaScrollDelegate
  void animateButtons(bool show) override;
  void dishDidChange(std::size_t pageIndex, const NutritionDish& dish) override;
  void favoriteDidChange(bool isFavorite) override;

 protected:
  void loadView() override;

 private:
  [[nodiscard]] std::size_t dishCount() const;
  [[nodiscard]] const NutritionIntake& intake() const;
  std::shared_ptr<ViewController> pageAt(std::size_t index) { return viewControllerAtIndex(index); }

  const ScreenContext& context_;
};

}  // namespace nutrition
