#include <algorithm>

#include "sandbox/PngImage.h"
#include "screens/menu/IntakePreviewViewController.h"
#include "screens/menu/IntakeViewController.h"
#include "screens/menu/MenuScreenFixture.h"
#include "screens/menu/NutricionRecetaViewController.h"
#include "screens/menu/RecetaCell.h"
#include "support/Snapshot.h"
#include "views/AlertController.h"
#include "views/SystemColors.h"
#include "views/TextRenderer.h"

namespace nutrition {
namespace {

using test::kLunch;
using test::weekMenu;

// Whole PNG images, as the image cache wants them: the sandbox's drawings of two dishes.
std::string dishPng(std::size_t which) {
  return sandbox::dishImagePng(sandbox::SeedData::embedded().dishes.at(which));
}

class RecipeAndIntake : public test::MenuScreens {
 protected:
  RecipeAndIntake() {
    holdMenu(weekMenu(std::string("[") + kLunch + "]"));
    NutritionUtils& utils = core_.utils();
    utils.selectedDay = 7;
    utils.selectedIntake = 3;
    lunch_ = utils.getTodayMenu().intakes->front();
  }
  std::shared_ptr<IntakeViewController> openIntake(const NutritionIntake& intake) {
    auto screen = std::make_shared<IntakeViewController>(screens());
    screen->ingesta = intake;
    screen->modalPresentationStyle = ModalPresentationStyle::fullScreen;
    root_->present(screen, true);
    return screen;
  }
  std::string lastBody(std::string_view urlPart) {
    for (auto it = http().requests().rbegin(); it != http().requests().rend(); ++it) {
      if (it->url.find(urlPart) != std::string::npos) return it->body.value_or("");
    }
    return "<none>";
  }

