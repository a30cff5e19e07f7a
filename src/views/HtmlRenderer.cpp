#include "views/HtmlRenderer.h"

#include <algorithm>
#include <charconv>
#include <chrono>
#include <cmath>
#include <cstdio>
#include <numbers>

#include "base/Image.h"
#include "json/JsonCursor.h"
#include "views/AlertController.h"
#include "views/Button.h"
#include "views/CollectionView.h"
#include "views/Controls.h"
#include "views/ImageView.h"
#include "views/Label.h"
#include "views/NavigationController.h"
#include "views/PageViewController.h"
#include "views/Pickers.h"
#include "views/StackView.h"
#include "views/SystemColors.h"
#include "views/TextField.h"

namespace nutrition {
namespace {

// A length in CSS pixels (one per point), without trailing zeros.
std::string num(double value) {
  if (!std::isfinite(value)) return "0";
  char text[32];
  std::snprintf(text, sizeof text, "%.2f", value);
  std::string out = text;
  while (out.back() == '0')
    out.pop_back();
  if (out.back() == '.') out.pop_back();
  return out == "-0" ? "0" : out;
}

std::string px(double value) {
  return num(value) + "px";
}

std::string css(const Color& color) {
  char text[40];
  if (color.alpha == 255) {
    std::snprintf(text, sizeof text, "#%02x%02x%02x", color.red, color.green, color.blue);
  } else {
    std::snprintf(text, sizeof text, "rgba(%d,%d,%d,%s)", color.red, color.green, color.blue,
                  num(color.alpha / 255.0).c_str());
  }
  return text;
}

int cssWeight(FontWeight weight) {
  switch (weight) {
    case FontWeight::regular:
      return 400;
    case FontWeight::medium:
      return 500;
    case FontWeight::semibold:
      return 600;
    case FontWeight::bold:
      return 700;
  }
  return 400;
}

std::string font(const Font& value) {
  return "font-size:" + px(value.size) + ";font-weight:" + std::to_string(cssWeight(value.weight)) +
         ";";
}

const char* textAlign(TextAlignment alignment) {
  switch (alignment) {
    case TextAlignment::center:
      return "center";
    case TextAlignment::right:
      return "right";
    case TextAlignment::natural:
    case TextAlignment::left:
      return "left";
  }
  return "left";
}

std::string base64(const std::vector<std::uint8_t>& bytes) {
  static constexpr char kDigits[] =
      "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789+/";
  std::string out;
  out.reserve((bytes.size() + 2) / 3 * 4);
  std::size_t at = 0;
  for (; at + 2 < bytes.size(); at += 3) {
    const unsigned word = (bytes[at] << 16U) | (bytes[at + 1] << 8U) | bytes[at + 2];
    out += kDigits[(word >> 18U) & 63U];
    out += kDigits[(word >> 12U) & 63U];
    out += kDigits[(word >> 6U) & 63U];
    out += kDigits[word & 63U];
  }
  if (at < bytes.size()) {
    const bool two = at + 1 < bytes.size();
    const unsigned word = (bytes[at] << 16U) | (two ? bytes[at + 1] << 8U : 0U);
    out += kDigits[(word >> 18U) & 63U];
    out += kDigits[(word >> 12U) & 63U];
    out += two ? kDigits[(word >> 6U) & 63U] : '=';
    out += '=';
  }
  return out;
}

std::string mimeType(const std::vector<std::uint8_t>& bytes) {
  const auto starts = [&](std::string_view magic, std::size_t offset = 0) {
    if (bytes.size() < offset + magic.size()) return false;
    for (std::size_t i = 0; i < magic.size(); ++i) {
      if (bytes[offset + i] != static_cast<std::uint8_t>(magic[i])) return false;
    }
    return true;
  };
  if (starts("\x89PNG")) return "image/png";
  if (starts("\xFF\xD8\xFF")) return "image/jpeg";
  if (starts("GIF8")) return "image/gif";
  if (starts("RIFF") && starts("WEBP", 8)) return "image/webp";
  return "application/octet-stream";
}

// An SVG path of `arc`, drawn as on a phone: from the start angle to the end angle in the
// arc's direction; equal angles draw nothing, a turn or more draws the whole circle.
std::string arcPath(const Arc& arc) {
  constexpr double kTurn = 2 * std::numbers::pi;
  const double raw = arc.clockwise ? arc.endAngle - arc.startAngle : arc.startAngle - arc.endAngle;
  double sweep = raw;
  if (std::abs(raw) < kTurn) {
    sweep = std::fmod(raw, kTurn);
    if (sweep < 0) sweep += kTurn;
  } else {
    sweep = kTurn;
  }
  if (sweep <= 0 || arc.radius <= 0) return {};
  const auto point = [&](double angle) {
    return num(arc.center.x + arc.radius * std::cos(angle)) + " " +
           num(arc.center.y + arc.radius * std::sin(angle));
  };
  const double direction = arc.clockwise ? 1 : -1;
  const std::string r = num(arc.radius);
  const std::string flag = arc.clockwise ? "1" : "0";
  std::string d = "M" + point(arc.startAngle);
  // More than half a turn is drawn as two halves: one elliptical arc cannot end where it
  // starts, and a ring just short of a turn would end where it starts once its points are
  // rounded, which draws nothing.
  const int pieces = sweep > std::numbers::pi ? 2 : 1;
  for (int piece = 1; piece <= pieces; ++piece) {
    const double step = sweep / pieces;
    d += " A";
    d += r;
    d += ' ';
    d += r;
    d += " 0 0 ";
    d += flag;
    d += ' ';
    d += point(arc.startAngle + direction * step * piece);
  }
  return d;
}

std::string arcsSvg(const View& view) {
  std::string paths;
  for (const auto& sublayer : view.layer().sublayers()) {
    const auto* shape = dynamic_cast<const ShapeLayer*>(sublayer.get());
    if (shape == nullptr) continue;
    for (const auto& arc : shape->path) {
      const std::string d = arcPath(arc);
      if (d.empty()) continue;
      paths += "<path d=\"" + d + "\" fill=\"" +
               (shape->fillColor ? css(*shape->fillColor) : "none") + "\" stroke=\"" +
               (shape->strokeColor ? css(*shape->strokeColor) : "none") + "\" stroke-width=\"" +
               num(shape->lineWidth) + "\"";
      if (shape->strokeEnd < 1) {
        paths +=
            " pathLength=\"1\" stroke-dasharray=\"" + num(std::max(0.0, shape->strokeEnd)) + " 1\"";
      }
      paths += "/>";
    }
  }
  if (paths.empty()) return {};
  const Size size = view.frame().size;
  return "<svg class=\"arcs\" width=\"" + num(size.width) + "\" height=\"" + num(size.height) +
         "\" viewBox=\"0 0 " + num(size.width) + " " + num(size.height) + "\">" + paths + "</svg>";
}

std::string dateText(Date date) {
  const std::chrono::year_month_day day{std::chrono::floor<std::chrono::days>(date)};
  char text[16];
  std::snprintf(text, sizeof text, "%04d-%02u-%02u", static_cast<int>(day.year()),
                static_cast<unsigned>(day.month()), static_cast<unsigned>(day.day()));
  return text;
}

std::optional<Date> parseDateText(const std::string& text) {
  int year = 0;
  unsigned month = 0;
  unsigned day = 0;
  if (text.size() != 10 || text[4] != '-' || text[7] != '-') return std::nullopt;
  const char* begin = text.data();
  if (std::from_chars(begin, begin + 4, year).ec != std::errc{} ||
      std::from_chars(begin + 5, begin + 7, month).ec != std::errc{} ||
      std::from_chars(begin + 8, begin + 10, day).ec != std::errc{}) {
    return std::nullopt;
  }
  const std::chrono::year_month_day ymd{std::chrono::year{year}, std::chrono::month{month},
                                        std::chrono::day{day}};
  if (!ymd.ok()) return std::nullopt;
  return Date{std::chrono::sys_days{ymd}};
}

// A scroll offset as the page sends it: a plain number.
std::optional<double> parseOffset(std::string_view text) {
  json::Cursor in(text);
  double value = 0;
  if (!in.readDouble(value) || !in.finish()) return std::nullopt;
  return value;
}

std::optional<int> parseIndex(const std::string& text) {
  int value = 0;
  const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), value);
  if (error != std::errc{} || end != text.data() + text.size()) return std::nullopt;
  return value;
}

