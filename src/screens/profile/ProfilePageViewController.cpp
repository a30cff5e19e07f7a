#include "screens/profile/ProfilePageViewController.h"

#include "ui/BundleImages.h"
#include "views/SystemColors.h"

namespace nutrition {

ProfilePageViewController::ProfilePageViewController(const ScreenContext& context,
                                                     ProfileEditorServices services)
    : OrvaneViewController(context.ui), context_(context), services_(std::move(services)) {}

void ProfilePageViewController::loadView() {
  auto root = std::make_shared<View>(Rect{{}, kPhoneScreen});
  root->backgroundColor = systemColors::systemBackground;
  pageControl = addOutlet<CustomPageControl>(*root, "pageControl", ui_);
  pageControl->setFrame({{0, 8}, {kPhoneScreen.width, 20}});
  content = addOutlet<View>(*root, "content");
  content->setFrame({{0, 36}, {kPhoneScreen.width, kPhoneScreen.height - 36}});
  setView(std::move(root));
}

void ProfilePageViewController::viewDidLoad() {
  OrvaneViewController::viewDidLoad();
  BarButtonItem close;
  close.image = ImageRef::named(std::string(kBackRecetaImage));
  close.style = BarButtonItem::Style::plain;
  close.action = [this] { didTapCloseButton(); };
  navigationItem.leftBarButtonItem = close;
}

void ProfilePageViewController::viewWillAppear(bool animated) {
  OrvaneViewController::viewWillAppear(animated);
  pageControl->removeDots();
  const std::size_t count = pages ? pages->size() : 0;
  for (std::size_t i = 0; i < count; ++i)
    pageControl->addDot(static_cast<int>(i));
  pageControl->changePageSelection(0);
  if (!pageViewController) loadPageViewController();
}

void ProfilePageViewController::loadPageViewController() {
  pageViewController = std::make_shared<OrvanePageViewController>();
  // No data source: the member cannot swipe between pages.
  pageViewController->dataSource = nullptr;
  pageViewController->isScrollEnabled = false;
  pageViewController->didFinishAnimating = [this](PageViewController&) {
    pageDidFinishAnimating();
  };
  addChild(pageViewController);
  pageViewController->setViewController(viewControllerAtIndex(0),
                                        PageViewController::Direction::forward, false);
  View& pagesView = pageViewController->view();
  pagesView.setFrame(content->bounds());
  content->addSubview(pageViewController->viewPointer());
}

std::shared_ptr<NutritionProfileViewController> ProfilePageViewController::viewControllerAtIndex(
    std::size_t index) {
  if (!pages || index >= pages->size()) return nullptr;
  auto page = std::make_shared<NutritionProfileViewController>(context_, services_);
  page->delegate = std::static_pointer_cast<ProfilePageViewController>(shared_from_this());
  page->panels = (*pages)[index].panels;
  page->pageIndex = index;
  page->isLastPage = index == pages->size() - 1;
  page->view().setFrame(content->bounds());
  return page;
}

NutritionProfileViewController* ProfilePageViewController::currentPage() const {
  if (!pageViewController) return nullptr;
  return dynamic_cast<NutritionProfileViewController*>(pageViewController->currentViewController());
}

void ProfilePageViewController::nextProfilePage() {
  const NutritionProfileViewController* shown = currentPage();
  if (shown == nullptr) return;
  const std::size_t next = shown->pageIndex + 1;
  if (!pages || next >= pages->size()) return;
  pageViewController->setViewController(viewControllerAtIndex(next),
                                        PageViewController::Direction::forward, true);
  pageControl->changePageSelection(static_cast<int>(next));
}

void ProfilePageViewController::previousProfilePage() {
  const NutritionProfileViewController* shown = currentPage();
  if (shown == nullptr || shown->pageIndex < 1) return;
  const std::size_t previous = shown->pageIndex - 1;
  pageViewController->setViewController(viewControllerAtIndex(previous),
                                        PageViewController::Direction::reverse, true);
  pageControl->changePageSelection(static_cast<int>(previous));
}

void ProfilePageViewController::pageDidFinishAnimating() {
  if (const auto* shown = currentPage()) {
    pageControl->changePageSelection(static_cast<int>(shown->pageIndex));
  }
}

void ProfilePageViewController::didTapCloseButton() {
  dismiss(true);
}

void ProfilePageViewController::dismissProfile(bool animated, std::function<void()> completion) {
  dismiss(animated, completion);
}

std::shared_ptr<ProfilePageViewController> makeProfileEditor(const ScreenContext& context,
                                                             const ProfileEditorServices& services,
                                                             std::vector<HealthProfilePage> pages) {
  auto editor = std::make_shared<ProfilePageViewController>(context, services);
  editor->pages = std::move(pages);
  return editor;
}

}  // namespace nutrition
