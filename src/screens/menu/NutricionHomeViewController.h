#pragma once
// The weekly menu home: a strip of seven days from today and, for the selected day, a card for
// the fasting timer (members with a fasting scheme), one card per intake and a carousel of the
// favourite dishes. It shows the weekly menu the data holder keeps, downloading it while none
// processed is held, and opens the intake screens, the fasting screen and the profile editor.
//
// Rows, with F = 1 for a fasting card, n intakes and V = 1 for favourites: n + V + F items; row
// r shows intake r - F, the fasting card at r - F = -1 and the carousel at r - F = n. The row
// whose number equals n is 140 points high and the others 186; with a fasting card that is
// the last intake, not the carousel, as the product has always laid it out.

#include <cstdint>
#include <memory>
#include <optional>
#include <vector>

#include "model/NutritionDay.h"
#include "screens/ScreenContext.h"
#include "screens/menu/MenuDelegates.h"
#include "screens/menu/NutricionDayView.h"
#include "ui/ThemedButtons.h"
#include "views/CollectionView.h"
#include "views/Controls.h"
#include "views/NotificationCenter.h"
#include "views/StackView.h"
#include "views/ViewController.h"

namespace nutrition {

class NutricionHomeViewController : public ViewController,
                                    public CollectionViewDataSource,
                                    public CollectionViewDelegate,
                                    public NutricionDayDelegate,
                                    public IntakeCellDelegate,
                                    public IntakeViewDelegate {
 public:
  static constexpr const char* kUpdateNotification = "updateRecetasCollectionView";
  static constexpr const char* kDietSupplementNotice =
      "Tomar un comprimido de FRESUBIN HPHC o si eres diabético tomar DIVEN DRINK en la comida y "
      "en la cena";

  explicit NutricionHomeViewController(const ScreenContext& context) : context_(context) {}

  [[nodiscard]] std::string_view kind() const override { return "NutricionHomeViewController"; }

  std::shared_ptr<StackView> weekView;
  std::shared_ptr<CollectionView> collectionView;
  std::shared_ptr<ActivityIndicator> activityIndicator;
  std::shared_ptr<RoundButton> profileButton;
  bool isWithButton = true;
  std::optional<NutritionDay> selectedMenu;
  std::int64_t selectedDay = 0;

  void viewDidLoad() override;
  void viewWillAppear(bool animated) override;
  void reloadData();
  void configProfileButton();
  void showProfile();
  void showAyuno();
  void updateMenuDay();
  void showSupplements();
  void didTapCloseButton();
  // The selected day's intakes in card order: by `intakeId`, absent first, ties as they came.
  [[nodiscard]] std::vector<NutritionIntake> sortedIntakes() const;
  // The strip's day views, today first.
  [[nodiscard]] std::vector<NutricionDayView*> dayViews() const;

  // NutricionDayDelegate
  void changeDay(NutricionDayView& dayView) override;
  // CollectionViewDataSource and delegate
  int numberOfItems(CollectionView& view, int section) override;
  std::shared_ptr<ReusableCell> cellForItem(CollectionView& view, IndexPath indexPath) override;
  Size sizeForItem(CollectionView& view, IndexPath indexPath) override;
  void didSelectItem(CollectionView& view, IndexPath indexPath) override;
  // IntakeCellDelegate: the preview is shown here, and the full intake it leads to.
  ViewController& previewPresenter() override { return *this; }
  void showIntake(const NutritionIntake& intake) override;
  // IntakeViewDelegate
  void favoritesDidChange() override { reloadData(); }

 protected:
  void loadView() override;

 private:
  void loadDays();
  void showSelectedDay(const std::optional<NutritionMenu>& menu);
  [[nodiscard]] bool hasFastingCard() const;
  [[nodiscard]] bool hasFavorites() const;

  const ScreenContext& context_;
  NotificationCenter::Observation updateObservation_;
};

}  // namespace nutrition
