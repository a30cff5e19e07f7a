#pragma once
// The small pop-up over the home screen that lists an intake's dishes with their energy and the
// intake's total; from it the member opens the full intake.
//
// A dish row's category line is the dish's course (`typeName`, "Primer plato"), hidden when
// the intake has a single dish. The alternative button leads to the full intake, where each
// dish has its alternative; it is hidden for an intake that is not a meal of the held menu (no
// `intakeId`), as on the full intake.

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
#include "views/ViewController.h"

namespace nutrition {

class DishTableViewCell : public ReusableCell {
 public:
  static constexpr const char* kReuseIdentifier = "dishCell";

  explicit DishTableViewCell(const ScreenContext& context);

  [[nodiscard]] std::string_view kind() const override { return "DishTableViewCell"; }

  std::shared_ptr<ImageView> dishImage;
  std::shared_ptr<Label> categoryLabel;
  std::shared_ptr<Label> titleLabel;
  std::shared_ptr<Label> kcalLabel;

  void loadDish(const NutritionDish& dish, bool isUniqueCourse);

 private:
  const ScreenContext& context_;
  DishPhoto photo_;
};

class IntakePreviewViewController : public ViewController, public TableViewDataSource {
 public:
  explicit IntakePreviewViewController(const ScreenContext& context) : context_(context) {}

  [[nodiscard]] std::string_view kind() const override { return "IntakePreviewViewController"; }

  std::optional<NutritionIntake> intake;
  IntakePreviewDelegate* delegate = nullptr;
  std::shared_ptr<Label> titleLabel;
  std::shared_ptr<Label> kcalLabel;
  std::shared_ptr<TableView> tableView;
  std::shared_ptr<View> contentView;
  std::shared_ptr<Button> alternativeButton;
  std::shared_ptr<Button> detailButton;

  void viewDidLoad() override;
  void viewWillAppear(bool animated) override;
  void reloadData();
  int numberOfRows(TableView& table, int section) override;
  std::shared_ptr<ReusableCell> cellForRow(TableView& table, IndexPath indexPath) override;
  double heightForRow(TableView&, IndexPath) override { return 72; }
  void didTapIntakeDetail();
  // Outside the card: the pop-up goes away.
  void didTapOutside();

 protected:
  void loadView() override;

 private:
  [[nodiscard]] const NutritionIntake& shownIntake() const;

  const ScreenContext& context_;
};

}  // namespace nutrition
