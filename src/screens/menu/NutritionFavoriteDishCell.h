#pragma once
// The last card of the home screen: a paged carousel of the member's favourite dishes, one tile
// each, with a page control that follows the carousel. A tile opens the full intake screen
// with its dish alone.

#include <memory>
#include <optional>
#include <vector>

#include "model/NutritionDish.h"
#include "screens/ScreenContext.h"
#include "screens/menu/DishPhoto.h"
#include "views/CollectionView.h"
#include "views/Controls.h"
#include "views/ImageView.h"
#include "views/Label.h"
#include "views/ScrollView.h"
#include "views/StackView.h"

namespace nutrition {

class FavoriteView : public View {
 public:
  FavoriteView(const ScreenContext& context, Rect frame, NutritionDish favorite);

  [[nodiscard]] std::string_view kind() const override { return "FavoriteView"; }

  std::shared_ptr<View> contentView;
  std::shared_ptr<Label> titleLabel;
  std::shared_ptr<Label> kcalLabel;
  std::shared_ptr<ImageView> imageView;
  std::optional<NutritionDish> dish;

  void loadUI();
  // Opens the full intake screen with this dish as its only dish on the top screen.
  void tapOnDish();

 private:
  const ScreenContext& context_;
  DishPhoto photo_;
};

class NutritionFavoriteDishCell : public ReusableCell {
 public:
  static constexpr const char* kReuseIdentifier = "favoriteCell";
  static constexpr double kTileWidth = 150;

  explicit NutritionFavoriteDishCell(const ScreenContext& context);

  [[nodiscard]] std::string_view kind() const override { return "NutritionFavoriteDishCell"; }

  std::shared_ptr<StackView> contentDishes;
  std::shared_ptr<View> content;
  std::shared_ptr<Label> titleLabel;
  std::shared_ptr<PageControl> pageControl;
  // The carousel around `contentDishes`; scrolling it moves the page control.
  std::shared_ptr<ScrollView> carousel;

  void awakeFromNib() override;
  void loadDishes(const std::vector<NutritionDish>& dishes);

 private:
  void followCarousel(const ScrollView& scroll);

  const ScreenContext& context_;
};

}  // namespace nutrition