// What the member's confirmation of a wheel or field is: the bar's done item, else its first
// item with an action; without a bar, editing simply ends.
void confirm(TextField& field) {
  if (const auto& bar = field.inputAccessoryView) {
    const BarButtonItem* chosen = nullptr;
    for (const auto& item : bar->items) {
      if (!item.action || item.system == BarButtonItem::System::flexibleSpace) continue;
      if (item.style == BarButtonItem::Style::done) {
        chosen = &item;
        break;
      }
      if (chosen == nullptr) chosen = &item;
    }
    if (chosen != nullptr) {
      auto action = chosen->action;  // the action may replace the items
      action();
      return;
    }
  }
  field.resignFirstResponder();
}

bool enterValue(TextField& field, const std::string& value) {
  if (!field.tap()) return false;
  bool accepted = true;
  if (auto* wheel = dynamic_cast<DatePicker*>(field.inputView.get())) {
    const auto date = parseDateText(value);
    if (date) wheel->pick(*date);
    accepted = date.has_value();
  } else if (auto* picker = dynamic_cast<PickerView*>(field.inputView.get())) {
    const auto row = parseIndex(value);
    accepted = row && picker->pick(*row);
  } else {
    field.type(value);
  }
  if (accepted) {
    confirm(field);
  } else {
    field.resignFirstResponder();
  }
  return accepted;
}

class Writer final : public ViewVisitor {
 public:
  Writer(const HtmlOptions& options, HtmlRendering& out) : options_(options), out_(out) {}

