#include "views/HtmlRenderer.h"

#include <gtest/gtest.h>

#include <numbers>
#include <regex>

#include "base/Image.h"
#include "screens/fasting/PieChartView.h"
#include "support/RecordingPresenter.h"
#include "support/TestPlatform.h"
#include "views/AlertController.h"
#include "views/Button.h"
#include "views/CollectionView.h"
#include "views/ImageView.h"
#include "views/Label.h"
#include "views/NavigationController.h"
#include "views/PageViewController.h"
#include "views/Pickers.h"
#include "views/ScrollView.h"
#include "views/StackView.h"
#include "views/TextField.h"
#include "views/Window.h"

namespace nutrition {
namespace {

// The id the rendering gave the element of outlet `name`; empty when it has none.
std::string idOf(const HtmlRendering& page, const std::string& name) {
  std::smatch found;
  const std::regex pattern("<[a-z]+ [^>]*?id=\"(e[0-9]+)\"[^>]*? data-name=\"" + name + "\"");
  return std::regex_search(page.html, found, pattern) ? found[1].str() : "";
}

std::size_t count(const std::string& text, const std::string& part) {
  std::size_t n = 0;
  for (auto at = text.find(part); at != std::string::npos; at = text.find(part, at + 1))
    ++n;
  return n;
}

TEST(HtmlRenderer, TextIsEscapedInElementsAndAttributes) {
  auto root = makeView<View>(Rect{{}, {390, 844}});
  auto label = addOutlet<Label>(*root, "title\"><b>");
  label->setText("Tom & Jerry <script>alert('x')</script>");
  auto runs = addOutlet<Label>(*root, "runs");
  runs->setAttributedText({{TextRun{"a<b", Font::system(13, FontWeight::bold), Color{255, 0, 0}},
                            TextRun{" & \"c\"", Font::system(13), Color{0, 0, 0, 128}}}});
  auto field = addOutlet<TextField>(*root, "field");
  field->text = "\" onfocus=\"alert(1)";
  field->placeholder = "<placeholder>";

  const std::string html = renderHtml(*root).html;
  EXPECT_EQ(html.find("<script>"), std::string::npos) << html;
  EXPECT_EQ(html.find("<b>"), std::string::npos);
  EXPECT_NE(html.find("Tom &amp; Jerry &lt;script&gt;alert(&#39;x&#39;)&lt;/script&gt;"),
            std::string::npos);
  EXPECT_NE(html.find("data-name=\"title&quot;&gt;&lt;b&gt;\""), std::string::npos);
  EXPECT_NE(html.find("value=\"&quot; onfocus=&quot;alert(1)\""), std::string::npos);
  EXPECT_NE(html.find("placeholder=\"&lt;placeholder&gt;\""), std::string::npos);
  // Each run keeps its own font and colour; a colour that is not opaque keeps its alpha.
  EXPECT_NE(html.find("font-size:13px;font-weight:700;color:#ff0000\">a&lt;b</span>"),
            std::string::npos);
  EXPECT_NE(html.find("color:rgba(0,0,0,0.5)\"> &amp; &quot;c&quot;</span>"), std::string::npos);
}

TEST(HtmlRenderer, HiddenSubtreesAndViewsWithoutInteractionOfferNothing) {
  auto root = makeView<View>(Rect{{}, {390, 844}});
  auto panel = addOutlet<View>(*root, "panel");
  panel->isHidden = true;
  auto secret = addOutlet<Label>(*panel, "secret");
  secret->setText("not on screen");
  int hiddenTaps = 0;
  auto hiddenButton = addOutlet<Button>(*panel, "hiddenButton");
  hiddenButton->addTarget(ControlEvent::touchUpInside, [&] { ++hiddenTaps; });

  auto frozen = addOutlet<View>(*root, "frozen");
  frozen->isUserInteractionEnabled = false;
  auto frozenButton = addOutlet<Button>(*frozen, "frozenButton");
  frozenButton->setTitle("Frozen");
  frozenButton->addTarget(ControlEvent::touchUpInside, [&] { ++hiddenTaps; });

  auto disabled = addOutlet<Button>(*root, "disabled");
  disabled->isEnabled = false;
  disabled->setTitle("Disabled");

  int taps = 0;
  auto live = addOutlet<Button>(*root, "live");
  live->setTitle("Live");
  live->addTarget(ControlEvent::touchUpInside, [&] { ++taps; });
  auto gesture = addOutlet<View>(*root, "gesture");
  gesture->addTapGesture([&] { taps += 10; });

  const HtmlRendering page = renderHtml(*root);
  EXPECT_EQ(page.html.find("secret"), std::string::npos);
  EXPECT_EQ(page.html.find("not on screen"), std::string::npos);
  EXPECT_EQ(page.html.find("hiddenButton"), std::string::npos);
  // Frozen and disabled buttons are drawn, without an id.
  EXPECT_NE(page.html.find("Frozen"), std::string::npos);
  EXPECT_EQ(idOf(page, "frozenButton"), "");
  EXPECT_EQ(idOf(page, "disabled"), "");
  ASSERT_EQ(page.targets.size(), 2U);

  // Input meant for another element (a scroll offset sent to an id that now names a button)
  // is no tap.
  EXPECT_FALSE(page.apply(idOf(page, "live"), "0,0"));
  EXPECT_FALSE(page.apply(idOf(page, "gesture"), "0,0"));
  ASSERT_TRUE(page.apply(idOf(page, "live")));
  ASSERT_TRUE(page.apply(idOf(page, "gesture")));
  EXPECT_EQ(taps, 11);
  EXPECT_FALSE(page.apply("e999"));
  // A view hidden after the page was drawn refuses the tap; a view gone refuses it too.
  live->isHidden = true;
  EXPECT_FALSE(page.apply(idOf(page, "live")));
  const std::string gestureId = idOf(page, "gesture");
  gesture->removeFromSuperview();
  gesture.reset();
  EXPECT_FALSE(page.apply(gestureId));
  EXPECT_EQ(taps, 11);
  EXPECT_EQ(hiddenTaps, 0);
}

TEST(HtmlRenderer, TheRingIsDrawnFromThePieChartArcs) {
  auto ring = std::make_shared<PieChartView>(Size{158, 158});
  ring->addSlice(Color{234, 110, 41}, 0.25);  // from the top to 3 o'clock
  ring->currentPercent = 0.25;
  ring->addSlice(Color{200, 200, 200}, 0.75);  // on round to the top
  ring->currentPercent = 1;
  ring->addSlice(Color{255, 0, 0}, 0);  // nothing: equal angles draw nothing

  const std::string html = renderHtml(*ring).html;
  // Radius (158 - 8) / 2 = 75 around (79, 79).
  EXPECT_NE(html.find("<path d=\"M79 4 A75 75 0 0 1 154 79\" fill=\"none\" stroke=\"#ea6e29\" "
                      "stroke-width=\"8\"/>"),
            std::string::npos)
      << html;
  EXPECT_NE(html.find("<path d=\"M154 79 A75 75 0 0 1 25.97 132.03 A75 75 0 0 1 79 4\" "
                      "fill=\"none\" stroke=\"#c8c8c8\""),
            std::string::npos)
      << html;
  EXPECT_EQ(count(html, "<path"), 2U);
  EXPECT_EQ(html.find("#ff0000"), std::string::npos);

  // At the start of a fast the grey rest is 0.99999 of a turn: its ends round to one point,
  // and it is still drawn all round.
  auto start = std::make_shared<PieChartView>(Size{158, 158});
  start->addSlice(Color{200, 200, 200}, 0.99999);
  const std::string fresh = renderHtml(*start).html;
  EXPECT_NE(fresh.find("<path d=\"M79 4 A75 75 0 0 1 79 154 A75 75 0 0 1 79 4\""),
            std::string::npos)
      << fresh;

  // A whole turn is two half turns; anticlockwise sweeps the other way; strokeEnd dashes.
  auto canvas = makeView<View>(Rect{{}, {100, 100}});
  auto shape = std::make_shared<ShapeLayer>();
  shape->path.push_back({.center = {50, 50},
                         .radius = 40,
                         .startAngle = 0,
                         .endAngle = 2 * std::numbers::pi,
                         .clockwise = true});
  shape->path.push_back({.center = {50, 50},
                         .radius = 40,
                         .startAngle = 0,
                         .endAngle = std::numbers::pi / 2,
                         .clockwise = false});
  shape->strokeColor = Color{0, 0, 255};
  shape->strokeEnd = 0.5;
  canvas->layer().addSublayer(shape);
  const std::string drawn = renderHtml(*canvas).html;
  EXPECT_NE(drawn.find("d=\"M90 50 A40 40 0 0 1 10 50 A40 40 0 0 1 90 50\""), std::string::npos)
      << drawn;
  EXPECT_NE(drawn.find("d=\"M90 50 A40 40 0 0 0 21.72 21.72 A40 40 0 0 0 50 90\""),
            std::string::npos)
      << drawn;
  EXPECT_NE(drawn.find("pathLength=\"1\" stroke-dasharray=\"0.5 1\""), std::string::npos);
}

struct Cells final : CollectionViewDataSource, CollectionViewDelegate {
  int numberOfItems(CollectionView&, int) override { return 3; }
  std::shared_ptr<ReusableCell> cellForItem(CollectionView& view, IndexPath indexPath) override {
    auto cell = view.dequeueReusableCell("cell", indexPath);
    cell->name = "cell" + std::to_string(indexPath.item);
    return cell;
  }
  Size sizeForItem(CollectionView&, IndexPath) override { return {100, 40}; }
  void didSelectItem(CollectionView&, IndexPath indexPath) override {
    selected.push_back(indexPath.item);
  }
  std::vector<int> selected;
};

struct Rows final : PickerViewDataSource {
  int numberOfRows(const PickerView&, int) const override { return 3; }
  std::string titleForRow(const PickerView&, int row, int) const override {
    return std::vector<std::string>{"Ligera", "Moderada", "Intensa"}[static_cast<std::size_t>(row)];
  }
};

TEST(HtmlRenderer, CellsFieldsAndWheelsTakeTheMembersInput) {
  auto root = makeView<View>(Rect{{}, {390, 844}});
  Cells source;
  auto list = addOutlet<CollectionView>(*root, "list");
  list->setFrame({{0, 100}, {390, 300}});
  list->contentInset = {10, 24, 10, 24};
  list->dataSource = &source;
  list->delegate = &source;
  list->registerCell("cell", [] { return makeView<ReusableCell>(); });

  // A date field whose bar confirms what the wheel shows, as the questionnaire's do.
  auto dateField = addOutlet<TextField>(*root, "date");
  auto wheel = makeView<DatePicker>();
  wheel->minimumDate = Date{std::chrono::sys_days{std::chrono::year{1900} / 1 / 1}};
  dateField->inputView = wheel;
  auto bar = makeView<Toolbar>();
  std::vector<std::string> confirmed;
  BarButtonItem done;
  done.title = "Hecho";
  done.action = [&] {
    confirmed.push_back("date");
    dateField->text = "picked";
    dateField->resignFirstResponder();
  };
  bar->items = {done, BarButtonItem::flexibleSpace()};
  dateField->inputAccessoryView = bar;

  Rows rows;
  auto pickerField = addOutlet<TextField>(*root, "picker");
  auto picker = makeView<PickerView>();
  picker->dataSource = &rows;
  pickerField->inputView = picker;
  pickerField->placeholder = "Elige";

  auto number = addOutlet<TextField>(*root, "number");
  number->keyboardType = KeyboardType::decimalPad;
  std::string typed;
  number->addTarget(ControlEvent::editingChanged, [&] { typed = number->text; });

  HtmlRendering page = renderHtml(*root);
  EXPECT_EQ(count(page.html, "class=\"v cell\""), 3U);
  // The content sits inside the insets; the scrollable size holds both.
  EXPECT_NE(page.html.find("<div class=\"spacer\" style=\"width:148px;height:170px\"></div>"
                           "<div class=\"content\" style=\"left:24px;top:10px;"),
            std::string::npos)
      << page.html;
  ASSERT_TRUE(page.apply(idOf(page, "cell2")));
  ASSERT_TRUE(page.apply(idOf(page, "cell0")));
  EXPECT_EQ(source.selected, (std::vector<int>{2, 0}));

  // Nothing chosen yet: the date input is empty and the list shows its placeholder first.
  EXPECT_NE(page.html.find("type=\"date\" min=\"1900-01-01\""), std::string::npos) << page.html;
  EXPECT_NE(page.html.find("<option value=\"\" disabled selected>Elige</option>"
                           "<option value=\"0\">Ligera</option>"),
            std::string::npos);
  EXPECT_NE(page.html.find("inputmode=\"decimal\""), std::string::npos);

  ASSERT_TRUE(page.apply(idOf(page, "date"), "1985-04-12"));
  EXPECT_EQ(wheel->date(), Date{std::chrono::sys_days{std::chrono::year{1985} / 4 / 12}});
  EXPECT_EQ(confirmed, std::vector<std::string>{"date"});
  EXPECT_FALSE(dateField->isFirstResponder());
  // A value that is no date is refused: the wheel keeps its date, the bar is not tapped.
  EXPECT_FALSE(page.apply(idOf(page, "date"), "12/04/1985"));
  EXPECT_EQ(confirmed.size(), 1U);
  EXPECT_FALSE(dateField->isFirstResponder());

  ASSERT_TRUE(page.apply(idOf(page, "picker"), "2"));
  EXPECT_EQ(picker->selectedRow(), 2);
  EXPECT_FALSE(page.apply(idOf(page, "picker"), "3"));
  EXPECT_FALSE(page.apply(idOf(page, "picker"), "1x"));
  EXPECT_EQ(picker->selectedRow(), 2);

  ASSERT_TRUE(page.apply(idOf(page, "number"), "72.5"));
  EXPECT_EQ(typed, "72.5");
  EXPECT_FALSE(number->isFirstResponder());

  // Drawn again, the fields show what was chosen, and the same tree gets the same ids.
  pickerField->text = "Intensa";
  const HtmlRendering again = renderHtml(*root);
  EXPECT_NE(again.html.find("value=\"1985-04-12\""), std::string::npos);
  EXPECT_NE(again.html.find("<option value=\"2\" selected>Intensa</option>"), std::string::npos);
  EXPECT_EQ(again.html.find("disabled selected"), std::string::npos);
  EXPECT_EQ(idOf(again, "cell1"), idOf(page, "cell1"));
}

TEST(HtmlRenderer, PresentedScreensAreLayersAndTheBarGoesBack) {
  test::TestPlatform platform;
  auto window = std::make_shared<Window>(std::make_shared<test::RecordingPresenter>(),
                                         platform.bundle().mainQueue);
  auto host = std::make_shared<ViewController>();
  window->setRootViewController(host);

  auto first = std::make_shared<ViewController>();
  first->title = "Menú";
  first->navigationItem.backBarButtonItem = BarButtonItem{.title = "Atrás"};
  auto navigation = std::make_shared<NavigationController>(first);
  navigation->navigationBar.barTintColor = Color{46, 125, 50};
  navigation->modalPresentationStyle = ModalPresentationStyle::overFullScreen;
  host->present(navigation, false);
  auto second = std::make_shared<ViewController>();
  second->title = "Receta";
  auto scroll = addOutlet<ScrollView>(second->view(), "scroll");
  scroll->setFrame({{0, 40}, {390, 804}});
  navigation->pushViewController(second, false);

  HtmlRendering page = renderHtml(*host);
  EXPECT_EQ(count(page.html, "<div class=\"layer"), 2U);
  EXPECT_NE(page.html.find("<div class=\"navbar\" data-kind=\"NavigationBar\" "
                           "style=\"background-color:#2e7d32\">"),
            std::string::npos);
  EXPECT_NE(page.html.find(">Receta</div>"), std::string::npos);
  // A scroll view under the bar starts its content below it (the bar ends 91 points down).
  EXPECT_NE(page.html.find("<div class=\"content\" style=\"left:0px;top:51px;"), std::string::npos)
      << page.html;
  // The page reports the member's scrolling as "x,y"; anything else moves nothing.
  const std::string scrolled = idOf(page, "scroll");
  ASSERT_FALSE(scrolled.empty());
  EXPECT_TRUE(page.apply(scrolled, "0,120.5"));
  EXPECT_EQ(scroll->contentOffset().y, 120.5);
  for (const char* bad : {"0", "x,1", "NaN,1", "1,2px", "01,2"}) {
    EXPECT_FALSE(page.apply(scrolled, bad)) << bad;
  }
  EXPECT_EQ(scroll->contentOffset().y, 120.5);

  std::smatch back;
  ASSERT_TRUE(
      std::regex_search(page.html, back, std::regex("class=\"item back\" id=\"(e[0-9]+)\"")));
  EXPECT_NE(page.html.find("‹ Atrás"), std::string::npos);
  EXPECT_FALSE(page.apply(back[1].str(), "0,0"));
  EXPECT_EQ(navigation->topViewController(), second.get());
  ASSERT_TRUE(page.apply(back[1].str()));
  EXPECT_EQ(navigation->topViewController(), first.get());
  EXPECT_FALSE(page.apply(back[1].str()));  // at the root nothing is popped

  // A full-screen screen on top hides the layers below it; an alert dims what it covers.
  auto full = std::make_shared<ViewController>();
  full->modalPresentationStyle = ModalPresentationStyle::fullScreen;
  navigation->present(full, false);
  auto alert = std::make_shared<AlertController>("Aviso", "Seguro?");
  bool chosen = false;
  alert->addAction({.title = "Sí", .handler = [&] { chosen = true; }});
  full->present(alert, false);
  page = renderHtml(*host);
  EXPECT_EQ(count(page.html, "<div class=\"layer covered\""), 2U) << page.html;
  EXPECT_NE(page.html.find("<div class=\"layer\" data-screen=\"ViewController\">"),
            std::string::npos);
  EXPECT_NE(page.html.find("<div class=\"layer alert\" data-screen=\"AlertController\">"),
            std::string::npos);
  ASSERT_TRUE(page.apply(idOf(page, "action")));
  EXPECT_TRUE(chosen);
  EXPECT_EQ(full->presentedViewController(), nullptr);
}

struct TwoPages final : PageViewControllerDataSource {
  std::shared_ptr<ViewController> viewControllerBefore(PageViewController&,
                                                       ViewController& current) override {
    return &current == second.get() ? first : nullptr;
  }
  std::shared_ptr<ViewController> viewControllerAfter(PageViewController&,
                                                      ViewController& current) override {
    return &current == first.get() ? second : nullptr;
  }
  std::shared_ptr<ViewController> first = std::make_shared<ViewController>();
  std::shared_ptr<ViewController> second = std::make_shared<ViewController>();
};

TEST(HtmlRenderer, APageControllerTurnsOnASwipeUnlessSwipingIsOff) {
  TwoPages source;
  auto pages = std::make_shared<PageViewController>();
  pages->dataSource = &source;
  pages->setViewController(source.first, PageViewController::Direction::forward, false);
  std::smatch swipe;
  const HtmlRendering page = renderHtml(*pages);
  ASSERT_TRUE(std::regex_search(page.html, swipe, std::regex("data-swipe=\"(e[0-9]+)\"")));
  const std::string id = swipe[1].str();
  EXPECT_FALSE(page.apply(id, "sideways"));
  EXPECT_FALSE(page.apply(id, "reverse"));  // no page before the first
  ASSERT_TRUE(page.apply(id, "forward"));
  EXPECT_EQ(pages->currentViewController(), source.second.get());
  EXPECT_FALSE(page.apply(id, "forward"));
  ASSERT_TRUE(page.apply(id, "reverse"));
  EXPECT_EQ(pages->currentViewController(), source.first.get());

  pages->isScrollEnabled = false;
  EXPECT_EQ(renderHtml(*pages).html.find("data-swipe"), std::string::npos);
  EXPECT_FALSE(page.apply(id, "forward"));
  EXPECT_EQ(pages->currentViewController(), source.first.get());
}

TEST(HtmlRenderer, ImagesComeFromTheBundleOrTheirBytes) {
  auto root = makeView<View>(Rect{{}, {390, 844}});
  auto named = addOutlet<ImageView>(*root, "named", ImageRef::named("food"));
  auto tinted =
      addOutlet<ImageView>(*root, "tinted", ImageRef::named("back-image").withTemplateRendering());
  tinted->setTintColor(Color{0, 128, 0});
  auto photo =
      addOutlet<ImageView>(*root, "photo", ImageRef::data(Image{{0x89, 'P', 'N', 'G', 1, 2, 3}}));
  photo->contentMode = ContentMode::scaleAspectFill;

  const std::string html = renderHtml(*root).html;
  EXPECT_NE(html.find("src=\"images/food\" srcset=\"images/food 1x, images/food@2x 2x, "
                      "images/food@3x 3x\""),
            std::string::npos)
      << html;
  EXPECT_NE(html.find("background-color:#008000;-webkit-mask-image:url('images/back-image')"),
            std::string::npos);
  EXPECT_NE(html.find("object-fit:cover\" src=\"data:image/png;base64,iVBORwECAw==\""),
            std::string::npos);

  HtmlOptions served;
  served.bundleImageURL = [](const std::string& name) { return "/bundle/" + name; };
  served.imageURL = [](const Image& image) {
    return "/photo/" + std::to_string(image.data.size());
  };
  const std::string routed = renderHtml(*root, served).html;
  EXPECT_NE(routed.find("src=\"/bundle/food\""), std::string::npos);
  EXPECT_NE(routed.find("src=\"/photo/7\""), std::string::npos);
  EXPECT_EQ(routed.find("base64"), std::string::npos);
}

}  // namespace
}  // namespace nutrition
