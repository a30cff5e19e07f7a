#include "screens/menu/NutricionHomeViewController.h"

#include <algorithm>

#include "screens/fasting/AyunoCells.h"
#include "screens/menu/IntakePreviewViewController.h"
#include "screens/menu/IntakeViewController.h"
#include "screens/menu/MenuScreenFixture.h"
#include "screens/menu/NutritionFavoriteDishCell.h"
#include "screens/menu/RecetaCell.h"
#include "screens/profile/ProfilePageViewController.h"
#include "support/Snapshot.h"
#include "views/AlertController.h"
#include "views/SystemColors.h"
#include "views/TextRenderer.h"

namespace nutrition {
namespace {

using test::kLunch;
using test::weekMenu;

constexpr const char* kFavourites =
    R"([{"DishId": 11, "DishName": "Lentejas", "Kcal": 300}, {"DishId": 40, "DishName": "Kiwi"}])";

// Breakfast without an id, a snack with id 4 and the lunch (id 3), in that order.
std::string sundayOfThree() {
  return std::string(R"([{"IntakeId": 4, "IntakeName": "Merienda", "Dishes": [{"DishId": 60,
      "DishName": "Yogur", "Kcal": 120}]}, {"IntakeName": "Desayuno", "Dishes": [
      {"DishId": 61, "DishName": "Avena", "Kcal": 350}]}, )") +
         kLunch + "]";
}

class HomeScreen : public test::MenuScreens {
 protected:
  std::vector<std::string> cellKinds(const NutricionHomeViewController& home) {
    std::vector<std::string> kinds;
    for (const auto& [path, cell] : home.collectionView->cells())
      kinds.emplace_back(cell->kind());
    return kinds;
  }
  std::vector<double> heights(const NutricionHomeViewController& home) {
    std::vector<double> sizes;
    for (const auto& [path, cell] : home.collectionView->cells())
      sizes.push_back(cell->frame().height());
    return sizes;
  }
};

TEST_F(HomeScreen, StripStartsTodayAndATapSelectsAnotherDay) {
  holdMenu(weekMenu(sundayOfThree()));
  auto home = openHome();
  const auto days = home->dayViews();
  ASSERT_EQ(days.size(), 7u);
  // 2026-11-22 is a Sunday: the strip runs Sunday to Saturday, Sunday selected as day 7.
  EXPECT_EQ(days[0]->weekDayLabel->text(), "Dom");
  EXPECT_EQ(days[0]->monthDay->text(), "22");
  EXPECT_EQ(days[1]->weekDayLabel->text(), "Lun");
  EXPECT_EQ(days[6]->weekDayLabel->text(), "Sáb");
  EXPECT_EQ(days[6]->monthDay->text(), "28");
  EXPECT_TRUE(days[0]->isSelected());
  EXPECT_EQ(days[0]->monthDay->font, Font::system(17, FontWeight::bold));
  EXPECT_EQ(home->selectedDay, 7);
  EXPECT_EQ(core_.utils().selectedDay, 7);
  EXPECT_EQ(home->sortedIntakes().size(), 3u);
  test::expectSnapshot("NutricionHomeViewController-intakes",
                       renderText(*root_->presentedViewController()));

  ASSERT_TRUE(days[1]->tap());
  EXPECT_TRUE(days[1]->isSelected());
  EXPECT_FALSE(days[0]->isSelected());
  EXPECT_EQ(days[0]->contentView->backgroundColor, systemColors::clear);
  EXPECT_EQ(days[0]->weekDayLabel->textColor, systemColors::secondaryLabel);
  EXPECT_EQ(days[1]->contentView->backgroundColor, core_.config().primaryColor.withAlpha(0.75));
  EXPECT_EQ(days[1]->contentView->lastAnimationDuration, 0.25);
  EXPECT_EQ(home->selectedDay, 1);
  EXPECT_EQ(core_.utils().selectedDay, 1);
  ASSERT_TRUE(home->selectedMenu.has_value());
  EXPECT_EQ(cellKinds(*home), std::vector<std::string>{"RecetaCell"});

  // Tuesday has no day in the menu: nothing but what needs no menu.
  ASSERT_TRUE(days[2]->tap());
  EXPECT_FALSE(home->selectedMenu.has_value());
  EXPECT_TRUE(home->collectionView->cells().empty());
}