  // One view and everything under it. `inFlow`: an arranged view of a stack, placed by the
  // flex box; `interactive`: no view above turned interaction off; `list`: the collection or
  // table view this view is a cell of.
  void emit(const std::shared_ptr<View>& view, bool inFlow, bool interactive,
            const std::shared_ptr<CellListView>& list, double parentTop = 0,
            bool inScroll = false) {
    if (view->isHidden) return;
    element_ = Element{};
    current_ = view;
    top_ = parentTop + view->frame().origin.y;
    inScroll_ = inScroll;
    const double top = top_;
    interactive_ = interactive && view->isUserInteractionEnabled;
    const bool childrenInteractive = interactive_;
    if (list != nullptr && dynamic_cast<ReusableCell*>(view.get()) != nullptr) {
      element_.classes += " cell";
      if (interactive_) tapTarget(cellTarget(list, view));
    }
    view->accept(*this);
    if (element_.id.empty() && interactive_ && view->hasTapGesture()) tapTarget(viewTarget(view));
    if (auto* pages = dynamic_cast<PageViewController*>(view->viewController);
        pages != nullptr && pages->isScrollEnabled && interactive_) {
      swipeTarget(*pages);
    }
    Element element = std::move(element_);

    std::string& html = out_.html;
    html += "<" + element.tag + " class=\"v" + element.classes + (inFlow ? " f" : "") + "\"";
    if (!element.id.empty()) html += " id=\"" + element.id + "\"";
    html += " data-kind=\"" + escapeHtml(std::string(view->kind())) + "\"";
    if (!view->name.empty()) html += " data-name=\"" + escapeHtml(view->name) + "\"";
    html += element.attributes;
    html += " style=\"" + geometry(*view, inFlow) + look(*view) + element.style + "\">";
    if (element.tag == "input") return;
    html += arcsSvg(*view);
    html += element.inner;
    if (!element.leaf) {
      const auto asList = std::dynamic_pointer_cast<CellListView>(view);
      const bool scrolls = dynamic_cast<ScrollView*>(view.get()) != nullptr;
      for (const auto& child : view->subviews()) {
        emit(child, element.flowChildren, childrenInteractive, asList, top, inScroll || scrolls);
      }
    }
    html += element.after;
    html += "</" + element.tag + ">";
  }

  void visit(const View&) override {}

  void visit(const Control& view) override {
    if (!view.isEnabled) {
      element_.classes += " disabled";
    } else if (interactive_) {
      tapTarget(viewTarget(current_));
    }
    if (view.isSelected()) element_.classes += " selected";
  }

  void visit(const Label& view) override {
    element_.classes += view.numberOfLines == 1 ? " l one" : " l";
    element_.style += "text-align:" + std::string(textAlign(view.textAlignment)) + ";";
    std::string runs;
    if (const auto& attributed = view.attributedText()) {
      for (const auto& run : attributed->runs) {
        runs += "<span style=\"" + font(run.font) + "color:" + css(run.color) + "\">" +
                escapeHtml(run.text) + "</span>";
      }
      if (attributed->lineSpacing != 0) {
        element_.style += "line-height:calc(1.2em + " + px(attributed->lineSpacing) + ");";
      }
    } else {
      element_.style += font(view.font) + "color:" + css(view.textColor) + ";";
      runs = escapeHtml(view.text());
    }
    std::string lines;
    if (view.numberOfLines > 1)
      lines = " style=\"-webkit-line-clamp:" + std::to_string(view.numberOfLines) + "\"";
    element_.inner = "<span class=\"lt\"" + lines + ">" + runs + "</span>";
  }

  void visit(const Button& view) override {
    visit(static_cast<const Control&>(view));
    element_.classes += " b";
    const auto titleColor = view.currentTitleColor();
    element_.style += font(view.titleFont) +
                      "color:" + css(titleColor ? *titleColor : view.effectiveTintColor()) + ";";
    const EdgeInsets& insets = view.contentEdgeInsets;
    std::string inner = "<span class=\"bc\" style=\"padding:" + px(insets.top) + " " +
                        px(insets.right) + " " + px(insets.bottom) + " " + px(insets.left) + "\">";
    const auto title = view.attributedTitle(view.state());
    const auto plain = view.currentTitle();
    const bool hasTitle = (title && !title->runs.empty()) || (plain && !plain->empty());
    if (auto shown = view.currentImage()) {
      if (shown->isTemplate) {
        const double side = hasTitle ? 24 : std::min(view.frame().width(), view.frame().height());
        inner += maskImage(*shown, view.effectiveTintColor(),
                           "width:" + px(side) + ";height:" + px(side) + ";", "contain");
      } else {
        inner += "<img class=\"bi\" alt=\"\" " + imageSource(*shown) + ">";
      }
    }
    if (title) {
      inner += "<span class=\"bt\">";
      for (const auto& run : title->runs) {
        inner += "<span style=\"" + font(run.font) + "color:" + css(run.color) + "\">" +
                 escapeHtml(run.text) + "</span>";
      }
      inner += "</span>";
    } else if (plain) {
      inner += "<span class=\"bt\">" + escapeHtml(*plain) + "</span>";
    }
    element_.inner = inner + "</span>";
  }

  void visit(const ImageView& view) override {
    if (!view.image) return;
    const char* fit = "contain";
    if (view.contentMode == ContentMode::scaleToFill) fit = "fill";
    if (view.contentMode == ContentMode::scaleAspectFill) fit = "cover";
    if (view.contentMode == ContentMode::center) fit = "none";
    if (view.image->isTemplate) {
      const std::string size = std::string(fit) == "fill"   ? "100% 100%"
                               : std::string(fit) == "none" ? "auto"
                                                            : fit;
      element_.inner = maskImage(*view.image, view.effectiveTintColor(), "", size, " fill");
    } else {
      element_.inner = "<img class=\"img\" alt=\"\" style=\"object-fit:" + std::string(fit) +
                       "\" " + imageSource(*view.image) + ">";
    }
  }

