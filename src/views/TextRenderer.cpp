#include "views/TextRenderer.h"

#include <cmath>
#include <cstdio>

#include "views/AlertController.h"
#include "views/Button.h"
#include "views/CollectionView.h"
#include "views/Controls.h"
#include "views/ImageView.h"
#include "views/Label.h"
#include "views/NavigationController.h"
#include "views/Pickers.h"
#include "views/StackView.h"
#include "views/TextField.h"

namespace nutrition {
namespace {

std::string number(double value) {
  if (!std::isfinite(value)) return "nan";
  char text[32];
  std::snprintf(text, sizeof text, "%.4g", value);
  return text;
}

std::string hex(const Color& color) {
  char text[16];
  if (color.alpha == 255) {
    std::snprintf(text, sizeof text, "#%02X%02X%02X", color.red, color.green, color.blue);
  } else {
    std::snprintf(text, sizeof text, "#%02X%02X%02X%02X", color.red, color.green, color.blue,
                  color.alpha);
  }
  return text;
}

std::string quoted(const std::string& text) {
  std::string out = "\"";
  for (char c : text) {
    if (c == '\n') {
      out += "\\n";
    } else if (c == '"') {
      out += "\\\"";
    } else {
      out += c;
    }
  }
  return out + "\"";
}

std::string font(const Font& value) {
  static constexpr const char* kWeights[] = {"", " medium", " semibold", " bold"};
  return number(value.size) + kWeights[static_cast<int>(value.weight)];
}

std::string image(const ImageRef& value) {
  std::string out =
      value.bytes ? "<" + std::to_string(value.bytes->data.size()) + " bytes>" : value.name;
  return value.isTemplate ? out + " (template)" : out;
}

// A bar button: its title, or its image when it has no title.
std::string barItem(const BarButtonItem& item) {
  return item.title.empty() && item.image ? image(*item.image) : quoted(item.title);
}

std::string runs(const AttributedText& text) {
  std::string out = "[";
  for (const auto& run : text.runs) {
    if (out.size() > 1) out += ", ";
    out += quoted(run.text) + " " + font(run.font) + " " + hex(run.color);
  }
  out += "]";
  if (text.lineSpacing != 0) out += " lineSpacing=" + number(text.lineSpacing);
  return out;
}

class Printer final : public ViewVisitor {
 public:
  explicit Printer(std::string& out) : out_(out) {}

  void print(const View& view, int depth) {
    line_.clear();
    view.accept(*this);
    out_.append(static_cast<std::size_t>(depth) * 2, ' ');
    out_ += std::string(view.kind());
    if (!view.name.empty()) out_ += " " + view.name;
    out_ += line_;
    out_ += common(view);
    out_ += "\n";
    for (const auto& sublayer : view.layer().sublayers()) {
      if (const auto* shape = dynamic_cast<const ShapeLayer*>(sublayer.get())) {
        out_ += arcs(*shape, depth + 1);
      }
    }
    if (view.isHidden) return;
    for (const auto& child : view.subviews())
      print(*child, depth + 1);
  }

  void visit(const View&) override {}
  void visit(const Label& view) override {
    if (view.attributedText()) {
      add("text", runs(*view.attributedText()));
    } else {
      add("text", quoted(view.text()));
      add("font", font(view.font));
      add("color", hex(view.textColor));
    }
    if (view.numberOfLines != 1) add("lines", std::to_string(view.numberOfLines));
  }
  void visit(const Button& view) override {
    if (auto title = view.attributedTitle(view.state())) {
      add("title", runs(*title));
    } else if (auto plain = view.currentTitle()) {
      add("title", quoted(*plain));
    }
    if (auto color = view.currentTitleColor()) add("titleColor", hex(*color));
    if (auto shown = view.currentImage()) add("image", image(*shown));
    control(view);
  }
  void visit(const Control& view) override { control(view); }
  void visit(const ImageView& view) override {
    add("image", view.image ? image(*view.image) : "none");
  }
  void visit(const StackView& view) override {
    add("axis", view.axis == Axis::vertical ? "vertical" : "horizontal");
    if (view.spacing != 0) add("spacing", number(view.spacing));
  }
  void visit(const ScrollView& view) override {
    if (view.contentOffset() != Point{}) {
      add("offset", number(view.contentOffset().x) + "," + number(view.contentOffset().y));
    }
  }
  void visit(const TextField& view) override {
    add("text", quoted(view.text));
    if (view.attributedPlaceholder) {
      add("placeholder", runs(*view.attributedPlaceholder));
    } else if (!view.placeholder.empty()) {
      add("placeholder", quoted(view.placeholder));
    }
    if (view.inputView) add("input", std::string(view.inputView->kind()));
    if (view.inputAccessoryView) {
      std::string items;
      for (const auto& item : view.inputAccessoryView->items) {
        if (!item.title.empty()) items += (items.empty() ? "" : "|") + item.title;
      }
      add("toolbar", quoted(items));
    }
    control(view);
  }
  void visit(const ProgressView& view) override {
    add("progress", number(view.progress()));
    if (view.progressTintColor) add("progressTint", hex(*view.progressTintColor));
  }
  void visit(const PageControl& view) override {
    add("page", std::to_string(view.currentPage) + "/" + std::to_string(view.numberOfPages));
  }
  void visit(const ActivityIndicator& view) override {
    add("animating", view.isAnimating() ? "yes" : "no");
  }

