// The conversions and the display views of the core's view kinds (IosViews.h); the views
// that take typed text, wheel turns and scrolling are in IosInputViews.mm. Each view keeps the
// last state it showed, so a refresh that finds nothing changed sets no UIKit property.

#include "IosViews.h"

#include <array>
#include <exception>
#include <optional>
#include <string>

#include "IosPlatform.h"
#include "Marshal+Private.h"
#include "base/Log.h"

namespace nutrition::ios {
namespace {

std::string hex(const std::optional<Color>& color) {
  if (!color) return "-";
  return std::to_string(color->red) + "," + std::to_string(color->green) + "," +
         std::to_string(color->blue) + "," + std::to_string(color->alpha);
}

UIViewContentMode toContentMode(ContentMode mode) {
  switch (mode) {
    case ContentMode::scaleToFill:
      return UIViewContentModeScaleToFill;
    case ContentMode::scaleAspectFit:
      return UIViewContentModeScaleAspectFit;
    case ContentMode::scaleAspectFill:
      return UIViewContentModeScaleAspectFill;
    case ContentMode::center:
      return UIViewContentModeCenter;
  }
  return UIViewContentModeScaleAspectFit;
}

constexpr std::array<ControlState, 4> kStates{ControlState::normal, ControlState::highlighted,
                                              ControlState::disabled, ControlState::selected};
constexpr std::array<UIControlState, 4> kUIStates{UIControlStateNormal, UIControlStateHighlighted,
                                                  UIControlStateDisabled, UIControlStateSelected};

// Everything a button shows, per state as the core resolves it.
struct ButtonLook {
  std::array<std::optional<std::string>, 4> titles;
  std::array<std::optional<AttributedText>, 4> attributedTitles;
  std::array<std::optional<Color>, 4> titleColors;
  std::array<std::optional<ImageRef>, 4> images;
  Color tint;
  Font font;
  EdgeInsets content;
  EdgeInsets title;
  EdgeInsets image;
  bool operator==(const ButtonLook&) const = default;