  void visit(const StackView& view) override {
    element_.flowChildren = true;
    element_.classes += view.axis == Axis::vertical ? " stack col" : " stack row";
    static constexpr const char* kAlign[] = {"stretch", "flex-start", "center", "flex-end"};
    element_.style += "gap:" + px(view.spacing) +
                      ";align-items:" + kAlign[static_cast<int>(view.alignment)] + ";";
    if (view.distribution == StackDistribution::equalSpacing) {
      element_.style += "justify-content:space-between;";
    }
  }

  void visit(const ScrollView& view) override {
    scroll(view);
    // Scrolling by the member moves the content offset, as a drag does.
    std::weak_ptr<View> weak = current_;
    element_.id = target([weak](const std::string& value) {
      auto shown = std::dynamic_pointer_cast<ScrollView>(weak.lock());
      const auto comma = value.find(',');
      if (!shown || comma == std::string::npos) return false;
      const auto x = parseOffset(std::string_view(value).substr(0, comma));
      const auto y = parseOffset(std::string_view(value).substr(comma + 1));
      if (!x || !y) return false;
      shown->setContentOffset({*x, *y});
      return true;
    });
    element_.attributes += " data-act=\"scroll\"";
  }

  void visit(const CollectionView& view) override {
    visit(static_cast<const ScrollView&>(view));
    if (view.scrollDirection == Axis::horizontal) element_.classes += " hscroll";
  }

  void visit(const TableView& view) override {
    visit(static_cast<const ScrollView&>(view));
    if (view.showsSeparators) element_.classes += " sep";
  }

  void visit(const TextField& view) override {
    element_.leaf = true;
    element_.classes += " tf";
    std::string placeholder = view.placeholder;
    std::optional<Color> placeholderColor;
    if (view.attributedPlaceholder) {
      placeholder = view.attributedPlaceholder->string();
      if (!view.attributedPlaceholder->runs.empty()) {
        placeholderColor = view.attributedPlaceholder->runs.front().color;
      }
    }
    element_.style += font(view.font) + "color:" + css(view.textColor) +
                      ";text-align:" + textAlign(view.textAlignment) + ";";
    if (placeholderColor) element_.style += "--ph:" + css(*placeholderColor) + ";";
    if (view.borderStyle == BorderStyle::roundedRect) element_.classes += " rounded";
    if (view.borderStyle == BorderStyle::line) element_.classes += " line";
    if (view.leftView) element_.style += "padding-left:" + px(view.leftView->frame().width()) + ";";
    const bool enabled = view.isEnabled && interactive_;

    if (const auto* wheel = dynamic_cast<const DatePicker*>(view.inputView.get())) {
      element_.tag = "input";
      element_.attributes += " type=\"date\"";
      if (!view.text.empty()) element_.attributes += " value=\"" + dateText(wheel->date()) + "\"";
      dateLimits(*wheel);
    } else if (const auto* picker = dynamic_cast<const PickerView*>(view.inputView.get())) {
      element_.tag = "select";
      element_.leaf = true;
      element_.inner = options(*picker, view.text.empty(), placeholder);
    } else {
      element_.tag = "input";
      static constexpr const char* kModes[] = {"text", "numeric", "decimal", "email"};
      element_.attributes += " type=\"text\" inputmode=\"" +
                             std::string(kModes[static_cast<int>(view.keyboardType)]) +
                             "\" value=\"" + escapeHtml(view.text) + "\"";
    }
    if (!placeholder.empty() && element_.tag == "input") {
      element_.attributes += " placeholder=\"" + escapeHtml(placeholder) + "\"";
    }
    if (!enabled) {
      element_.attributes += " disabled";
      return;
    }
    std::weak_ptr<View> weak = current_;
    element_.id = target([weak](const std::string& value) {
      auto field = std::dynamic_pointer_cast<TextField>(weak.lock());
      return field && enterValue(*field, value);
    });
    element_.attributes += " data-act=\"input\"";
  }

  void visit(const DatePicker& view) override {
    element_.tag = "input";
    element_.leaf = true;
    element_.attributes += " type=\"date\" value=\"" + dateText(view.date()) + "\"";
    dateLimits(view);
    if (!view.isEnabled || !interactive_) {
      element_.attributes += " disabled";
      return;
    }
    std::weak_ptr<View> weak = current_;
    element_.id = target([weak](const std::string& value) {
      auto wheel = std::dynamic_pointer_cast<DatePicker>(weak.lock());
      const auto date = parseDateText(value);
      if (!wheel || !date || wheel->isHidden || !wheel->isEnabled) return false;
      wheel->pick(*date);
      return true;
    });
    element_.attributes += " data-act=\"input\"";
  }

  void visit(const PickerView& view) override {
    element_.tag = "select";
    element_.leaf = true;
    element_.inner = options(view, false, "");
    if (!interactive_) {
      element_.attributes += " disabled";
      return;
    }
    std::weak_ptr<View> weak = current_;
    element_.id = target([weak](const std::string& value) {
      auto wheel = std::dynamic_pointer_cast<PickerView>(weak.lock());
      const auto row = parseIndex(value);
      return wheel && row && !wheel->isHidden && wheel->pick(*row);
    });
    element_.attributes += " data-act=\"input\"";
  }