  NutritionIntake lunch_;
};

TEST_F(RecipeAndIntake, RecipePageFillsEveryOutlet) {
  auto intake = openIntake(lunch_);
  NutricionRecetaViewController* page = intake->currentPage();
  ASSERT_NE(page, nullptr);
  EXPECT_EQ(page->nameLabel->text(), "Lentejas");
  ASSERT_TRUE(page->ingestaLabel->attributedText().has_value());
  const auto& runs = page->ingestaLabel->attributedText()->runs;
  ASSERT_EQ(runs.size(), 2u);
  EXPECT_EQ(runs[0], (TextRun{"Primer plato", Font::system(28), core_.config().primaryColor}));
  EXPECT_EQ(runs[1], (TextRun{"   300 Kcal", Font::system(20), systemColors::secondaryLabel}));
  EXPECT_EQ(page->composicionLabel->text(), "18 g proteína | 40 g carb | 6 g grasa");
  EXPECT_EQ(page->ingredientsLabel->text(), "• lentejas\n• zanahoria\n• cebolla");
  EXPECT_EQ(page->ingredientsLabel->attributedText()->lineSpacing, 10);
  EXPECT_EQ(page->preparacionLabel->text(), "Cuece todo 40 minutos.");
  EXPECT_EQ(page->preparacionLabel->attributedText()->lineSpacing, 7);
  EXPECT_EQ(page->difficultyLabel->text(), "Dificultad: Baja");
  EXPECT_TRUE(page->veganFlag->isHidden);
  EXPECT_TRUE(page->glutenFreeFlag->isHidden);
  EXPECT_FALSE(page->categoryLabel->isHidden);
  EXPECT_EQ(page->extendedView->cornerRadius, 45);
  EXPECT_EQ(page->ingredientsView->cornerRadius, 15);
  EXPECT_EQ(page->favoriteButton->currentImage(), ImageRef::named("favorite-off"));
  test::expectSnapshot("IntakeViewController", renderText(*intake));

  // The second dish has no energy, macronutrients or difficulty: dashes, and "Alta".
  ASSERT_TRUE(intake->pageViewController->swipe(PageViewController::Direction::forward));
  page = intake->currentPage();
  EXPECT_EQ(page->ingestaLabel->text(), "Segundo plato   – Kcal");
  EXPECT_EQ(page->composicionLabel->text(), "– g proteína | – g carb | – g grasa");
  EXPECT_EQ(page->difficultyLabel->text(), "Dificultad: Alta");
  EXPECT_EQ(page->ingredientsLabel->text(), "");
  test::expectSnapshot("NutricionRecetaViewController", renderText(*page));

  EXPECT_EQ(ingredientBullets("sal"), "• sal");
  EXPECT_EQ(ingredientBullets("a,b, c"), "• a,b\n• c");
}

TEST_F(RecipeAndIntake, PagingWrapsForwardAndStopsBackward) {
  auto intake = openIntake(lunch_);
  auto& pages = *intake->pageViewController;
  EXPECT_EQ(intake->presentationCount(), 3u);
  EXPECT_EQ(intake->presentationIndex(), 0u);
  EXPECT_FALSE(pages.swipe(PageViewController::Direction::reverse));
  ASSERT_TRUE(pages.swipe(PageViewController::Direction::forward));
  ASSERT_TRUE(pages.swipe(PageViewController::Direction::forward));
  EXPECT_EQ(intake->presentationIndex(), 2u);
  ASSERT_TRUE(pages.swipe(PageViewController::Direction::forward));
  EXPECT_EQ(intake->presentationIndex(), 0u);
  EXPECT_EQ(intake->currentPage()->receta->name, "Lentejas");
  ASSERT_TRUE(pages.swipe(PageViewController::Direction::forward));
  ASSERT_TRUE(pages.swipe(PageViewController::Direction::reverse));
  EXPECT_EQ(intake->presentationIndex(), 0u);

  // One dish: the page knows it is the only course; no dishes: no page at all.
  NutritionIntake single = lunch_;
  single.dishes->resize(1);
  root_->presentedViewController()->dismiss(false);
  run();
  auto one = openIntake(single);
  EXPECT_TRUE(one->currentPage()->isUniqueCourse);
  EXPECT_TRUE(one->currentPage()->categoryLabel->isHidden);
  EXPECT_FALSE(one->pageViewController->swipe(PageViewController::Direction::reverse));
  NutritionIntake empty;
  EXPECT_EQ(one->viewControllerAtIndex(1), nullptr);
  one->ingesta = empty;
  EXPECT_EQ(one->presentationCount(), 0u);
  EXPECT_EQ(one->viewControllerAtIndex(0), nullptr);
}

TEST_F(RecipeAndIntake, ButtonsFadeWithTheScrollAndAtExactly186OnlyThePagesGo) {
  auto intake = openIntake(lunch_);
  EXPECT_EQ(intake->closeButton->alpha, 1);
  EXPECT_EQ(intake->closeButton->lastAnimationDuration, 0.2);
  NutricionRecetaViewController& page = *intake->currentPage();
  page.scrollView().setContentOffset({0, 186});
  EXPECT_EQ(intake->favoriteButton->alpha, 1);
  EXPECT_EQ(page.favoriteButton->alpha, 0);
  EXPECT_EQ(page.alternativeButton->alpha, 0);
  EXPECT_EQ(page.favoriteButton->lastAnimationDuration, 0.2);
  page.scrollView().setContentOffset({0, 187});
  EXPECT_EQ(intake->favoriteButton->alpha, 0);
  EXPECT_EQ(intake->closeButton->alpha, 0);
  page.scrollView().setContentOffset({0, 10});
  EXPECT_EQ(intake->alternativeButton->alpha, 1);
  EXPECT_EQ(page.alternativeButton->alpha, 1);
}

TEST_F(RecipeAndIntake, AlternativeReplacesTheDishAndTheHeldMenu) {
  auto intake = openIntake(lunch_);
  NutricionRecetaViewController& page = *intake->currentPage();
  ASSERT_TRUE(intake->alternativeButton->tap());
  EXPECT_NE(lastBody("dish/replace").find("\"DishOrderId\":1"), std::string::npos);
  // The backend answers with the whole menu; the page shows the new dish of its course.
  std::string replaced = kLunch;
  replaced.replace(replaced.find("Lentejas"), 8, "Garbanzos");
  replaced.replace(replaced.find("\"DishId\": 11"), 12, "\"DishId\": 19");
  ASSERT_TRUE(http().answerTo("dish/replace", "[" + weekMenu("[" + replaced + "]") + "]"));
  run();
  EXPECT_EQ(page.nameLabel->text(), "Garbanzos");
  EXPECT_EQ(core_.utils().getTodayMenu().intakes->front().dishes->front().dishID, 19);
  // Paging away and back shows the new dish, not the one the intake opened with.
  intake->pageViewController->swipe(PageViewController::Direction::forward);
  intake->pageViewController->swipe(PageViewController::Direction::forward);
  intake->pageViewController->swipe(PageViewController::Direction::forward);
  EXPECT_EQ(intake->currentPage()->nameLabel->text(), "Garbanzos");

  // A failed request leaves the page as it was; a dish without a course asks for course 1.
  NutricionRecetaViewController& again = *intake->currentPage();
  again.receta->dishOrderID.reset();
  again.switchAlternative();
  EXPECT_NE(lastBody("dish/replace").find("\"DishOrderId\":1"), std::string::npos);
  ASSERT_TRUE(http().answerTo("dish/replace", "{}", 500));
  run();
  EXPECT_EQ(again.nameLabel->text(), "Garbanzos");

  // A favourite opened alone is no meal of the menu: no alternative to ask for.
  NutritionIntake favourite;
  favourite.name = "Kiwi";
  favourite.dishes = std::vector<NutritionDish>{NutritionDish{.dishID = 40, .name = "Kiwi"}};
  root_->presentedViewController()->dismiss(false);
  run();
  auto alone = openIntake(favourite);
  EXPECT_TRUE(alone->alternativeButton->isHidden);
  EXPECT_TRUE(alone->currentPage()->alternativeButton->isHidden);
}

TEST_F(RecipeAndIntake, FavouriteToggledTwiceEndsWhereItBegan) {
  auto intake = openIntake(lunch_);
  NutricionRecetaViewController& page = *intake->currentPage();
  EXPECT_EQ(intake->favoriteButton->currentImage(), ImageRef::named("favorite-off"));
  ASSERT_TRUE(intake->favoriteButton->tap());
  EXPECT_NE(lastBody("favorite-dish/add").find("\"DishId\":11"), std::string::npos);
  // Nothing changes before the backend answers.
  EXPECT_EQ(page.favoriteButton->currentImage(), ImageRef::named("favorite-off"));
  ASSERT_TRUE(http().answerTo("favorite-dish/add",
                              R"([{"Dish": {"DishId": 11, "DishName": "Lentejas"}}])"));
  run();
  EXPECT_EQ(page.favoriteButton->currentImage(), ImageRef::named("favorite-on"));
  EXPECT_EQ(intake->favoriteButton->currentImage(), ImageRef::named("favorite-on"));
  EXPECT_TRUE(page.isFavorite());

  ASSERT_TRUE(page.favoriteButton->tap());
  EXPECT_EQ(lastBody("favorite-dish/delete"), R"({"UserId":"m1_acme","DishId":11})");
  // A failed removal leaves the icon as it was.
  ASSERT_TRUE(http().answerTo("favorite-dish/delete", "", 500));
  run();
  EXPECT_EQ(page.favoriteButton->currentImage(), ImageRef::named("favorite-on"));
  ASSERT_TRUE(page.favoriteButton->tap());
  ASSERT_TRUE(http().answerTo("favorite-dish/delete", R"([{"Dishes": []}])"));
  run();
  EXPECT_EQ(page.favoriteButton->currentImage(), ImageRef::named("favorite-off"));
  EXPECT_FALSE(page.isFavorite());
}

TEST_F(RecipeAndIntake, SupplementNoticeOnEveryAppearanceOfABariatricIntake) {
  core_.session().currentUser.reset();
  auto plain = openIntake(lunch_);  // no member: phase 1, which prescribes nothing
  EXPECT_EQ(top(), plain.get());
  plain->dismiss(false);
  run();

  setMember(11, std::nullopt);
  const auto advice = NutritionSDKUtils::getSuplementosForPhase(11, 3);
  ASSERT_TRUE(advice.has_value());
  auto intake = openIntake(lunch_);
  auto* notice = dynamic_cast<AlertController*>(top());
  ASSERT_NE(notice, nullptr);
  EXPECT_EQ(notice->titleText, "Aviso");
  EXPECT_EQ(notice->message, *advice);
  notice->tapAction("Ok");
  // Covered and shown again: the notice again, the pages as they were.
  auto* firstPage = intake->currentPage();
  auto cover = std::make_shared<ViewController>();
  cover->modalPresentationStyle = ModalPresentationStyle::fullScreen;
  intake->present(cover, false);
  cover->dismiss(false);
  run();
  EXPECT_NE(dynamic_cast<AlertController*>(top()), nullptr);
  EXPECT_EQ(intake->currentPage(), firstPage);
}

TEST_F(RecipeAndIntake, PreviewListsTheDishesWithTheirTotal) {
  auto preview = std::make_shared<IntakePreviewViewController>(screens());
  preview->intake = lunch_;
  root_->present(preview, false);
  EXPECT_EQ(preview->titleLabel->text(), "Comida");
  EXPECT_EQ(preview->kcalLabel->text(), "550 kcal");
  EXPECT_EQ(preview->contentView->cornerRadius, 20);
  const auto& rows = preview->tableView->cells();
  ASSERT_EQ(rows.size(), 3u);
  const auto* second = static_cast<DishTableViewCell*>(rows[1].second.get());
  EXPECT_EQ(second->categoryLabel->text(), "Segundo plato");
  EXPECT_FALSE(second->categoryLabel->isHidden);
  EXPECT_EQ(second->titleLabel->text(), "Merluza");
  EXPECT_EQ(second->kcalLabel->text(), "0 kcal");
  test::expectSnapshot("IntakePreviewViewController", renderText(*root_));

  NutritionIntake single = lunch_;
  single.dishes->resize(1);
  preview->intake = single;
  preview->reloadData();
  ASSERT_EQ(preview->tableView->cells().size(), 1u);
  EXPECT_TRUE(static_cast<DishTableViewCell*>(preview->tableView->cells()[0].second.get())
                  ->categoryLabel->isHidden);
}

TEST_F(RecipeAndIntake, DishPhotosComeThroughTheCacheAndAReusedCellKeepsItsOwn) {
  const std::string lentejas = "https://img.test/lentejas.png";
  auto cell = makeView<RecetaCell>(screens());
  cell->loadIngesta(lunch_);
  EXPECT_EQ(cell->recipePhoto->image, ImageRef::named("placeholder_menu"));
  ASSERT_EQ(http().requests().back().url, lentejas);

  // Reused for another intake before the first photo arrives.
  NutritionIntake other = lunch_;
  other.name = "Cena";
  other.dishes->front().binaryUrls = std::vector<std::string>{"https://img.test/sopa.png"};
  cell->loadIngesta(other);
  ASSERT_TRUE(http().answerTo("lentejas.png", dishPng(0)));
  run();
  EXPECT_EQ(cell->recipePhoto->image, ImageRef::named("placeholder_menu"));
  ASSERT_TRUE(http().answerTo("sopa.png", dishPng(1)));
  run();
  ASSERT_TRUE(cell->recipePhoto->image.has_value());
  ASSERT_TRUE(cell->recipePhoto->image->bytes != nullptr);
  const auto& shown = cell->recipePhoto->image->bytes->data;
  EXPECT_EQ(std::string(shown.begin(), shown.end()), dishPng(1));

  // The stale photo was still cached: showing that intake again asks for nothing.
  const auto sent = http().requests().size();
  cell->loadIngesta(lunch_);
  EXPECT_EQ(http().requests().size(), sent);
  const auto& cached = cell->recipePhoto->image->bytes->data;
  EXPECT_EQ(std::string(cached.begin(), cached.end()), dishPng(0));
}

}  // namespace
}  // namespace nutrition
