#include "screens/menu/IntakePreviewViewController.h"

#include "base/Log.h"
#include "views/SystemColors.h"

namespace nutrition {

DishTableViewCell::DishTableViewCell(const ScreenContext& context) : context_(context) {
  setFrame({{}, {310, 72}});
  dishImage = addOutlet<ImageView>(*this, "dishImage");
  dishImage->setFrame({{0, 8}, {56, 56}});
  dishImage->contentMode = ContentMode::scaleAspectFill;
  dishImage->cornerRadius = 8;
  dishImage->clipsToBounds = true;
  categoryLabel = addOutlet<Label>(*this, "categoryLabel");
  categoryLabel->setFrame({{68, 8}, {240, 16}});
  categoryLabel->font = Font::system(12, FontWeight::semibold);
  categoryLabel->textColor = systemColors::secondaryLabel;
  titleLabel = addOutlet<Label>(*this, "titleLabel");
  titleLabel->setFrame({{68, 26}, {240, 20}});
  titleLabel->font = Font::system(16, FontWeight::semibold);
  kcalLabel = addOutlet<Label>(*this, "kcalLabel");
  kcalLabel->setFrame({{68, 48}, {240, 16}});
  kcalLabel->font = Font::system(13);
  kcalLabel->textColor = systemColors::secondaryLabel;
}

void DishTableViewCell::loadDish(const NutritionDish& dish, bool isUniqueCourse) {
  categoryLabel->setText(dish.typeName.value_or(""));
  categoryLabel->isHidden = isUniqueCourse;
  titleLabel->setText(dish.name.value_or(""));
  kcalLabel->setText(std::to_string(dish.kcal.value_or(0)) + " " + context_.ui.localized("kcal"));
  photo_.show(dishImage, &dish, context_.ui.config);
}

void IntakePreviewViewController::loadView() {
  auto root = std::make_shared<View>(Rect{{}, kPhoneScreen});
  root->backgroundColor = Color{0, 0, 0, 102};
  root->addTapGesture([this] { didTapOutside(); });
  contentView = addOutlet<View>(*root, "contentView");
  contentView->setFrame({{24, 222}, {342, 400}});
  contentView->backgroundColor = systemColors::systemBackground;
  titleLabel = addOutlet<Label>(*contentView, "titleLabel");
  titleLabel->setFrame({{16, 20}, {220, 28}});
  titleLabel->font = Font::system(22, FontWeight::bold);
  kcalLabel = addOutlet<Label>(*contentView, "kcalLabel");
  kcalLabel->setFrame({{236, 24}, {90, 22}});
  kcalLabel->font = Font::system(17, FontWeight::semibold);
  kcalLabel->textColor = context_.ui.config.primaryColor;
  kcalLabel->textAlignment = TextAlignment::right;
  tableView = addOutlet<TableView>(*contentView, "tableView");
  tableView->setFrame({{16, 60}, {310, 260}});
  tableView->dataSource = this;
  alternativeButton = addOutlet<Button>(*contentView, "alternativeButton");
  alternativeButton->setFrame({{16, 336}, {44, 44}});
  alternativeButton->setTitle("⇄");
  alternativeButton->addTarget(ControlEvent::touchUpInside, [this] { didTapIntakeDetail(); });
  detailButton = addOutlet<Button>(*contentView, "detailButton");
  detailButton->setFrame({{76, 336}, {250, 44}});
  detailButton->setTitle(context_.ui.localized("Ver platos"));
  detailButton->backgroundColor = context_.ui.config.primaryColor;
  detailButton->setTitleColor(systemColors::white);
  detailButton->cornerRadius = 22;
  detailButton->addTarget(ControlEvent::touchUpInside, [this] { didTapIntakeDetail(); });
  setView(std::move(root));
}

const NutritionIntake& IntakePreviewViewController::shownIntake() const {
  if (!intake) fatal("IntakePreviewViewController: shown without an intake");
  return *intake;
}

void IntakePreviewViewController::viewDidLoad() {
  contentView->cornerRadius = 20;
  tableView->registerCell(DishTableViewCell::kReuseIdentifier,
                          [this] { return makeView<DishTableViewCell>(context_); });
  alternativeButton->isHidden = !shownIntake().intakeId;
}

void IntakePreviewViewController::viewWillAppear(bool) {
  reloadData();
}

void IntakePreviewViewController::reloadData() {
  titleLabel->setText(shownIntake().name.value_or(""));
  kcalLabel->setText(std::to_string(shownIntake().getTotalKcal()) + " " +
                     context_.ui.localized("kcal"));
  tableView->reloadData();
}

int IntakePreviewViewController::numberOfRows(TableView&, int) {
  const auto& dishes = shownIntake().dishes;
  return dishes ? static_cast<int>(dishes->size()) : 0;
}

std::shared_ptr<ReusableCell> IntakePreviewViewController::cellForRow(TableView& table,
                                                                      IndexPath indexPath) {
  auto cell = std::static_pointer_cast<DishTableViewCell>(
      table.dequeueReusableCell(DishTableViewCell::kReuseIdentifier, indexPath));
  const auto& dishes = *shownIntake().dishes;
  cell->loadDish(dishes.at(static_cast<std::size_t>(indexPath.row())), dishes.size() == 1);
  return cell;
}

void IntakePreviewViewController::didTapIntakeDetail() {
  const NutritionIntake shown = shownIntake();
  IntakePreviewDelegate* presenter = delegate;
  dismiss(false, [presenter, shown] {
    if (presenter != nullptr) presenter->showIntake(shown);
  });
}

void IntakePreviewViewController::didTapOutside() {
  dismiss(false);
}

}  // namespace nutrition