  void visit(const Toolbar& view) override {
    element_.classes += " toolbar";
    if (view.barTintColor) element_.style += "background-color:" + css(*view.barTintColor) + ";";
    std::weak_ptr<View> weak = current_;
    for (std::size_t index = 0; index < view.items.size(); ++index) {
      const auto& item = view.items[index];
      element_.inner +=
          barItem(item, item.tintColor.value_or(view.effectiveTintColor()), [weak, index] {
            auto bar = std::dynamic_pointer_cast<Toolbar>(weak.lock());
            if (!bar || bar->isHidden || index >= bar->items.size()) return false;
            auto action = bar->items[index].action;
            if (!action) return false;
            action();
            return true;
          });
    }
  }

  void visit(const ProgressView& view) override {
    element_.classes += " progress";
    element_.style +=
        "background-color:" + css(view.trackTintColor.value_or(Color{120, 120, 128, 51})) + ";";
    element_.inner =
        "<div class=\"pb\" style=\"width:" + num(view.progress() * 100) +
        "%;background-color:" + css(view.progressTintColor.value_or(view.effectiveTintColor())) +
        "\"></div>";
  }

  void visit(const PageControl& view) override {
    element_.classes += " pages";
    if (view.hidesForSinglePage && view.numberOfPages <= 1) return;
    const Color current = view.currentPageIndicatorTintColor.value_or(systemColors::black);
    const Color other = view.pageIndicatorTintColor.value_or(Color{0, 0, 0, 76});
    for (int page = 0; page < view.numberOfPages; ++page) {
      element_.inner +=
          "<i class=\"dot" + std::string(page == view.currentPage ? " on" : "") +
          "\" style=\"background-color:" + css(page == view.currentPage ? current : other) +
          "\"></i>";
    }
  }

  void visit(const ActivityIndicator& view) override {
    element_.classes += " activity";
    element_.inner = "<i class=\"spin\" style=\"border-color:" +
                     css(view.color.value_or(systemColors::systemGray)) +
                     ";border-top-color:transparent\"></i>";
  }

  // The navigation bar of `navigation`, over its screen.
  void navigationBar(const std::shared_ptr<NavigationController>& navigation) {
    const NavigationBar& bar = navigation->navigationBar;
    if (bar.isHidden) return;
    std::string& html = out_.html;
    const Color background =
        bar.barTintColor.value_or(bar.backgroundColor.value_or(Color{249, 249, 249, 240}));
    const Color tint = bar.tintColor.value_or(Color{0, 122, 255, 255});
    html += "<div class=\"navbar\" data-kind=\"NavigationBar\" style=\"background-color:" +
            css(background) + "\"><div class=\"navrow\">";
    ViewController* top = navigation->topViewController();
    std::weak_ptr<ViewController> weak = navigation;
    html += "<div class=\"navside left\">";
    if (top != nullptr && top->navigationItem.leftBarButtonItem) {
      html += barItem(*top->navigationItem.leftBarButtonItem, tint,
                      [weak] { return runBarItem(weak, /*left=*/true); });
    } else if (navigation->viewControllers().size() > 1 && top != nullptr &&
               !top->navigationItem.hidesBackButton) {
      const auto& below = navigation->viewControllers()[navigation->viewControllers().size() - 2];
      const std::string back = below->navigationItem.backBarButtonItem
                                   ? below->navigationItem.backBarButtonItem->title
                                   : "";
      const std::string id = target([weak](const std::string& value) {
        auto shown = std::dynamic_pointer_cast<NavigationController>(weak.lock());
        return value.empty() && shown && shown->popViewController(true) != nullptr;
      });
      html += "<span class=\"item back\" id=\"" + id +
              "\" data-act=\"tap\" style=\"color:" + css(tint) + "\">‹ " + escapeHtml(back) +
              "</span>";
    }
    html += "</div>";
    std::string title;
    if (top != nullptr)
      title = top->navigationItem.title.empty() ? top->title : top->navigationItem.title;
    html += "<div class=\"navtitle\" style=\"" + font(bar.titleFont) +
            "color:" + css(bar.titleColor.value_or(systemColors::label)) + "\">" +
            escapeHtml(title) + "</div><div class=\"navside right\">";
    if (top != nullptr && top->navigationItem.rightBarButtonItem) {
      html += barItem(*top->navigationItem.rightBarButtonItem, tint,
                      [weak] { return runBarItem(weak, /*left=*/false); });
    }
    html += "</div></div></div>";
  }

  // Where a navigation bar over the screen ends (0: none). The outermost scroll views under
  // it start their content below it, as a phone adjusts their insets.
  void setBarBottom(double bottom) { barBottom_ = bottom; }

  std::string target(std::function<bool(const std::string&)> action) {
    std::string id = "e" + std::to_string(out_.targets.size() + 1);
    out_.targets.emplace(id, std::move(action));
    return id;
  }

 private:
  struct Element {
    std::string tag = "div";
    std::string classes;
    std::string id;
    std::string attributes;
    std::string style;
    std::string inner;
    std::string after;
    bool leaf = false;
    bool flowChildren = false;
  };

