#pragma once
// One dish of an intake as a scrolling page: photo, course and energy, name, macronutrients,
// ingredients, preparation and difficulty, with two floating buttons that ask the backend for
// an alternative dish and add or remove the dish from the favourites.
//
// What the page decides where the product leaves it open:
//  - an absent energy or macronutrient reads "–" ("   – Kcal", "– g proteína"), never a
//    made-up 0;
//  - an intake with a single dish (`isUniqueCourse`) hides the category line: there is no
//    other course to tell the dish from.

#include <cstddef>
#include <memory>
#include <optional>
#include <string>

#include "model/NutritionDish.h"
#include "screens/ScreenContext.h"
#include "screens/menu/DishPhoto.h"
#include "screens/menu/MenuDelegates.h"
#include "views/Button.h"
#include "views/ImageView.h"
#include "views/Label.h"
#include "views/ScrollView.h"
#include "views/ViewController.h"

namespace nutrition {

class NutricionRecetaViewController : public ViewController {
 public:
  // At this vertical offset the intake screen's buttons stay and the page's own go.
  static constexpr double kButtonsOffset = 186;

  explicit NutricionRecetaViewController(const ScreenContext& context) : context_(context) {}

  [[nodiscard]] std::string_view kind() const override { return "NutricionRecetaViewController"; }

  std::shared_ptr<ImageView> photoView;
  std::shared_ptr<Label> ingestaLabel;
  std::shared_ptr<Label> categoryLabel;
  std::shared_ptr<Label> nameLabel;
  std::shared_ptr<Label> kcalLabel;
  std::shared_ptr<Label> composicionLabel;
  std::shared_ptr<Label> ingredientsLabel;
  std::shared_ptr<Label> preparacionLabel;
  std::shared_ptr<Label> difficultyLabel;
  std::shared_ptr<View> extendedView;
  std::shared_ptr<View> ingredientsView;
  std::shared_ptr<ImageView> veganFlag;
  std::shared_ptr<ImageView> glutenFreeFlag;
  std::shared_ptr<Button> alternativeButton;
  std::shared_ptr<Button> favoriteButton;
  bool isUniqueCourse = false;
  std::optional<NutritionDish> receta;
  std::size_t pageIndex = 0;
  RecetaScrollDelegate* scrollDelegate = nullptr;

  void viewDidLoad() override;
  void viewWillAppear(bool animated) override;
  void loadReceipt();
  [[nodiscard]] std::string getDifficultyString() const;
  void switchAlternative();
  void markAsFavorite();
  void scrollViewDidScroll(const ScrollView& scrollView);
  // Whether the dish is among the member's favourites.
  [[nodiscard]] bool isFavorite() const;
  // The page's scroll view: the page scrolls as a member drags it.
  [[nodiscard]] ScrollView& scrollView() const { return *scroll_; }

 protected:
  void loadView() override;

 private:
  const NutritionDish& dish() const;

  const ScreenContext& context_;
  std::shared_ptr<ScrollView> scroll_;
  DishPhoto photo_;
};

// The ingredient list as bullet lines: "a, b, c" gives "• a\n• b\n• c".
std::string ingredientBullets(const std::string& ingredients);

}  // namespace nutrition