 private:
  void add(const std::string& key, const std::string& value) { line_ += " " + key + "=" + value; }
  void control(const Control& view) {
    if (view.isSelected()) line_ += " selected";
    if (!view.isEnabled) line_ += " disabled";
  }

  static std::string common(const View& view) {
    std::string out;
    auto put = [&](const std::string& key, const std::string& value) {
      out += " " + key + "=" + value;
    };
    const Size size = view.frame().size;
    if (size != Size{}) put("size", number(size.width) + "x" + number(size.height));
    if (view.backgroundColor) put("bg", hex(*view.backgroundColor));
    if (view.tintColor()) put("tint", hex(*view.tintColor()));
    if (view.cornerRadius != 0) put("radius", number(view.cornerRadius));
    if (view.borderWidth != 0) {
      put("border",
          number(view.borderWidth) + (view.borderColor ? " " + hex(*view.borderColor) : ""));
    }
    if (view.alpha != 1) put("alpha", number(view.alpha));
    if (view.isHidden) out += " hidden";
    return out;
  }

  static std::string arcs(const ShapeLayer& shape, int depth) {
    std::string out;
    for (const auto& arc : shape.path) {
      constexpr double kDegrees = 180.0 / 3.14159265358979323846;
      out.append(static_cast<std::size_t>(depth) * 2, ' ');
      out += "Arc center=" + number(arc.center.x) + "," + number(arc.center.y) +
             " r=" + number(arc.radius) + " from " + number(arc.startAngle * kDegrees) + "° to " +
             number(arc.endAngle * kDegrees) + "°" +
             (arc.clockwise ? " clockwise" : " anticlockwise");
      if (shape.strokeColor) out += " stroke=" + hex(*shape.strokeColor);
      out += " width=" + number(shape.lineWidth);
      if (shape.strokeEnd != 1) out += " strokeEnd=" + number(shape.strokeEnd);
      out += "\n";
    }
    return out;
  }

  std::string& out_;
  std::string line_;
};

void renderController(ViewController& controller, int depth, std::string& out) {
  const std::string indent(static_cast<std::size_t>(depth) * 2, ' ');
  out += indent + std::string(controller.kind());
  if (!controller.title.empty()) out += " title=" + quoted(controller.title);
  out += "\n";
  if (auto* navigation = dynamic_cast<NavigationController*>(&controller)) {
    const auto& bar = navigation->navigationBar;
    out += indent + "  NavigationBar";
    if (bar.barTintColor) out += " bar=" + hex(*bar.barTintColor);
    if (bar.tintColor) out += " tint=" + hex(*bar.tintColor);
    if (bar.titleColor) out += " titleColor=" + hex(*bar.titleColor);
    out += " titleFont=" + font(bar.titleFont);
    if (ViewController* top = navigation->topViewController()) {
      const auto& item = top->navigationItem;
      if (!item.title.empty() || !top->title.empty()) {
        out += " title=" + quoted(item.title.empty() ? top->title : item.title);
      }
      if (item.leftBarButtonItem) out += " left=" + barItem(*item.leftBarButtonItem);
      if (item.rightBarButtonItem) out += " right=" + barItem(*item.rightBarButtonItem);
      const auto& stack = navigation->viewControllers();
      if (stack.size() > 1 && !item.hidesBackButton) {
        const auto& below = stack[stack.size() - 2]->navigationItem.backBarButtonItem;
        out += " back=" + quoted(below ? below->title : "<");
      }
    }
    out += "\n";
  }
  View& root = controller.view();
  root.prepareForDisplay();
  Printer printer(out);
  printer.print(root, depth + 1);
  if (ViewController* presented = controller.presentedViewController()) {
    out += indent + "presented" + (presented->wasPresentedAnimated() ? " (animated)" : "") + ":\n";
    renderController(*presented, depth + 1, out);
  }
}

}  // namespace

std::string renderText(View& view) {
  view.prepareForDisplay();
  std::string out;
  Printer(out).print(view, 0);
  return out;
}

std::string renderText(ViewController& controller) {
  std::string out;
  renderController(controller, 0, out);
  return out;
}

}  // namespace nutrition