TEST_F(HomeScreen, RowsFollowTheFastingCardTheIntakesAndTheFavourites) {
  setMember(1, 3);
  holder(kFavourites);
  core_.utils().weeklyMenu = decodeMenu(weekMenu(sundayOfThree()));
  auto home = openHome();
  EXPECT_EQ(cellKinds(*home),
            (std::vector<std::string>{"AyunoCell", "RecetaCell", "RecetaCell", "RecetaCell",
                                      "NutritionFavoriteDishCell"}));
  // The row numbered n (3) is the short one, which with a fasting card is the last intake.
  EXPECT_EQ(heights(*home), (std::vector<double>{186, 186, 186, 140, 186}));
  for (const auto& [path, cell] : home->collectionView->cells())
    EXPECT_EQ(cell->frame().width(), 390 - 48);

  // Cards by intakeId, the one without an id first.
  const auto card = [&](int row) {
    return static_cast<RecetaCell*>(home->collectionView->cellForItem({0, row}));
  };
  EXPECT_EQ(card(1)->recipeTitle->text(), "Desayuno");
  EXPECT_EQ(card(2)->recipeTitle->text(), "Comida");
  EXPECT_EQ(card(3)->recipeTitle->text(), "Merienda");
  // 300 + absent + 250.
  EXPECT_EQ(card(2)->recipeKcal->text(), "550 Kcal");
  EXPECT_FALSE(card(2)->dishesView->isHidden);
  EXPECT_EQ(card(2)->dishesLabel->text(), "3 platos");
  EXPECT_TRUE(card(1)->dishesView->isHidden);
  auto* fasting = static_cast<AyunoCell*>(home->collectionView->cellForItem({0, 0}));
  EXPECT_EQ(fasting->titleLabel->text(), "Ayuno intermitente");
  EXPECT_EQ(fasting->imgView->image, ImageRef::named("ayuno-section"));
  auto* carousel =
      static_cast<NutritionFavoriteDishCell*>(home->collectionView->cellForItem({0, 4}));
  EXPECT_EQ(carousel->contentDishes->arrangedSubviews().size(), 2u);
  test::expectSnapshot("NutricionHomeViewController-fasting-favourites",
                       renderText(*root_->presentedViewController()));

  // A running fast shows its phase and small timer instead.
  core_.ayuno().startIfFinished();
  home->reloadData();
  auto* running = dynamic_cast<AyunoInfoCell*>(home->collectionView->cellForItem({0, 0}));
  ASSERT_NE(running, nullptr);
  EXPECT_EQ(running->titleLabel->text(), core_.ayuno().getCurrentPhase().name.value_or(""));
  EXPECT_EQ(running->contentClock->arrangedSubviews().size(), 1u);
}

TEST_F(HomeScreen, DownloadsTheMenuUnlessAProcessedOneIsHeld) {
  holder();
  const auto menuRequests = [&] {
    return std::count_if(http().requests().begin(), http().requests().end(),
                         [](const HttpRequest& request) {
                           return request.url.find("api/menu") != std::string::npos;
                         });
  };
  auto home = openHome();
  EXPECT_EQ(menuRequests(), 2);  // loading, then appearing, with nothing held
  answerMenu(weekMenu(sundayOfThree(), /*processed=*/false));
  EXPECT_EQ(home->sortedIntakes().size(), 3u);
  home->reloadData();  // held but not processed: asked for again
  EXPECT_EQ(menuRequests(), 3);
  answerMenu(weekMenu("[]"));
  answerMenu(weekMenu("[]"));
  home->reloadData();
  EXPECT_EQ(menuRequests(), 3);
  EXPECT_TRUE(home->selectedMenu.has_value());
  EXPECT_TRUE(home->sortedIntakes().empty());

  // A failed download leaves no day: with no favourites, no rows at all.
  core_.utils().weeklyMenu.reset();
  home->reloadData();
  ASSERT_TRUE(http().answerTo("api/menu", "<html>busy</html>", 503));
  run();
  EXPECT_FALSE(home->selectedMenu.has_value());
  EXPECT_TRUE(home->collectionView->cells().empty());
  test::expectSnapshot("NutricionHomeViewController-empty",
                       renderText(*root_->presentedViewController()));
}

TEST_F(HomeScreen, SupplementNoticeOnlyForDiet11OnEveryUpdate) {
  setMember(10, std::nullopt);
  holdMenu(weekMenu(sundayOfThree()));
  auto home = openHome();
  EXPECT_EQ(top()->kind(), "CustomNavViewController");

  setMember(11, std::nullopt);
  home->reloadData();
  auto* notice = dynamic_cast<AlertController*>(top());
  ASSERT_NE(notice, nullptr);
  EXPECT_EQ(notice->titleText, "Aviso");
  EXPECT_EQ(notice->message, NutricionHomeViewController::kDietSupplementNotice);
  ASSERT_TRUE(notice->tapAction("Ok"));
  home->reloadData();
  EXPECT_NE(dynamic_cast<AlertController*>(top()), nullptr);
}

