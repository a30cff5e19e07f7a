#include "screens/menu/NutricionHomeViewController.h"

#include <chrono>

#include "base/Log.h"
#include "logic/MenuDay.h"
#include "screens/fasting/AyunoCells.h"
#include "screens/menu/IntakeViewController.h"
#include "screens/menu/NutritionFavoriteDishCell.h"
#include "screens/menu/RecetaCell.h"
#include "ui/BundleImages.h"
#include "ui/TrainingAlerts.h"
#include "views/NavigationController.h"
#include "views/SystemColors.h"

namespace nutrition {

namespace {

constexpr const char* kAyunoCell = "ayunoCell";
constexpr const char* kAyunoInfoCell = "ayunoInfoCell";
constexpr double kCardHeight = 186;
constexpr double kLastRowHeight = 140;
constexpr int kStripDays = 7;

template <class Cell>
std::shared_ptr<Cell> dequeue(CollectionView& view, const char* identifier, IndexPath indexPath) {
  return std::static_pointer_cast<Cell>(view.dequeueReusableCell(identifier, indexPath));
}

}  // namespace

void NutricionHomeViewController::loadView() {
  auto root = std::make_shared<View>(Rect{{}, kPhoneScreen});
  root->backgroundColor = systemColors::systemBackground;
  weekView = addOutlet<StackView>(*root, "weekView", Axis::horizontal);
  weekView->setFrame({{24, 100}, {342, 64}});
  weekView->distribution = StackDistribution::equalSpacing;
  collectionView = addOutlet<CollectionView>(*root, "collectionView");
  collectionView->setFrame({{0, 172}, {390, 672}});
  collectionView->dataSource = this;
  collectionView->delegate = this;
  collectionView->minimumLineSpacing = 16;
  activityIndicator = addOutlet<ActivityIndicator>(*root, "activityIndicator");
  activityIndicator->setFrame({{177, 404}, {36, 36}});
  profileButton = addOutlet<RoundButton>(*root, "profileButton", context_.ui);
  profileButton->setFrame({{296, 750}, {70, 70}});
  profileButton->setImage(ImageRef::named(std::string(kFoodImage)));
  profileButton->addTarget(ControlEvent::touchUpInside, [this] { showProfile(); });
  setView(std::move(root));
}

void NutricionHomeViewController::viewDidLoad() {
  configProfileButton();
  profileButton->isHidden = !isWithButton;
  collectionView->registerCell(RecetaCell::kReuseIdentifier,
                               [this] { return makeView<RecetaCell>(context_); });
  collectionView->registerCell(NutritionFavoriteDishCell::kReuseIdentifier,
                               [this] { return makeView<NutritionFavoriteDishCell>(context_); });
  collectionView->registerCell(kAyunoInfoCell,
                               [this] { return makeView<AyunoInfoCell>(context_); });
  collectionView->registerCell(kAyunoCell, [this] { return makeView<AyunoCell>(context_); });
  collectionView->contentInset = {37, 24, 20, 24};
  loadDays();
  updateMenuDay();
  collectionView->reloadData();
  updateObservation_ =
      context_.ui.notifications.addObserver(kUpdateNotification, [this] { reloadData(); });
  if (!context_.utils().isEmbedViewController) {
    BarButtonItem close;
    close.image = ImageRef::named(std::string(kBackImage));
    close.style = BarButtonItem::Style::plain;
    close.action = [this] { didTapCloseButton(); };
    navigationItem.leftBarButtonItem = std::move(close);
  }
  navigationItem.title = context_.ui.config.navigationTitle;
}

void NutricionHomeViewController::viewWillAppear(bool) {
  reloadData();
}

void NutricionHomeViewController::reloadData() {
  updateMenuDay();
  collectionView->reloadData();
}

void NutricionHomeViewController::configProfileButton() {
  profileButton->cornerRadius = 35;
  profileButton->backgroundColor = context_.ui.config.primaryColor;
  profileButton->shadow = Shadow{systemColors::gray, 0.5, {0, 1}, 3};
}

void NutricionHomeViewController::showProfile() {
  context_.ui.config.isSettingsFromMenu = true;
  postIfAlive(context_.ui.mainQueue, weak_from_this(),
              [routes = &context_.routes] { routes->showProfile(); });
}

void NutricionHomeViewController::showAyuno() {
  context_.routes.getAyunoViewController(
      [weak = weak_from_this()](std::shared_ptr<ViewController> screen) {
        auto self = weak.lock();
        if (!self || !screen) return;
        if (NavigationController* navigation = self->navigationController())
          navigation->pushViewController(std::move(screen), true);
      });
}

void NutricionHomeViewController::didTapCloseButton() {
  NavigationController* navigation = navigationController();
  if (navigation != nullptr && navigation->viewControllers().size() > 1 &&
      navigation->viewControllers().front().get() != this) {
    navigation->popViewController(true);
  } else {
    dismiss(true);
  }
}

void NutricionHomeViewController::loadDays() {
  const Platform& platform = context_.services.platform();
  const Date now = currentDate(*platform.clock);
  for (int k = 0; k < kStripDays; ++k) {
    const Date date = now + std::chrono::hours(24 * k);
    auto day = makeView<NutricionDayView>(context_);
    day->contentView->setFrame(day->bounds());
    day->cornerRadius = 22;
    day->contentView->cornerRadius = 22;
    day->loadDate(date);
    day->dayDelegate = this;
    if (k == 0) {
      day->setSelected(true);
      selectedDay = menuDayNumber(platform.calendar->weekday(date));
      context_.utils().selectedDay = selectedDay;
    }
    weekView->addArrangedSubview(std::move(day));
  }
}

std::vector<NutricionDayView*> NutricionHomeViewController::dayViews() const {
  std::vector<NutricionDayView*> days;
  for (const auto& view : weekView->arrangedSubviews())
    days.push_back(static_cast<NutricionDayView*>(view.get()));
  return days;
}

void NutricionHomeViewController::changeDay(NutricionDayView& dayView) {
  for (NutricionDayView* other : dayViews()) {
    if (other == &dayView) continue;
    other->setSelected(false);
  }
  const Platform& platform = context_.services.platform();
  const Date date = dayView.date.value_or(currentDate(*platform.clock));
  selectedDay = menuDayNumber(platform.calendar->weekday(date));
  context_.utils().selectedDay = selectedDay;
  updateMenuDay();
  collectionView->reloadData();
}

void NutricionHomeViewController::updateMenuDay() {
  NutritionUtils& utils = context_.utils();
  if (utils.weeklyMenu && utils.weeklyMenu->processed == true) {
    showSelectedDay(utils.weeklyMenu);
    return;
  }
  utils.downloadMenu([weak = weak_from_this(), this](const std::optional<NutritionMenu>& menu) {
    if (weak.expired()) return;
    showSelectedDay(menu);
  });
}

void NutricionHomeViewController::showSelectedDay(const std::optional<NutritionMenu>& menu) {
  selectedMenu.reset();
  if (menu && menu->days) {
    for (const NutritionDay& day : *menu->days) {
      if (day.day && *day.day == selectedDay) {
        selectedMenu = day;
        break;
      }
    }
  }
  showSupplements();
  collectionView->reloadData();
}

void NutricionHomeViewController::showSupplements() {
  const NutritionUser* member = context_.user.currentMember();
  // The product also words a notice for diet 10, which its own test never lets through.
  if (member != nullptr && member->dietID == 11)
    TrainingAlerts::showAlert(kDietSupplementNotice, "Aviso", *this);
}

bool NutricionHomeViewController::hasFastingCard() const {
  const NutritionUser* member = context_.user.currentMember();
  return member != nullptr && member->intermittentFastingID && *member->intermittentFastingID != 0;
}

bool NutricionHomeViewController::hasFavorites() const {
  const auto& favorites = context_.utils().favoriteDishes;
  return favorites && !favorites->empty();
}

std::vector<NutritionIntake> NutricionHomeViewController::sortedIntakes() const {
  return selectedMenu ? nutrition::sortedIntakes(*selectedMenu) : std::vector<NutritionIntake>{};
}

int NutricionHomeViewController::numberOfItems(CollectionView&, int) {
  return static_cast<int>(sortedIntakes().size()) + (hasFavorites() ? 1 : 0) +
         (hasFastingCard() ? 1 : 0);
}

std::shared_ptr<ReusableCell> NutricionHomeViewController::cellForItem(CollectionView& view,
                                                                       IndexPath indexPath) {
  const std::vector<NutritionIntake> intakes = sortedIntakes();
  const int n = static_cast<int>(intakes.size());
  const int i = indexPath.item - (hasFastingCard() ? 1 : 0);
  if (i < 0) {
    const ImageRef image = ImageRef::named(std::string(kAyunoSectionImage));
    if (context_.ayuno.isFinished()) {
      auto cell = dequeue<AyunoCell>(view, kAyunoCell, indexPath);
      cell->titleLabel->setText(context_.ui.localized("Ayuno intermitente"));
      cell->imgView->image = image;
      return cell;
    }
    auto cell = dequeue<AyunoInfoCell>(view, kAyunoInfoCell, indexPath);
    cell->titleLabel->setText(context_.ayuno.getCurrentPhase().name.value_or(""));
    cell->imgView->image = image;
    cell->loadAyunoView();
    return cell;
  }
  if (i == n || !selectedMenu) {
    const auto& favorites = context_.utils().favoriteDishes;
    if (!favorites) fatal("NutricionHomeViewController: no favourites to show");
    auto cell = dequeue<NutritionFavoriteDishCell>(
        view, NutritionFavoriteDishCell::kReuseIdentifier, indexPath);
    cell->loadDishes(*favorites);
    return cell;
  }
  auto cell = dequeue<RecetaCell>(view, RecetaCell::kReuseIdentifier, indexPath);
  cell->intakeDelegate = this;
  cell->loadIngesta(intakes[static_cast<std::size_t>(i)]);
  return cell;
}

Size NutricionHomeViewController::sizeForItem(CollectionView& view, IndexPath indexPath) {
  const int n = static_cast<int>(sortedIntakes().size());
  const bool lastRow = indexPath.item == n || (!selectedMenu && indexPath.item == 0);
  return {view.frame().width() - 48, lastRow ? kLastRowHeight : kCardHeight};
}

void NutricionHomeViewController::didSelectItem(CollectionView&, IndexPath indexPath) {
  const std::vector<NutritionIntake> intakes = sortedIntakes();
  const int i = indexPath.item - (hasFastingCard() ? 1 : 0);
  if (i < 0) {
    showAyuno();
    return;
  }
  if (i >= static_cast<int>(intakes.size()) || !selectedMenu) return;
  showIntake(intakes[static_cast<std::size_t>(i)]);
}

void NutricionHomeViewController::showIntake(const NutritionIntake& intake) {
  // The intake an alternative dish is asked for; 1 for an intake without an id.
  context_.utils().selectedIntake = intake.intakeId.value_or(1);
  auto screen = std::make_shared<IntakeViewController>(context_);
  screen->ingesta = intake;
  screen->favoriteDelegate = this;
  screen->modalPresentationStyle = ModalPresentationStyle::fullScreen;
  present(screen, true);
}

}  // namespace nutrition
