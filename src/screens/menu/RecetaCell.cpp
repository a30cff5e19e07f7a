#include "screens/menu/RecetaCell.h"

#include "base/Log.h"
#include "screens/menu/IntakePreviewViewController.h"
#include "text/TextFormat.h"
#include "views/SystemColors.h"

namespace nutrition {

RecetaCell::RecetaCell(const ScreenContext& context) : context_(context) {
  setFrame({{}, {342, 186}});
  content = addOutlet<View>(*this, "content");
  content->setFrame(bounds());
  content->clipsToBounds = true;
  recipePhoto = addOutlet<ImageView>(*content, "recipePhoto");
  recipePhoto->setFrame(bounds());
  recipePhoto->contentMode = ContentMode::scaleAspectFill;
  auto shade = addOutlet<View>(*content, "");
  shade->setFrame(bounds());
  shade->backgroundColor = Color{0, 0, 0, 77};
  recipeTitle = addOutlet<Label>(*content, "recipeTitle");
  recipeTitle->setFrame({{16, 16}, {250, 30}});
  recipeTitle->font = Font::system(24, FontWeight::bold);
  recipeTitle->textColor = systemColors::white;
  recipeKcal = addOutlet<Label>(*content, "recipeKcal");
  recipeKcal->setFrame({{16, 48}, {200, 22}});
  recipeKcal->font = Font::system(17, FontWeight::semibold);
  recipeKcal->textColor = systemColors::white;
  dishesView = addOutlet<View>(*content, "dishesView");
  dishesView->setFrame({{16, 140}, {96, 30}});
  dishesView->backgroundColor = systemColors::white;
  dishesLabel = addOutlet<Label>(*dishesView, "dishesLabel");
  dishesLabel->setFrame({{8, 4}, {80, 22}});
  dishesLabel->font = Font::system(15, FontWeight::medium);
  dishesLabel->textAlignment = TextAlignment::center;
  infoButton = addOutlet<Button>(*content, "infoButton");
  infoButton->setFrame({{294, 16}, {32, 32}});
  infoButton->setTitle("i");
  infoButton->setTitleColor(systemColors::white);
  infoButton->addTarget(ControlEvent::touchUpInside, [this] { didTapInfoButton(); });
}

void RecetaCell::loadIngesta(const NutritionIntake& intake) {
  content->cornerRadius = 15;
  cornerRadius = 15;
  ingesta = intake;
  const NutritionDish* first =
      intake.dishes && !intake.dishes->empty() ? &intake.dishes->front() : nullptr;
  photo_.show(recipePhoto, first, context_.ui.config);
  recipeTitle->setText(intake.name.value_or(""));
  recipeKcal->setText(std::to_string(intake.getTotalKcal()) + " Kcal");
  const std::size_t dishCount = intake.dishes ? intake.dishes->size() : 0;
  if (dishCount < 2) {
    dishesView->isHidden = true;
  } else {
    dishesLabel->setText(
        formatted(context_.ui.localized("%d platos"), static_cast<std::int64_t>(dishCount)));
    dishesView->isHidden = false;
  }
  dishesView->cornerRadius = 15;
}

void RecetaCell::didTapInfoButton() {
  if (intakeDelegate == nullptr) return;
  if (!ingesta) fatal("RecetaCell: the info button of a card without an intake");
  auto preview = std::make_shared<IntakePreviewViewController>(context_);
  preview->modalPresentationStyle = ModalPresentationStyle::overCurrentContext;
  preview->intake = ingesta;
  preview->delegate = intakeDelegate;
  intakeDelegate->previewPresenter().present(preview, false);
}

}  // namespace nutrition