  explicit ButtonLook(const Button& button)
      : tint(button.effectiveTintColor()),
        font(button.titleFont),
        content(button.contentEdgeInsets),
        title(button.titleEdgeInsets),
        image(button.imageEdgeInsets) {
    for (std::size_t i = 0; i < kStates.size(); ++i) {
      titles[i] = button.title(kStates[i]);
      attributedTitles[i] = button.attributedTitle(kStates[i]);
      titleColors[i] = button.titleColor(kStates[i]);
      images[i] = button.image(kStates[i]);
    }
  }
};

}  // namespace

UIColor* toUIColor(const Color& color) {
  return [UIColor colorWithRed:color.red / 255.0
                         green:color.green / 255.0
                          blue:color.blue / 255.0
                         alpha:color.alpha / 255.0];
}

UIColor* _Nullable toUIColor(const std::optional<Color>& color) {
  return color ? toUIColor(*color) : nil;
}

UIFont* toUIFont(const Font& font) {
  UIFontWeight weight = UIFontWeightRegular;
  switch (font.weight) {
    case FontWeight::regular:
      break;
    case FontWeight::medium:
      weight = UIFontWeightMedium;
      break;
    case FontWeight::semibold:
      weight = UIFontWeightSemibold;
      break;
    case FontWeight::bold:
      weight = UIFontWeightBold;
      break;
  }
  return [UIFont systemFontOfSize:font.size weight:weight];
}

UIEdgeInsets toUIEdgeInsets(const EdgeInsets& insets) {
  return UIEdgeInsetsMake(insets.top, insets.left, insets.bottom, insets.right);
}

NSTextAlignment toNSTextAlignment(TextAlignment alignment) {
  switch (alignment) {
    case TextAlignment::natural:
      return NSTextAlignmentNatural;
    case TextAlignment::left:
      return NSTextAlignmentLeft;
    case TextAlignment::center:
      return NSTextAlignmentCenter;
    case TextAlignment::right:
      return NSTextAlignmentRight;
  }
  return NSTextAlignmentNatural;
}

NSAttributedString* toAttributedString(const AttributedText& text, TextAlignment alignment) {
  NSMutableParagraphStyle* paragraph = [[NSMutableParagraphStyle alloc] init];
  paragraph.lineSpacing = text.lineSpacing;
  paragraph.alignment = toNSTextAlignment(alignment);
  NSMutableAttributedString* out = [[NSMutableAttributedString alloc] init];
  for (const auto& run : text.runs) {
    NSDictionary* attributes = @{
      NSFontAttributeName : toUIFont(run.font),
      NSForegroundColorAttributeName : toUIColor(run.color),
      NSParagraphStyleAttributeName : paragraph,
    };
    [out appendAttributedString:[[NSAttributedString alloc] initWithString:toNSString(run.text)
                                                                attributes:attributes]];
  }
  return out;
}

UIImage* _Nullable toUIImage(const ImageRef& image) {
  UIImage* decoded = nil;
  if (image.bytes) {
    const auto& bytes = image.bytes->data;
    decoded = [UIImage imageWithData:[NSData dataWithBytes:bytes.data() length:bytes.size()]];
  } else if (!image.name.empty()) {
    decoded = [UIImage imageNamed:toNSString(image.name)
                             inBundle:resourceBundle()
        compatibleWithTraitCollection:nil];
  }
  if (decoded != nil && image.isTemplate) {
    decoded = [decoded imageWithRenderingMode:UIImageRenderingModeAlwaysTemplate];
  }
  return decoded;
}

UIBarButtonItem* toBarButtonItem(const BarButtonItem& item, id _Nullable target,
                                 SEL _Nullable action) {
  if (item.system == BarButtonItem::System::flexibleSpace) {
    return [UIBarButtonItem flexibleSpaceItem];
  }
  const UIBarButtonItemStyle style = item.style == BarButtonItem::Style::done
                                         ? UIBarButtonItemStyleDone
                                         : UIBarButtonItemStylePlain;
  UIImage* image = item.title.empty() && item.image ? toUIImage(*item.image) : nil;
  UIBarButtonItem* out = image != nil
                             ? [[UIBarButtonItem alloc] initWithImage:image
                                                                style:style
                                                               target:target
                                                               action:action]
                             : [[UIBarButtonItem alloc] initWithTitle:toNSString(item.title)
                                                                style:style
                                                               target:target
                                                               action:action];
  out.tintColor = toUIColor(item.tintColor);
  return out;
}

std::string barItemSignature(const BarButtonItem& item) {
  std::string out = item.title;
  out += '|' + std::to_string(static_cast<int>(item.style)) +
         std::to_string(static_cast<int>(item.system)) + '|' + hex(item.tintColor) + '|';
  if (item.image) {
    out += item.image->name + (item.image->isTemplate ? "*" : "") +
           std::to_string(reinterpret_cast<std::uintptr_t>(item.image->bytes.get()));
  }
  return out + ';';
}

void forwardInput(const char* what, const std::function<void()>& input) {
  try {
    input();
  } catch (const std::exception& error) {
    log(LogLevel::error, std::string(what) + " failed: " + error.what());
  } catch (...) {
    log(LogLevel::error, std::string(what) + " failed");
  }
}

void showProgressView(UIProgressView* view, const ProgressView& progress) {
  const auto value = static_cast<float>(progress.progress());
  if (view.progress != value) {
    [view setProgress:value animated:progress.lastAnimationDuration > 0];
  }
  view.progressTintColor = toUIColor(progress.progressTintColor);
  view.trackTintColor = toUIColor(progress.trackTintColor);
}

void showPageControl(UIPageControl* view, const PageControl& pages) {
  // The core's page control takes no input: the screen moves it as its pages scroll.
  view.userInteractionEnabled = NO;
  view.numberOfPages = pages.numberOfPages;
  view.currentPage = pages.currentPage;
  view.hidesForSinglePage = pages.hidesForSinglePage;
  view.pageIndicatorTintColor = toUIColor(pages.pageIndicatorTintColor);
  view.currentPageIndicatorTintColor = toUIColor(pages.currentPageIndicatorTintColor);
}

void showActivityIndicator(UIActivityIndicatorView* view, const ActivityIndicator& indicator) {
  // The core hides a stopped indicator itself, through its hidden flag.
  view.hidesWhenStopped = NO;
  view.color = toUIColor(indicator.color);
  if (indicator.isAnimating() && !view.isAnimating) [view startAnimating];
  if (!indicator.isAnimating() && view.isAnimating) [view stopAnimating];
}

}  // namespace nutrition::ios

using nutrition::ios::forwardInput;
using nutrition::ios::toNSString;
using nutrition::ios::toUIColor;
using nutrition::ios::toUIFont;

@implementation NKAction {
  const char* _name;
  std::function<void()> _block;
}

- (instancetype)initWithName:(const char*)name block:(std::function<void()>)block {
  if ((self = [super init])) {
    _name = name;
    _block = std::move(block);
  }
  return self;
}

- (void)run:(id)sender {
  if (_block) forwardInput(_name, _block);
}

@end

@implementation NKLabel {
  BOOL _shown;
  std::string _text;
  std::optional<nutrition::AttributedText> _attributed;
  nutrition::Font _font;
  nutrition::Color _color;
  nutrition::TextAlignment _alignment;
  int _lines;
}

- (void)showLabel:(const nutrition::Label&)label {
  if (_shown && _text == label.text() && _attributed == label.attributedText() &&
      _font == label.font && _color == label.textColor && _alignment == label.textAlignment &&
      _lines == label.numberOfLines) {
    return;
  }
  _shown = YES;
  _text = label.text();
  _attributed = label.attributedText();
  _font = label.font;
  _color = label.textColor;
  _alignment = label.textAlignment;
  _lines = label.numberOfLines;
  self.numberOfLines = label.numberOfLines;
  if (_attributed) {
    self.attributedText = nutrition::ios::toAttributedString(*_attributed, _alignment);
  } else {
    self.text = toNSString(_text);
    self.font = toUIFont(_font);
    self.textColor = toUIColor(_color);
    self.textAlignment = nutrition::ios::toNSTextAlignment(_alignment);
  }
}

