#pragma once
// An intake card of the home screen: the first dish's photo, the intake's name, its energy and,
// for more than one dish, a badge with the number of dishes. Its info button opens the intake
// preview.

#include <memory>
#include <optional>

#include "model/NutritionIntake.h"
#include "screens/ScreenContext.h"
#include "screens/menu/DishPhoto.h"
#include "screens/menu/MenuDelegates.h"
#include "views/Button.h"
#include "views/CollectionView.h"
#include "views/ImageView.h"
#include "views/Label.h"

namespace nutrition {

class RecetaCell : public ReusableCell {
 public:
  static constexpr const char* kReuseIdentifier = "recetaCell";

  explicit RecetaCell(const ScreenContext& context);

  [[nodiscard]] std::string_view kind() const override { return "RecetaCell"; }

  std::optional<NutritionIntake> ingesta;
  std::shared_ptr<View> content;
  std::shared_ptr<ImageView> recipePhoto;
  std::shared_ptr<Label> recipeTitle;
  std::shared_ptr<Label> recipeKcal;
  std::shared_ptr<View> dishesView;
  std::shared_ptr<Label> dishesLabel;
  std::shared_ptr<Button> infoButton;
  IntakeCellDelegate* intakeDelegate = nullptr;

  void loadIngesta(const NutritionIntake& intake);
  void didTapInfoButton();

 private:
  const ScreenContext& context_;
  DishPhoto photo_;
};

}  // namespace nutrition