  static bool runBarItem(const std::weak_ptr<ViewController>& weak, bool left) {
    auto shown = std::dynamic_pointer_cast<NavigationController>(weak.lock());
    ViewController* top = shown ? shown->topViewController() : nullptr;
    if (top == nullptr) return false;
    const auto& item =
        left ? top->navigationItem.leftBarButtonItem : top->navigationItem.rightBarButtonItem;
    if (!item || !item->action) return false;
    auto action = item->action;
    action();
    return true;
  }

  static std::function<bool(const std::string&)> viewTarget(const std::shared_ptr<View>& view) {
    std::weak_ptr<View> weak = view;
    return [weak](const std::string&) {
      auto shown = weak.lock();
      return shown && shown->tap();
    };
  }

  static std::function<bool(const std::string&)> cellTarget(
      const std::shared_ptr<CellListView>& list, const std::shared_ptr<View>& cell) {
    std::weak_ptr<CellListView> weakList = list;
    std::weak_ptr<View> weakCell = cell;
    return [weakList, weakCell](const std::string&) {
      auto shownList = weakList.lock();
      auto shownCell = weakCell.lock();
      if (!shownList || !shownCell || !shownList->isUserInteractionEnabled) return false;
      for (const auto& [indexPath, listed] : shownList->cells()) {
        if (listed == shownCell) return shownList->selectItem(indexPath);
      }
      return false;
    };
  }

  // A page controller's view: a member's horizontal swipe turns the page.
  void swipeTarget(PageViewController& pages) {
    std::weak_ptr<ViewController> weak = pages.weak_from_this();
    const std::string id = target([weak](const std::string& value) {
      auto shown = std::dynamic_pointer_cast<PageViewController>(weak.lock());
      if (!shown || (value != "forward" && value != "reverse")) return false;
      return shown->swipe(value == "forward" ? PageViewController::Direction::forward
                                             : PageViewController::Direction::reverse);
    });
    element_.attributes += " data-swipe=\"" + id + "\"";
  }

  // A tap carries no value: input meant for another kind of element is refused.
  void tapTarget(std::function<bool(const std::string&)> action) {
    if (!element_.id.empty()) return;
    element_.id = target([action = std::move(action)](const std::string& value) {
      return value.empty() && action(value);
    });
    element_.attributes += " data-act=\"tap\"";
  }

  void scroll(const ScrollView& view) {
    element_.classes += view.isScrollEnabled ? " sv" : " sv still";
    if (view.isPagingEnabled) element_.classes += " paging";
    EdgeInsets inset = view.contentInset;
    if (!inScroll_ && top_ < barBottom_) inset.top += barBottom_ - top_;
    double width = view.contentSize.width;
    double height = view.contentSize.height;
    for (const auto& child : view.subviews()) {
      if (child->isHidden) continue;
      const Rect& frame = child->frame();
      width = std::max(width, frame.origin.x + frame.width());
      height = std::max(height, frame.origin.y + frame.height());
    }
    element_.attributes += " data-x=\"" + num(view.contentOffset().x) + "\" data-y=\"" +
                           num(view.contentOffset().y) + "\"";
    element_.inner = "<div class=\"spacer\" style=\"width:" + px(inset.left + width + inset.right) +
                     ";height:" + px(inset.top + height + inset.bottom) +
                     "\"></div><div class=\"content\" style=\"left:" + px(inset.left) +
                     ";top:" + px(inset.top) + ";width:" + px(width) + ";height:" + px(height) +
                     "\">";
    element_.after = "</div>";
  }

  void dateLimits(const DatePicker& wheel) {
    if (wheel.minimumDate) element_.attributes += " min=\"" + dateText(*wheel.minimumDate) + "\"";
    if (wheel.maximumDate) element_.attributes += " max=\"" + dateText(*wheel.maximumDate) + "\"";
  }

  static std::string options(const PickerView& picker, bool nothingChosen,
                             const std::string& placeholder) {
    std::string out;
    if (nothingChosen) {
      out += "<option value=\"\" disabled selected>" + escapeHtml(placeholder) + "</option>";
    }
    if (picker.dataSource == nullptr) return out;
    const int rows = picker.dataSource->numberOfRows(picker, 0);
    for (int row = 0; row < rows; ++row) {
      out += "<option value=\"" + std::to_string(row) + "\"" +
             (!nothingChosen && row == picker.selectedRow() ? " selected" : "") + ">" +
             escapeHtml(picker.dataSource->titleForRow(picker, row, 0)) + "</option>";
    }
    return out;
  }

  std::string barItem(const BarButtonItem& item, Color tint, std::function<bool()> action) {
    if (item.system == BarButtonItem::System::flexibleSpace) return "<span class=\"flex\"></span>";
    const Color color = item.tintColor.value_or(tint);
    std::string content;
    if (!item.title.empty() || !item.image) {
      content = escapeHtml(item.title);
    } else if (item.image->isTemplate) {
      content = maskImage(*item.image, color, "width:24px;height:24px;", "contain");
    } else {
      content = "<img class=\"bi\" alt=\"\" " + imageSource(*item.image) + ">";
    }
    std::string id;
    if (item.action) {
      id = target([action = std::move(action)](const std::string& value) {
        return value.empty() && action();
      });
    }
    return "<span class=\"item" +
           std::string(item.style == BarButtonItem::Style::done ? " done" : "") + "\"" +
           (id.empty() ? "" : " id=\"" + id + "\" data-act=\"tap\"") +
           " style=\"color:" + css(color) + "\">" + content + "</span>";
  }

