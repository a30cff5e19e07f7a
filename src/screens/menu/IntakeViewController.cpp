#include "screens/menu/IntakeViewController.h"

#include "base/Log.h"
#include "ui/BundleImages.h"
#include "ui/TrainingAlerts.h"
#include "views/SystemColors.h"

namespace nutrition {

namespace {

constexpr double kFadeSeconds = 0.2;

std::shared_ptr<Button> floatingButton(View& parent, std::string_view name, Rect frame) {
  auto button = addOutlet<Button>(parent, name);
  button->setFrame(frame);
  button->backgroundColor = systemColors::white;
  button->cornerRadius = frame.height() / 2;
  return button;
}

}  // namespace

void IntakeViewController::loadView() {
  auto root = std::make_shared<View>(Rect{{}, kPhoneScreen});
  root->backgroundColor = systemColors::systemBackground;
  content = addOutlet<View>(*root, "content");
  content->setFrame(root->bounds());
  content->clipsToBounds = true;
  closeButton = floatingButton(*root, "closeButton", {{20, 54}, {40, 40}});
  closeButton->setImage(ImageRef::named(std::string(kBackRecetaImage)));
  closeButton->addTarget(ControlEvent::touchUpInside, [this] { didTapClose(); });
  alternativeButton = floatingButton(*root, "alternativeButton", {{278, 54}, {40, 40}});
  alternativeButton->setTitle("⇄");
  alternativeButton->addTarget(ControlEvent::touchUpInside, [this] { didTapAlternative(); });
  favoriteButton = floatingButton(*root, "favoriteButton", {{330, 54}, {40, 40}});
  favoriteButton->addTarget(ControlEvent::touchUpInside, [this] { didTapFavorite(); });
  activityIndicator = addOutlet<ActivityIndicator>(*root, "activityIndicator");
  activityIndicator->setFrame({{177, 404}, {36, 36}});
  setView(std::move(root));
}

const NutritionIntake& IntakeViewController::intake() const {
  if (!ingesta) fatal("IntakeViewController: shown without an intake");
  return *ingesta;
}

std::size_t IntakeViewController::dishCount() const {
  return intake().dishes ? intake().dishes->size() : 0;
}

void IntakeViewController::viewDidLoad() {
  content->cornerRadius = 15;
  alternativeButton->isHidden = !intake().intakeId;
}

void IntakeViewController::viewWillAppear(bool) {
  favoriteButton->setImage(ImageRef::named(std::string(kFavoriteOffImage)));
  if (!pageViewController) loadPageViewController();
}

void IntakeViewController::viewDidAppear(bool) {
  animateButtons(true);
  showSupplements();
}

void IntakeViewController::loadPageViewController() {
  pageViewController = std::make_shared<OrvanePageViewController>();
  pageViewController->dataSource = this;
  addChild(pageViewController);
  pageViewController->setViewController(viewControllerAtIndex(0),
                                        PageViewController::Direction::forward, false);
  View& pages = pageViewController->view();
  pages.setFrame(content->bounds());
  content->addSubview(pageViewController->viewPointer());
}

std::shared_ptr<NutricionRecetaViewController> IntakeViewController::viewControllerAtIndex(
    std::size_t index) {
  if (index >= dishCount()) return nullptr;
  auto page = std::make_shared<NutricionRecetaViewController>(context_);
  page->isUniqueCourse = dishCount() == 1;
  page->receta = intake().dishes->at(index);
  page->pageIndex = index;
  page->scrollDelegate = this;
  page->loadViewIfNeeded();
  page->alternativeButton->isHidden = !intake().intakeId;
  return page;
}

std::shared_ptr<ViewController> IntakeViewController::viewControllerBefore(
    PageViewController&, ViewController& current) {
  const auto& page = static_cast<NutricionRecetaViewController&>(current);
  // Before the first page the index becomes the dish count, which is no page.
  return pageAt(page.pageIndex == 0 ? dishCount() : page.pageIndex - 1);
}

std::shared_ptr<ViewController> IntakeViewController::viewControllerAfter(PageViewController&,
                                                                          ViewController& current) {
  const auto& page = static_cast<NutricionRecetaViewController&>(current);
  const std::size_t next = page.pageIndex + 1;
  return pageAt(next >= dishCount() ? 0 : next);
}

std::size_t IntakeViewController::presentationCount() const {
  return ingesta ? dishCount() : 0;
}

std::size_t IntakeViewController::presentationIndex() const {
  const NutricionRecetaViewController* page = currentPage();
  return page ? page->pageIndex : 0;
}

NutricionRecetaViewController* IntakeViewController::currentPage() const {
  if (!pageViewController) return nullptr;
  return static_cast<NutricionRecetaViewController*>(pageViewController->currentViewController());
}

void IntakeViewController::showButtons(bool show) {
  const double alpha = show ? 1 : 0;
  favoriteButton->alpha = alpha;
  alternativeButton->alpha = alpha;
  closeButton->alpha = alpha;
}

void IntakeViewController::animateButtons(bool show) {
  showButtons(show);
  for (Button* button : {favoriteButton.get(), alternativeButton.get(), closeButton.get()})
    button->lastAnimationDuration = kFadeSeconds;
}

void IntakeViewController::showSupplements() {
  const NutritionUser* member = context_.user.currentMember();
  const std::int64_t phase = member && member->dietID ? *member->dietID : 1;
  const auto text = NutritionSDKUtils::getSuplementosForPhase(phase, intake().intakeId.value_or(0));
  if (text) TrainingAlerts::showAlert(*text, context_.ui.localized("Aviso"), *this);
}

void IntakeViewController::didTapClose() {
  dismiss(true);
}

void IntakeViewController::didTapFavorite() {
  if (NutricionRecetaViewController* page = currentPage()) page->markAsFavorite();
}

void IntakeViewController::didTapAlternative() {
  if (NutricionRecetaViewController* page = currentPage()) page->switchAlternative();
}

void IntakeViewController::dishDidChange(std::size_t pageIndex, const NutritionDish& dish) {
  if (ingesta && ingesta->dishes && pageIndex < ingesta->dishes->size())
    ingesta->dishes->at(pageIndex) = dish;
}

void IntakeViewController::favoriteDidChange(bool isFavorite) {
  favoriteButton->setImage(
      ImageRef::named(std::string(isFavorite ? kFavoriteOnImage : kFavoriteOffImage)));
  if (favoriteDelegate != nullptr) favoriteDelegate->favoritesDidChange();
}

}  // namespace nutrition