@end

@implementation NKImageView {
  BOOL _shown;
  std::optional<nutrition::ImageRef> _image;
}

- (void)showImageView:(const nutrition::ImageView&)imageView {
  self.contentMode = nutrition::ios::toContentMode(imageView.contentMode);
  if (_shown && _image == imageView.image) return;
  _shown = YES;
  _image = imageView.image;
  self.image = _image ? nutrition::ios::toUIImage(*_image) : nil;
}

@end

@implementation NKButton {
  std::weak_ptr<nutrition::Button> _source;
  std::optional<nutrition::ios::ButtonLook> _look;
}

- (instancetype)initWithFrame:(CGRect)frame {
  if ((self = [super initWithFrame:frame])) {
    [self addTarget:self action:@selector(tapped) forControlEvents:UIControlEventTouchUpInside];
  }
  return self;
}

- (void)showButton:(const std::shared_ptr<nutrition::Button>&)button {
  _source = button;
  self.enabled = button->isEnabled;
  self.selected = button->isSelected();
  nutrition::ios::ButtonLook look(*button);
  if (_look == look) return;
  for (std::size_t i = 0; i < nutrition::ios::kStates.size(); ++i) {
    const UIControlState state = nutrition::ios::kUIStates[i];
    // A state with no title colour shows the tint, as a system button does.
    [self setTitleColor:toUIColor(look.titleColors[i].value_or(look.tint)) forState:state];
    [self setTitle:nutrition::ios::toNullableNSString(look.titles[i]) forState:state];
    const auto& attributed = look.attributedTitles[i];
    [self setAttributedTitle:attributed ? nutrition::ios::toAttributedString(
                                              *attributed, nutrition::TextAlignment::center)
                                        : nil
                    forState:state];
    const auto& image = look.images[i];
    [self setImage:image ? nutrition::ios::toUIImage(*image) : nil forState:state];
  }
  self.titleLabel.font = toUIFont(look.font);
  // The per-state API above is what the core's buttons describe; a button configuration
  // would replace it, so the insets stay on the older properties.
#pragma clang diagnostic push
#pragma clang diagnostic ignored "-Wdeprecated-declarations"
  self.contentEdgeInsets = nutrition::ios::toUIEdgeInsets(look.content);
  self.titleEdgeInsets = nutrition::ios::toUIEdgeInsets(look.title);
  self.imageEdgeInsets = nutrition::ios::toUIEdgeInsets(look.image);
#pragma clang diagnostic pop
  _look = std::move(look);
}

- (void)tapped {
  if (auto button = _source.lock()) forwardInput("button tap", [&] { button->tap(); });
}

@end

@implementation NKControl {
  std::weak_ptr<nutrition::Control> _source;
}

- (instancetype)initWithFrame:(CGRect)frame {
  if ((self = [super initWithFrame:frame])) {
    [self addTarget:self action:@selector(tapped) forControlEvents:UIControlEventTouchUpInside];
  }
  return self;
}

- (void)showControl:(const std::shared_ptr<nutrition::Control>&)control {
  _source = control;
  self.enabled = control->isEnabled;
  self.selected = control->isSelected();
}

- (void)tapped {
  if (auto control = _source.lock()) forwardInput("control tap", [&] { control->tap(); });
}

@end

@implementation NKSegmentedControl {
  std::weak_ptr<nutrition::SegmentedControl> _source;
  std::vector<std::string> _segments;
}

- (instancetype)initWithFrame:(CGRect)frame {
  if ((self = [super initWithFrame:frame])) {
    [self addTarget:self action:@selector(picked) forControlEvents:UIControlEventValueChanged];
  }
  return self;
}

- (void)showSegments:(const std::shared_ptr<nutrition::SegmentedControl>&)control {
  _source = control;
  if (_segments != control->segments) {
    _segments = control->segments;
    [self removeAllSegments];
    for (std::size_t i = 0; i < _segments.size(); ++i) {
      [self insertSegmentWithTitle:toNSString(_segments[i]) atIndex:i animated:NO];
    }
  }
  const int selected = control->selectedSegmentIndex;
  self.selectedSegmentIndex = selected >= 0 && static_cast<std::size_t>(selected) < _segments.size()
                                  ? selected
                                  : UISegmentedControlNoSegment;
  self.selectedSegmentTintColor = toUIColor(control->selectedSegmentTintColor);
  self.enabled = control->isEnabled;
}

- (void)picked {
  const auto index = static_cast<int>(self.selectedSegmentIndex);
  if (auto control = _source.lock()) forwardInput("segment pick", [&] { control->pick(index); });
}

@end