  [[nodiscard]] std::string url(const ImageRef& image, const std::string& suffix = "") const {
    if (image.bytes) {
      if (options_.imageURL) return options_.imageURL(*image.bytes);
      return "data:" + mimeType(image.bytes->data) + ";base64," + base64(image.bytes->data);
    }
    const std::string name = image.name + suffix;
    return options_.bundleImageURL ? options_.bundleImageURL(name) : "images/" + name;
  }

  // A bundle image at its three scales (the browser takes the one for its screen, shown at the
  // size in points), or the bytes of a photo.
  [[nodiscard]] std::string imageSource(const ImageRef& image) const {
    std::string out = "src=\"" + escapeHtml(url(image)) + "\"";
    if (!image.bytes) {
      out += " srcset=\"" + escapeHtml(url(image)) + " 1x, " + escapeHtml(url(image, "@2x")) +
             " 2x, " + escapeHtml(url(image, "@3x")) + " 3x\"";
    }
    return out;
  }

  // A template image: its shape filled with `tint`.
  [[nodiscard]] std::string maskImage(const ImageRef& image, Color tint, const std::string& size,
                                      const std::string& maskSize,
                                      const std::string& extraClass = "") const {
    const std::string mask = "url('" + escapeHtml(url(image)) + "')";
    return "<i class=\"mask" + extraClass + "\" style=\"" + size + "background-color:" + css(tint) +
           ";-webkit-mask-image:" + mask + ";mask-image:" + mask +
           ";-webkit-mask-size:" + maskSize + ";mask-size:" + maskSize + "\"></i>";
  }

  static std::string geometry(const View& view, bool inFlow) {
    const Rect& frame = view.frame();
    std::string out;
    if (!inFlow) out += "left:" + px(frame.origin.x) + ";top:" + px(frame.origin.y) + ";";
    if (frame.width() > 0) out += "width:" + px(frame.width()) + ";";
    if (frame.height() > 0) out += "height:" + px(frame.height()) + ";";
    return out;
  }

  static std::string look(const View& view) {
    std::string out;
    if (view.backgroundColor) out += "background-color:" + css(*view.backgroundColor) + ";";
    if (view.cornerRadius != 0) out += "border-radius:" + px(view.cornerRadius) + ";";
    if (view.borderWidth != 0) {
      out += "border:" + px(view.borderWidth) + " solid " +
             css(view.borderColor.value_or(systemColors::black)) + ";";
    }
    if (view.alpha != 1) out += "opacity:" + num(std::clamp(view.alpha, 0.0, 1.0)) + ";";
    if (view.clipsToBounds) out += "overflow:hidden;";
    if (view.shadow && view.shadow->opacity > 0) {
      const Shadow& shadow = *view.shadow;
      out += "box-shadow:" + px(shadow.offset.width) + " " + px(shadow.offset.height) + " " +
             px(shadow.radius) + " " +
             css(shadow.color.withAlpha(shadow.opacity * shadow.color.alpha / 255.0)) + ";";
    }
    return out;
  }

  const HtmlOptions& options_;
  HtmlRendering& out_;
  Element element_;
  std::shared_ptr<View> current_;
  bool interactive_ = true;
  double top_ = 0;  // of the current view, on the screen
  bool inScroll_ = false;
  double barBottom_ = 0;
};

// The status bar and a navigation bar under it, in points.
constexpr double kBarBottom = 91;

// The layers of `controller` and of each screen presented on it, `covered` when a full-screen
// presentation above hides them.
void renderLayers(Writer& writer, HtmlRendering& out, ViewController& controller, bool presented) {
  std::vector<ViewController*> chain{&controller};
  while (ViewController* next = chain.back()->presentedViewController())
    chain.push_back(next);
  std::size_t firstShown = 0;
  for (std::size_t at = 1; at < chain.size(); ++at) {
    if (chain[at]->modalPresentationStyle == ModalPresentationStyle::fullScreen) firstShown = at;
  }
  for (std::size_t at = 0; at < chain.size(); ++at) {
    ViewController& screen = *chain[at];
    std::string classes = "layer";
    if (at < firstShown) classes += " covered";
    const bool isPresented = presented || at > 0;
    const bool alert = dynamic_cast<AlertController*>(&screen) != nullptr;
    const auto style = screen.modalPresentationStyle;
    if (isPresented && alert) {
      classes += " alert";
    } else if (isPresented && (style == ModalPresentationStyle::automatic ||
                               style == ModalPresentationStyle::pageSheet)) {
      classes += " sheet";
    }
    out.html += "<div class=\"" + classes + "\" data-screen=\"" +
                escapeHtml(std::string(screen.kind())) + "\">";
    std::shared_ptr<View> root = screen.viewPointer();
    root->prepareForDisplay();
    std::shared_ptr<NavigationController> navigation;
    if (dynamic_cast<NavigationController*>(&screen) != nullptr) {
      navigation = std::dynamic_pointer_cast<NavigationController>(screen.weak_from_this().lock());
    }
    writer.setBarBottom(navigation && !navigation->navigationBar.isHidden ? kBarBottom : 0);
    writer.emit(root, false, true, nullptr);
    writer.setBarBottom(0);
    if (navigation) writer.navigationBar(navigation);
    out.html += "</div>";
  }
}

}  // namespace

