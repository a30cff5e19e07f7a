#include "screens/menu/NutricionRecetaViewController.h"

#include "base/Log.h"
#include "text/TextFormat.h"
#include "ui/BundleImages.h"
#include "views/SystemColors.h"

namespace nutrition {

namespace {

constexpr double kFadeSeconds = 0.2;
constexpr double kPageWidth = 390;

std::string valueOrDash(const std::optional<std::int64_t>& value) {
  return value ? std::to_string(*value) : "–";
}

void fade(View& view, bool visible) {
  view.alpha = visible ? 1 : 0;
  view.lastAnimationDuration = kFadeSeconds;
}

}  // namespace

std::string ingredientBullets(const std::string& ingredients) {
  std::string lines;
  std::size_t start = 0;
  while (true) {
    const std::size_t comma = ingredients.find(", ", start);
    if (!lines.empty()) lines += '\n';
    lines += "• ";
    lines += ingredients.substr(start, comma == std::string::npos ? comma : comma - start);
    if (comma == std::string::npos) break;
    start = comma + 2;
  }
  return lines;
}

void NutricionRecetaViewController::loadView() {
  auto root = std::make_shared<View>(Rect{{}, kPhoneScreen});
  root->backgroundColor = systemColors::systemBackground;
  scroll_ = addOutlet<ScrollView>(*root, "");
  scroll_->setFrame(root->bounds());
  scroll_->onScroll = [this](ScrollView& scroll) { scrollViewDidScroll(scroll); };

  photoView = addOutlet<ImageView>(*scroll_, "photoView");
  photoView->setFrame({{}, {kPageWidth, 300}});
  photoView->contentMode = ContentMode::scaleAspectFill;
  photoView->clipsToBounds = true;
  ingestaLabel = addOutlet<Label>(*scroll_, "ingestaLabel");
  ingestaLabel->setFrame({{24, 316}, {342, 34}});
  categoryLabel = addOutlet<Label>(*scroll_, "categoryLabel");
  categoryLabel->setFrame({{24, 352}, {342, 18}});
  categoryLabel->font = Font::system(13, FontWeight::semibold);
  categoryLabel->textColor = systemColors::secondaryLabel;
  nameLabel = addOutlet<Label>(*scroll_, "nameLabel");
  nameLabel->setFrame({{24, 372}, {342, 56}});
  nameLabel->font = Font::system(22, FontWeight::bold);
  nameLabel->numberOfLines = 2;
  kcalLabel = addOutlet<Label>(*scroll_, "kcalLabel");
  kcalLabel->setFrame({{24, 430}, {342, 20}});
  kcalLabel->font = Font::system(15);
  composicionLabel = addOutlet<Label>(*scroll_, "composicionLabel");
  composicionLabel->setFrame({{24, 452}, {342, 20}});
  composicionLabel->font = Font::system(15);
  composicionLabel->textColor = systemColors::secondaryLabel;
  veganFlag = addOutlet<ImageView>(*scroll_, "veganFlag");
  veganFlag->setFrame({{24, 480}, {28, 28}});
  glutenFreeFlag = addOutlet<ImageView>(*scroll_, "glutenFreeFlag");
  glutenFreeFlag->setFrame({{60, 480}, {28, 28}});

  extendedView = addOutlet<View>(*scroll_, "extendedView");
  extendedView->setFrame({{0, 520}, {kPageWidth, 640}});
  extendedView->backgroundColor = systemColors::secondarySystemBackground;
  ingredientsView = addOutlet<View>(*extendedView, "ingredientsView");
  ingredientsView->setFrame({{24, 32}, {342, 220}});
  ingredientsView->backgroundColor = systemColors::systemBackground;
  ingredientsLabel = addOutlet<Label>(*ingredientsView, "ingredientsLabel");
  ingredientsLabel->setFrame({{16, 16}, {310, 188}});
  ingredientsLabel->numberOfLines = 0;
  preparacionLabel = addOutlet<Label>(*extendedView, "preparacionLabel");
  preparacionLabel->setFrame({{24, 268}, {342, 300}});
  preparacionLabel->numberOfLines = 0;
  difficultyLabel = addOutlet<Label>(*extendedView, "difficultyLabel");
  difficultyLabel->setFrame({{24, 584}, {342, 22}});
  difficultyLabel->font = Font::system(15, FontWeight::semibold);
  scroll_->contentSize = {kPageWidth, 1160};

  alternativeButton = addOutlet<Button>(*root, "alternativeButton");
  alternativeButton->setFrame({{270, 250}, {44, 44}});
  alternativeButton->setTitle("⇄");
  alternativeButton->backgroundColor = systemColors::white;
  alternativeButton->cornerRadius = 22;
  alternativeButton->addTarget(ControlEvent::touchUpInside, [this] { switchAlternative(); });
  favoriteButton = addOutlet<Button>(*root, "favoriteButton");
  favoriteButton->setFrame({{322, 250}, {44, 44}});
  favoriteButton->backgroundColor = systemColors::white;
  favoriteButton->cornerRadius = 22;
  favoriteButton->addTarget(ControlEvent::touchUpInside, [this] { markAsFavorite(); });
  setView(std::move(root));
}

void NutricionRecetaViewController::viewDidLoad() {
  ingredientsView->cornerRadius = 15;
  extendedView->cornerRadius = 45;
}

void NutricionRecetaViewController::viewWillAppear(bool) {
  loadReceipt();
}

const NutritionDish& NutricionRecetaViewController::dish() const {
  if (!receta) fatal("NutricionRecetaViewController: a page without a dish");
  return *receta;
}

std::string NutricionRecetaViewController::getDifficultyString() const {
  const auto difficulty = dish().difficulty;
  const char* word = difficulty == 1 ? "Baja" : difficulty == 2 ? "Media" : "Alta";
  return formatted(context_.ui.localized("Dificultad: %@"), context_.ui.localized(word));
}

bool NutricionRecetaViewController::isFavorite() const {
  const auto& favorites = context_.utils().favoriteDishes;
  if (!favorites || !dish().dishID) return false;
  for (const NutritionDish& favorite : *favorites) {
    if (favorite.dishID == dish().dishID) return true;
  }
  return false;
}

void NutricionRecetaViewController::loadReceipt() {
  loadViewIfNeeded();
  const NutritionDish& shown = dish();
  const UIContext& ui = context_.ui;
  photo_.show(photoView, &shown, ui.config);
  nameLabel->setText(shown.name.value_or(""));
  ingestaLabel->setAttributedText(
      {{{shown.typeName.value_or(""), Font::system(28), ui.config.primaryColor},
        {"   " + valueOrDash(shown.kcal) + " Kcal", Font::system(20),
         systemColors::secondaryLabel}}});
  composicionLabel->setText(valueOrDash(shown.proteins) + " g " + ui.localized("proteína") + " | " +
                            valueOrDash(shown.carbs) + " g " + ui.localized("carb") + " | " +
                            valueOrDash(shown.fats) + " g " + ui.localized("grasa"));
  const std::string ingredients = shown.ingredients.value_or("");
  ingredientsLabel->setAttributedText({{{ingredients.empty() ? "" : ingredientBullets(ingredients),
                                         Font::system(17), systemColors::label}},
                                       10});
  preparacionLabel->setAttributedText(
      {{{shown.recipe.value_or(""), Font::system(17), systemColors::label}}, 7});
  difficultyLabel->setText(getDifficultyString());
  veganFlag->isHidden = true;
  glutenFreeFlag->isHidden = true;
  categoryLabel->isHidden = isUniqueCourse;
  favoriteButton->setImage(
      ImageRef::named(std::string(isFavorite() ? kFavoriteOnImage : kFavoriteOffImage)));
}

void NutricionRecetaViewController::switchAlternative() {
  const std::int64_t course = dish().dishOrderID.value_or(1);
  auto weak = std::weak_ptr<ViewController>(weak_from_this());
  context_.utils().getAlternativeDish(course, [this, weak](std::optional<NutritionDish> next) {
    if (weak.expired() || !next) return;
    receta = std::move(next);
    loadReceipt();
    if (scrollDelegate != nullptr) scrollDelegate->dishDidChange(pageIndex, *receta);
  });
}

void NutricionRecetaViewController::markAsFavorite() {
  NutritionUtils& utils = context_.utils();
  const std::int64_t id = dish().dishID.value_or(0);
  bool found = false;
  if (utils.favoriteDishes) {
    for (const NutritionDish& favorite : *utils.favoriteDishes) {
      if (favorite.dishID && *favorite.dishID == id) found = true;
    }
  }
  auto weak = std::weak_ptr<ViewController>(weak_from_this());
  const auto done = [this, weak](bool nowFavorite) {
    return [this, weak, nowFavorite](const std::optional<std::vector<NutritionDish>>& list) {
      if (weak.expired() || !list) return;
      favoriteButton->setImage(
          ImageRef::named(std::string(nowFavorite ? kFavoriteOnImage : kFavoriteOffImage)));
      if (scrollDelegate != nullptr) scrollDelegate->favoriteDidChange(nowFavorite);
    };
  };
  if (found) {
    utils.removeFavoriteDish(id, done(false));
  } else {
    utils.addFavoriteDish(dish(), done(true));
  }
}

void NutricionRecetaViewController::scrollViewDidScroll(const ScrollView& scrollView) {
  const double y = scrollView.contentOffset().y;
  if (scrollDelegate != nullptr) scrollDelegate->animateButtons(y <= kButtonsOffset);
  fade(*favoriteButton, y < kButtonsOffset);
  fade(*alternativeButton, y < kButtonsOffset);
}

}  // namespace nutrition
