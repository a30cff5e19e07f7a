#include "screens/menu/NutritionFavoriteDishCell.h"

#include <cmath>

#include "base/Log.h"
#include "screens/menu/IntakeViewController.h"
#include "views/SystemColors.h"

namespace nutrition {

namespace {
constexpr double kTileSpacing = 12;
}

FavoriteView::FavoriteView(const ScreenContext& context, Rect frame, NutritionDish favorite)
    : dish(std::move(favorite)), context_(context) {
  setFrame(frame);
  contentView = addOutlet<View>(*this, "contentView");
  contentView->setFrame(bounds());
  imageView = addOutlet<ImageView>(*contentView, "imageView");
  imageView->setFrame({{}, {frame.width(), 76}});
  imageView->contentMode = ContentMode::scaleAspectFill;
  titleLabel = addOutlet<Label>(*contentView, "titleLabel");
  titleLabel->setFrame({{0, 80}, {frame.width(), 20}});
  titleLabel->font = Font::system(15, FontWeight::semibold);
  kcalLabel = addOutlet<Label>(*contentView, "kcalLabel");
  kcalLabel->setFrame({{0, 100}, {frame.width(), 16}});
  kcalLabel->font = Font::system(13);
  kcalLabel->textColor = systemColors::secondaryLabel;
  addTapGesture([this] { tapOnDish(); });
}

void FavoriteView::loadUI() {
  titleLabel->setText(dish->name.value_or(""));
  kcalLabel->setText(std::to_string(dish->kcal.value_or(0)) + context_.ui.localized("kcal"));
  imageView->cornerRadius = 10;
  imageView->clipsToBounds = true;
  photo_.show(imageView, &*dish, context_.ui.config);
}

void FavoriteView::tapOnDish() {
  if (!dish) fatal("FavoriteView: a tile without a dish");
  ViewController* top = context_.ui.application.topViewController();
  if (top == nullptr) return;
  NutritionIntake intake;
  intake.name = dish->name;
  intake.dishes = std::vector<NutritionDish>{*dish};
  auto screen = std::make_shared<IntakeViewController>(context_);
  screen->ingesta = std::move(intake);
  screen->modalPresentationStyle = ModalPresentationStyle::fullScreen;
  top->present(screen, true);
}

NutritionFavoriteDishCell::NutritionFavoriteDishCell(const ScreenContext& context)
    : context_(context) {
  setFrame({{}, {342, 140}});
  content = addOutlet<View>(*this, "content");
  content->setFrame(bounds());
  content->backgroundColor = systemColors::secondarySystemBackground;
  titleLabel = addOutlet<Label>(*content, "titleLabel");
  titleLabel->setFrame({{16, 8}, {310, 20}});
  titleLabel->font = Font::system(17, FontWeight::bold);
  carousel = addOutlet<ScrollView>(*content, "");
  carousel->setFrame({{0, 6}, {342, 116}});
  carousel->isPagingEnabled = true;
  carousel->showsHorizontalScrollIndicator = false;
  carousel->onScroll = [this](ScrollView& scroll) { followCarousel(scroll); };
  contentDishes = makeView<StackView>(Axis::horizontal);
  contentDishes->name = "contentDishes";
  contentDishes->setFrame({{16, 24}, {0, 116}});
  contentDishes->spacing = kTileSpacing;
  carousel->addSubview(contentDishes);
  pageControl = addOutlet<PageControl>(*content, "pageControl");
  pageControl->setFrame({{0, 122}, {342, 16}});
  pageControl->currentPageIndicatorTintColor = context.ui.config.primaryColor;
  pageControl->pageIndicatorTintColor = systemColors::tertiaryLabel;
}

void NutritionFavoriteDishCell::awakeFromNib() {
  content->cornerRadius = 18;
}

void NutritionFavoriteDishCell::loadDishes(const std::vector<NutritionDish>& dishes) {
  titleLabel->setText(context_.ui.localized("Mis platos favoritos"));
  while (!contentDishes->arrangedSubviews().empty())
    contentDishes->arrangedSubviews().back()->removeFromSuperview();
  pageControl->numberOfPages = static_cast<int>(dishes.size());
  pageControl->currentPage = 0;
  carousel->setContentOffset({0, 0});
  if (dishes.empty()) return;
  for (const NutritionDish& dish : dishes) {
    auto tile = makeView<FavoriteView>(context_, Rect{{}, {kTileWidth, 116}}, dish);
    tile->contentView->setFrame(tile->bounds());
    tile->loadUI();
    contentDishes->addArrangedSubview(std::move(tile));
  }
  const double count = static_cast<double>(dishes.size());
  contentDishes->setSize({count * kTileWidth + (count - 1) * kTileSpacing, 116});
  carousel->contentSize = {contentDishes->frame().width() + 32, 116};
}

void NutritionFavoriteDishCell::followCarousel(const ScrollView& scroll) {
  if (pageControl->numberOfPages == 0) return;
  const double page = std::round(scroll.contentOffset().x / (kTileWidth + kTileSpacing));
  const double last = pageControl->numberOfPages - 1;
  pageControl->currentPage = static_cast<int>(page < 0 ? 0 : (page > last ? last : page));
}

}  // namespace nutrition