bool HtmlRendering::apply(const std::string& id, const std::string& value) const {
  const auto found = targets.find(id);
  return found != targets.end() && found->second(value);
}

HtmlRendering renderHtml(View& view, const HtmlOptions& options) {
  view.prepareForDisplay();
  HtmlRendering out;
  Writer writer(options, out);
  std::shared_ptr<View> shared = view.weak_from_this().lock();
  if (shared) {
    writer.emit(shared, false, true, nullptr);
  } else {
    // A view no shared pointer owns cannot be acted on later; it is drawn without targets.
    std::shared_ptr<View> borrowed(std::shared_ptr<View>{}, &view);
    writer.emit(borrowed, false, false, nullptr);
  }
  return out;
}

HtmlRendering renderHtml(ViewController& controller, const HtmlOptions& options) {
  HtmlRendering out;
  Writer writer(options, out);
  renderLayers(writer, out, controller, controller.presentingViewController() != nullptr);
  return out;
}

std::string escapeHtml(const std::string& text) {
  std::string out;
  out.reserve(text.size());
  for (char c : text) {
    switch (c) {
      case '&':
        out += "&amp;";
        break;
      case '<':
        out += "&lt;";
        break;
      case '>':
        out += "&gt;";
        break;
      case '"':
        out += "&quot;";
        break;
      case '\'':
        out += "&#39;";
        break;
      default:
        out += c;
    }
  }
  return out;
}

const char* htmlStyleSheet() {
  return R"css(
.layer{position:absolute;left:0;top:0;width:390px;height:844px;overflow:hidden}
.layer.covered{display:none}
.layer.alert,.layer.sheet{background:rgba(0,0,0,.2)}
.layer.sheet>.v:first-child{top:54px!important;border-radius:10px 10px 0 0;overflow:hidden}
.v{position:absolute;box-sizing:border-box;margin:0;padding:0}
.v.f{position:relative;flex:none}
.stack{display:flex}
.stack.col{flex-direction:column}
.stack.row{flex-direction:row}
.l{display:flex;align-items:center;line-height:1.2;overflow:hidden}
.l .lt{display:-webkit-box;-webkit-box-orient:vertical;overflow:hidden;white-space:pre-line;
  overflow-wrap:anywhere;width:100%}
.l.one .lt{display:block;white-space:pre;text-overflow:ellipsis}
.b .bc{display:flex;align-items:center;justify-content:center;gap:4px;width:100%;height:100%;
  box-sizing:border-box;text-align:center;line-height:1.15}
.b .bi{max-width:100%;max-height:100%}
.b.disabled{opacity:.45}
[data-act]{cursor:pointer}
.img{position:absolute;left:0;top:0;width:100%;height:100%}
.mask{display:inline-block;flex:none;-webkit-mask-repeat:no-repeat;mask-repeat:no-repeat;
  -webkit-mask-position:center;mask-position:center}
.mask.fill{position:absolute;left:0;top:0;width:100%;height:100%}
.arcs{position:absolute;left:0;top:0;overflow:visible;pointer-events:none}
.sv{overflow:auto;scrollbar-width:none}
.sv.still{overflow:hidden}
.sv.paging{scroll-snap-type:x mandatory}
.sv>.spacer{position:absolute;left:0;top:0;visibility:hidden}
.sv>.content{position:absolute}
.sep>.content>.cell{box-shadow:inset 0 -.5px 0 rgba(60,60,67,.29)}
.tf{font-family:inherit;border:none;outline:none;background:transparent;padding:0 8px}
.tf.rounded{border:1px solid rgba(60,60,67,.29);border-radius:5px;background:#fff}
.tf.line{border:1px solid #000}
.tf::placeholder{color:var(--ph,rgba(60,60,67,.3))}
select.tf{appearance:none;-webkit-appearance:none}
.progress{overflow:hidden;border-radius:2px}
.progress .pb{height:100%;border-radius:2px}
.pages{display:flex;align-items:center;justify-content:center;gap:8px}
.pages .dot{width:7px;height:7px;border-radius:50%;display:block}
.activity{display:flex;align-items:center;justify-content:center}
.activity .spin{width:20px;height:20px;border:2.5px solid;border-radius:50%;display:block;
  animation:nk-spin .8s linear infinite}
@keyframes nk-spin{to{transform:rotate(360deg)}}
.toolbar{display:flex;align-items:center;gap:16px;padding:0 16px}
.toolbar .flex,.navrow .flex{flex:1}
.item{font-size:17px;cursor:default;display:inline-flex;align-items:center}
.item[data-act]{cursor:pointer}
.item.done{font-weight:600}
.navbar{position:absolute;left:0;top:0;width:390px;height:91px;box-sizing:border-box;
  padding-top:47px;z-index:1}
.navrow{display:flex;align-items:center;height:44px;padding:0 8px}
.navside{flex:1;display:flex;align-items:center;min-width:0}
.navside.right{justify-content:flex-end}
.navtitle{flex:none;max-width:220px;white-space:nowrap;overflow:hidden;text-overflow:ellipsis}
)css";
}

}  // namespace nutrition
