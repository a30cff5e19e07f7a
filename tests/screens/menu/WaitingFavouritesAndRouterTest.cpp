#include "facade/NutritionSDK.h"
#include "router/NutritionControllers.h"
#include "screens/menu/IntakeViewController.h"
#include "screens/menu/MenuScreenFixture.h"
#include "screens/menu/NutritionFavoriteDishCell.h"
#include "screens/menu/WaitingScreenViewController.h"
#include "screens/profile/ProfilePageViewController.h"
#include "support/Snapshot.h"
#include "ui/HealthAlertViewController.h"
#include "views/TextRenderer.h"

namespace nutrition {
namespace {

using namespace std::chrono_literals;
using test::kLunch;
using test::weekMenu;

class WaitingFavouritesAndRouter : public test::MenuScreens {
 protected:
  std::shared_ptr<WaitingScreenViewController> openWaiting() {
    auto waiting = std::make_shared<WaitingScreenViewController>(screens());
    waiting->modalPresentationStyle = ModalPresentationStyle::fullScreen;
    root_->present(waiting, true);
    return waiting;
  }
  void tick() {
    platform_.clock().advance(600ms);
    run();
  }
  static NutritionDish dish(std::int64_t id, const std::string& name,
                            std::optional<std::int64_t> kcal = std::nullopt) {
    return NutritionDish{.dishID = id, .name = name, .kcal = kcal};
  }
};

TEST_F(WaitingFavouritesAndRouter, WaitingScreenFillsInTenStepsThenOffersTheMenu) {
  holder();
  auto waiting = openWaiting();
  EXPECT_EQ(waiting->button->currentTitle(), "Ver menú");
  EXPECT_TRUE(waiting->button->isHidden);
  EXPECT_EQ(waiting->currentScreen, 1);
  EXPECT_EQ(waiting->waitingScreens.size(), 4u);
  test::expectSnapshot("WaitingScreenViewController-start", renderText(*waiting));
  for (int step = 1; step < 10; ++step)
    tick();
  EXPECT_TRUE(waiting->isWaiting());
  EXPECT_TRUE(waiting->button->isHidden);
  EXPECT_NEAR(waiting->progressView->progress(), 0.9, 1e-6);
  tick();
  EXPECT_FALSE(waiting->isWaiting());
  EXPECT_EQ(waiting->progressView->progress(), 1.0);
  EXPECT_FALSE(waiting->button->isHidden);
  EXPECT_TRUE(waiting->progressView->isHidden);
  EXPECT_TRUE(waiting->dotsView->isHidden);
  EXPECT_EQ(waiting->titleLabel->text(), "¡Menú listo!");
  test::expectSnapshot("WaitingScreenViewController-end", renderText(*waiting));

  // From the settings of the menu: "Ver menú" only closes, the menu is underneath.
  core_.config().isSettingsFromMenu = true;
  const auto sent = http().requests().size();
  ASSERT_TRUE(waiting->button->tap());
  run();
  EXPECT_EQ(root_->presentedViewController(), nullptr);
  EXPECT_EQ(http().requests().size(), sent);
}

TEST_F(WaitingFavouritesAndRouter, VerMenuLeadsToTheWeeklyMenuAndALeavingScreenStopsItsTimer) {
  holdMenu(weekMenu(std::string("[") + kLunch + "]"));
  auto waiting = openWaiting();
  for (int step = 0; step < 10; ++step)
    tick();
  ASSERT_TRUE(waiting->button->tap());
  run();
  // The held menu is processed: the router shows the menu home in its navigation controller.
  auto* navigation = dynamic_cast<CustomNavViewController*>(top());
  ASSERT_NE(navigation, nullptr);
  EXPECT_EQ(navigation->viewControllers().front()->kind(), "NutricionHomeViewController");
  EXPECT_EQ(navigation->modalPresentationStyle, ModalPresentationStyle::overFullScreen);
  navigation->dismiss(false);
  run();

  auto closed = openWaiting();
  tick();
  ASSERT_TRUE(closed->closeButton->tap());
  run();
  EXPECT_FALSE(closed->isWaiting());
  const double progress = closed->progressView->progress();
  tick();
  EXPECT_EQ(closed->progressView->progress(), progress);
}

TEST_F(WaitingFavouritesAndRouter, CarouselRebuildsItsTilesAndTilesOpenTheirDish) {
  holder();
  auto cell = makeView<NutritionFavoriteDishCell>(screens());
  EXPECT_EQ(cell->content->cornerRadius, 18);
  std::vector<NutritionDish> five;
  for (int id = 1; id <= 5; ++id)
    five.push_back(dish(id, "Plato " + std::to_string(id), id * 100));
  cell->loadDishes(five);
  EXPECT_EQ(cell->titleLabel->text(), "Mis platos favoritos");
  EXPECT_EQ(cell->contentDishes->arrangedSubviews().size(), 5u);
  EXPECT_EQ(cell->pageControl->numberOfPages, 5);
  auto* second = static_cast<FavoriteView*>(cell->contentDishes->arrangedSubviews()[1].get());
  EXPECT_EQ(second->titleLabel->text(), "Plato 2");
  EXPECT_EQ(second->kcalLabel->text(), "200kcal");
  EXPECT_TRUE(second->imageView->clipsToBounds);
  // The page control follows the carousel.
  cell->carousel->setContentOffset({2 * (NutritionFavoriteDishCell::kTileWidth + 12), 0});
  EXPECT_EQ(cell->pageControl->currentPage, 2);
  cell->carousel->setContentOffset({10'000, 0});
  EXPECT_EQ(cell->pageControl->currentPage, 4);

  cell->loadDishes({dish(7, "Kiwi"), dish(8, "Pera")});
  EXPECT_EQ(cell->contentDishes->arrangedSubviews().size(), 2u);
  EXPECT_EQ(cell->pageControl->numberOfPages, 2);
  EXPECT_EQ(cell->pageControl->currentPage, 0);
  auto* kiwi = static_cast<FavoriteView*>(cell->contentDishes->arrangedSubviews()[0].get());
  EXPECT_EQ(kiwi->kcalLabel->text(), "0kcal");

  // A tile opens the full intake with its dish alone, over the top screen.
  ASSERT_TRUE(kiwi->tap());
  auto* intake = dynamic_cast<IntakeViewController*>(top());
  ASSERT_NE(intake, nullptr);
  EXPECT_EQ(intake->modalPresentationStyle, ModalPresentationStyle::fullScreen);
  ASSERT_EQ(intake->ingesta->dishes->size(), 1u);
  EXPECT_EQ(intake->ingesta->dishes->front().name, "Kiwi");
  EXPECT_EQ(intake->ingesta->name, "Kiwi");

  cell->loadDishes({});
  EXPECT_TRUE(cell->contentDishes->arrangedSubviews().empty());
  EXPECT_EQ(cell->pageControl->numberOfPages, 0);
  EXPECT_EQ(cell->titleLabel->text(), "Mis platos favoritos");
}

TEST_F(WaitingFavouritesAndRouter, RouterChoosesBetweenAlertMenuAndWaitingScreens) {
  NutritionControllers& router = core_.router();
  holder();
  // An unregistered member gets the alert.
  core_.session().isUnregister = true;
  router.showWeekMenu();
  run();
  auto* alert = dynamic_cast<HealthAlertViewController*>(top());
  ASSERT_NE(alert, nullptr);
  EXPECT_EQ(alert->messageString, "Aviso");
  EXPECT_EQ(alert->buttonTitle, "COMPLETAR EVALUACIÓN CORPORAL");
  EXPECT_EQ(alert->image, ImageRef::named("food"));
  alert->didTapExit();
  run();
  core_.session().isUnregister = false;

  // No menu held: downloaded; not processed: the waiting screens.
  router.showWeekMenu();
  answerMenu(weekMenu("[]", /*processed=*/false));
  auto* waiting = dynamic_cast<WaitingScreenViewController*>(top());
  ASSERT_NE(waiting, nullptr);
  EXPECT_FALSE(waiting->isFromMenu);
  waiting->dismiss(false);
  run();

  // Held but not processed: downloaded again; processed now: the menu.
  router.showWeekMenu();
  answerMenu(weekMenu(std::string("[") + kLunch + "]"));
  ASSERT_NE(dynamic_cast<CustomNavViewController*>(top()), nullptr);
  top()->dismiss(false);
  run();

  // While a new menu is on hold, the menu waits.
  platform_.stores().standard()->set("hold_menu_timer", platform_.nowSeconds() + 5);
  router.showMenu();
  EXPECT_NE(dynamic_cast<WaitingScreenViewController*>(top()), nullptr);
  top()->dismiss(false);
  run();
  platform_.stores().standard()->remove("hold_menu_timer");

  // Today's intakes by index; out of range shows nothing.
  router.showTodayIntake(-1);
  router.showTodayIntake(1);
  EXPECT_EQ(top(), root_.get());
  router.showTodayIntake(0);
  auto* intake = dynamic_cast<IntakeViewController*>(top());
  ASSERT_NE(intake, nullptr);
  EXPECT_EQ(intake->ingesta->intakeId, 3);
  EXPECT_EQ(core_.utils().selectedIntake, 3);
  EXPECT_EQ(core_.utils().selectedDay, 7);
}

TEST_F(WaitingFavouritesAndRouter, HandedOverScreensAndAFailedDownload) {
  NutritionControllers& router = core_.router();
  holder();
  int handed = 0;
  router.getNutrition([&](std::shared_ptr<ViewController> screen) {
    ++handed;
    EXPECT_EQ(screen->kind(), "NutricionHomeViewController");
  });
  ASSERT_TRUE(http().answerTo("api/menu", "", 500));
  run();
  EXPECT_EQ(handed, 0);
  router.getNutrition([&](const std::shared_ptr<ViewController>&) { ++handed; });
  answerMenu(weekMenu("[]", /*processed=*/false));
  EXPECT_EQ(handed, 1);

  // Embedding: the home at once, marked embedded, and the waiting screens while not ready.
  std::shared_ptr<ViewController> embedded;
  router.getWeekMenu([&](std::shared_ptr<ViewController> screen) { embedded = std::move(screen); });
  ASSERT_NE(embedded, nullptr);
  EXPECT_TRUE(core_.utils().isEmbedViewController);
  answerMenu(weekMenu("[]", /*processed=*/false));
  EXPECT_NE(dynamic_cast<WaitingScreenViewController*>(top()), nullptr);

  // No key window: nothing is presented, nothing breaks.
  core_.application().setKeyWindow(nullptr);
  router.showWaitScreens(true);
  router.showUserUnregisterAlert();
  EXPECT_EQ(core_.application().topViewController(), nullptr);
}

TEST_F(WaitingFavouritesAndRouter, FacadeScreenOperationsGoThroughTheRouter) {
  holdMenu(weekMenu(std::string("[") + kLunch + "]"));
  NutritionSDK& sdk = core_.sdk();
  sdk.showNutritionModule();
  run();
  auto* navigation = dynamic_cast<CustomNavViewController*>(top());
  ASSERT_NE(navigation, nullptr);
  sdk.showTodayIntake(1);  // one intake today: index 1 is out of range
  EXPECT_EQ(top(), navigation);
  sdk.showTodayIntake(0);
  EXPECT_EQ(top()->kind(), "IntakeViewController");
  EXPECT_EQ(top()->presentingViewController(), navigation);

  std::shared_ptr<ViewController> handed;
  sdk.getWeekMenu([&](std::shared_ptr<ViewController> screen) { handed = std::move(screen); });
  ASSERT_NE(handed, nullptr);
  EXPECT_EQ(handed->kind(), "NutricionHomeViewController");
  EXPECT_TRUE(core_.utils().isEmbedViewController);
  handed.reset();
  sdk.getNutritionModule(
      [&](std::shared_ptr<ViewController> screen) { handed = std::move(screen); });
  ASSERT_NE(handed, nullptr);  // a processed menu is held: at once
}

TEST_F(WaitingFavouritesAndRouter, TheUnregisteredAlertAndTheFacadeLeadToTheQuestionnaire) {
  holder();
  core_.session().isUnregister = true;
  core_.router().showWeekMenu();
  run();
  auto* alert = dynamic_cast<HealthAlertViewController*>(top());
  ASSERT_NE(alert, nullptr);
  alert->continueButton->tap();
  run();
  // The editor comes over full screen in a navigation controller of its own.
  auto* navigation = dynamic_cast<NavigationController*>(top());
  ASSERT_NE(navigation, nullptr);
  EXPECT_EQ(navigation->modalPresentationStyle, ModalPresentationStyle::overFullScreen);
  auto* editor = dynamic_cast<ProfilePageViewController*>(navigation->topViewController());
  ASSERT_NE(editor, nullptr);
  ASSERT_NE(editor->currentPage(), nullptr);
  EXPECT_EQ(editor->currentPage()->nextButton->currentTitle(), "Siguiente");
  navigation->dismiss(false);
  run();

  NutritionSDK& sdk = core_.sdk();
  sdk.showProfile();
  run();
  navigation = dynamic_cast<NavigationController*>(top());
  ASSERT_NE(navigation, nullptr);
  EXPECT_NE(dynamic_cast<ProfilePageViewController*>(navigation->topViewController()), nullptr);
  navigation->dismiss(false);
  run();

  // Handed over on the main queue, not before.
  std::shared_ptr<ViewController> handed;
  sdk.getNutritionProfile(
      [&](std::shared_ptr<ViewController> screen) { handed = std::move(screen); });
  EXPECT_EQ(handed, nullptr);
  run();
  ASSERT_NE(handed, nullptr);
  EXPECT_EQ(handed->kind(), "ProfilePageViewController");
  EXPECT_EQ(handed->presentingViewController(), nullptr);  // handed over, not presented
}

}  // namespace
}  // namespace nutrition