TEST_F(HomeScreen, CardsOpenTheirScreens) {
  setMember(1, 2);
  holdMenu(weekMenu(sundayOfThree()));
  auto home = openHome();
  auto& navigation = *home->navigationController();

  // The intake card without an id selects intake 1 and opens full-screen over the home.
  ASSERT_TRUE(home->collectionView->selectItem({0, 1}));
  auto* intake = dynamic_cast<IntakeViewController*>(top());
  ASSERT_NE(intake, nullptr);
  EXPECT_EQ(intake->ingesta->name, "Desayuno");
  EXPECT_EQ(intake->modalPresentationStyle, ModalPresentationStyle::fullScreen);
  EXPECT_EQ(core_.utils().selectedIntake, 1);
  intake->closeButton->tap();
  run();
  EXPECT_EQ(top(), &navigation);

  // The info button of a card opens the preview, which hands over to the full intake.
  auto* lunch = static_cast<RecetaCell*>(home->collectionView->cellForItem({0, 2}));
  ASSERT_TRUE(lunch->infoButton->tap());
  auto* preview = dynamic_cast<IntakePreviewViewController*>(top());
  ASSERT_NE(preview, nullptr);
  EXPECT_FALSE(preview->wasPresentedAnimated());
  EXPECT_EQ(preview->modalPresentationStyle, ModalPresentationStyle::overCurrentContext);
  ASSERT_TRUE(preview->detailButton->tap());
  intake = dynamic_cast<IntakeViewController*>(top());
  ASSERT_NE(intake, nullptr);
  EXPECT_EQ(intake->ingesta->intakeId, 3);
  EXPECT_EQ(core_.utils().selectedIntake, 3);
  intake->dismiss(false);
  run();

  // The fasting card pushes the fasting screen, made on the main queue's next turn.
  ASSERT_TRUE(home->collectionView->selectItem({0, 0}));
  run();
  EXPECT_EQ(navigation.viewControllers().back()->kind(), "AyunoViewController");
  EXPECT_EQ(presenter_->events.back(), "push AyunoViewController (animated)");
}

TEST_F(HomeScreen, BarButtonsProfileButtonAndTheUpdateNotification) {
  holdMenu(weekMenu(sundayOfThree()));
  auto home = openHome();
  ASSERT_TRUE(home->navigationItem.leftBarButtonItem.has_value());
  EXPECT_EQ(home->navigationItem.leftBarButtonItem->image, ImageRef::named("back-image"));
  EXPECT_EQ(home->profileButton->cornerRadius, 35);
  EXPECT_EQ(home->profileButton->backgroundColor, core_.config().primaryColor);
  ASSERT_TRUE(home->profileButton->shadow.has_value());
  EXPECT_EQ(home->profileButton->shadow->opacity, 0.5);
  home->profileButton->tap();
  EXPECT_TRUE(core_.config().isSettingsFromMenu);
  // The editor opens over the menu, in its own navigation controller; closing it leaves the
  // menu where it was.
  run();
  auto* editorNavigation =
      dynamic_cast<NavigationController*>(home->navigationController()->presentedViewController());
  ASSERT_NE(editorNavigation, nullptr);
  EXPECT_NE(dynamic_cast<ProfilePageViewController*>(editorNavigation->topViewController()),
            nullptr);
  editorNavigation->dismiss(false);
  run();
  EXPECT_EQ(home->navigationController()->presentedViewController(), nullptr);

  // The host posts the update: the cards follow the held menu.
  core_.utils().weeklyMenu = decodeMenu(weekMenu(std::string("[") + kLunch + "]"));
  core_.notifications().post(NutricionHomeViewController::kUpdateNotification);
  EXPECT_EQ(home->sortedIntakes().size(), 1u);

  // The left button closes what the router presented.
  home->navigationItem.leftBarButtonItem->action();
  run();
  EXPECT_EQ(root_->presentedViewController(), nullptr);
  home.reset();
  run();
  EXPECT_EQ(core_.notifications().observerCount(NutricionHomeViewController::kUpdateNotification),
            0u);

  // Embedded in a host's screen: no left button.
  core_.utils().isEmbedViewController = true;
  auto embedded = std::make_shared<NutricionHomeViewController>(screens());
  embedded->loadViewIfNeeded();
  EXPECT_FALSE(embedded->navigationItem.leftBarButtonItem.has_value());
}

}  // namespace
}  // namespace nutrition
