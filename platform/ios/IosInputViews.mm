// The UIKit views that take the member's typed text, wheel turns and scrolling (IosViews.h).

#include "IosViews.h"

#include <optional>
#include <string>
#include <vector>

#include "Marshal+Private.h"

namespace nutrition::ios {
namespace {

struct FieldLook {
  Font font;
  Color textColor;
  TextAlignment alignment;
  KeyboardType keyboard;
  BorderStyle border;
  std::string placeholder;
  std::optional<AttributedText> attributedPlaceholder;
  bool operator==(const FieldLook&) const = default;
};

std::vector<int> rowCounts(const PickerView& picker) {
  std::vector<int> counts;
  if (picker.dataSource == nullptr) return counts;
  for (int component = 0, components = picker.dataSource->numberOfComponents(picker);
       component < components; ++component) {
    counts.push_back(picker.dataSource->numberOfRows(picker, component));
  }
  return counts;
}

}  // namespace
}  // namespace nutrition::ios

using nutrition::ios::forwardInput;
using nutrition::ios::toNSString;
using nutrition::ios::toUIColor;
using nutrition::ios::toUIFont;

@implementation NKScrollView {
  std::weak_ptr<nutrition::ScrollView> _source;
  BOOL _shown;
  // The offset both sides agree on: a change on one side is passed to the other once.
  nutrition::Point _mirrored;
  // Set while the core's state is shown: UIKit's callbacks then are not the member's.
  BOOL _showing;
}

- (instancetype)initWithFrame:(CGRect)frame {
  if ((self = [super initWithFrame:frame])) {
    self.delegate = self;
    self.contentInsetAdjustmentBehavior = UIScrollViewContentInsetAdjustmentNever;
  }
  return self;
}

- (void)showScrollView:(const std::shared_ptr<nutrition::ScrollView>&)scrollView {
  _source = scrollView;
  _showing = YES;
  const CGSize size = CGSizeMake(scrollView->contentSize.width, scrollView->contentSize.height);
  if (!CGSizeEqualToSize(self.contentSize, size)) self.contentSize = size;
  const UIEdgeInsets inset = nutrition::ios::toUIEdgeInsets(scrollView->contentInset);
  if (!UIEdgeInsetsEqualToEdgeInsets(self.contentInset, inset)) self.contentInset = inset;
  self.scrollEnabled = scrollView->isScrollEnabled;
  self.pagingEnabled = scrollView->isPagingEnabled;
  self.showsVerticalScrollIndicator = scrollView->showsVerticalScrollIndicator;
  self.showsHorizontalScrollIndicator = scrollView->showsHorizontalScrollIndicator;
  const nutrition::Point offset = scrollView->contentOffset();
  if (!_shown || offset != _mirrored) {
    _mirrored = offset;
    [self setContentOffset:CGPointMake(offset.x, offset.y)
                  animated:_shown && scrollView->lastAnimationDuration > 0];
  }
  _shown = YES;
  _showing = NO;
}

- (void)scrollViewDidScroll:(UIScrollView*)scrollView {
  // Only the member's scrolling goes to the core; the program's came from it.
  if (_showing || !(self.isTracking || self.isDragging || self.isDecelerating)) return;
  const nutrition::Point offset{scrollView.contentOffset.x, scrollView.contentOffset.y};
  if (offset == _mirrored) return;
  _mirrored = offset;
  if (auto source = _source.lock()) {
    forwardInput("scroll", [&] { source->setContentOffset(offset); });
  }
}

@end

@implementation NKTextField {
  std::weak_ptr<nutrition::TextField> _source;
  std::optional<nutrition::ios::FieldLook> _look;
  // The last focus change asked of UIKit (the core's focus and whether in a window), so that a
  // change UIKit refuses is asked again only when something changed.
  int _focusAsked;
}

- (instancetype)initWithFrame:(CGRect)frame {
  if ((self = [super initWithFrame:frame])) {
    self.delegate = self;
    _focusAsked = -1;
    [self addTarget:self action:@selector(edited) forControlEvents:UIControlEventEditingChanged];
  }
  return self;
}

- (void)showTextField:(const std::shared_ptr<nutrition::TextField>&)field
            inputView:(UIView*)inputView
            accessory:(UIView*)accessory
             leftView:(UIView*)leftView {
  _source = field;
  NSString* text = toNSString(field->text);
  if (self.markedTextRange == nil && ![self.text isEqualToString:text]) self.text = text;
  nutrition::ios::FieldLook look{
      field->font,        field->textColor,   field->textAlignment,        field->keyboardType,
      field->borderStyle, field->placeholder, field->attributedPlaceholder};
  if (_look != look) {
    self.font = toUIFont(look.font);
    self.textColor = toUIColor(look.textColor);
    self.textAlignment = nutrition::ios::toNSTextAlignment(look.alignment);
    self.keyboardType = [&] {
      switch (look.keyboard) {
        case nutrition::KeyboardType::standard:
          return UIKeyboardTypeDefault;
        case nutrition::KeyboardType::numberPad:
          return UIKeyboardTypeNumberPad;
        case nutrition::KeyboardType::decimalPad:
          return UIKeyboardTypeDecimalPad;
        case nutrition::KeyboardType::email:
          return UIKeyboardTypeEmailAddress;
      }
      return UIKeyboardTypeDefault;
    }();
    self.borderStyle = look.border == nutrition::BorderStyle::roundedRect
                           ? UITextBorderStyleRoundedRect
                       : look.border == nutrition::BorderStyle::line ? UITextBorderStyleLine
                                                                     : UITextBorderStyleNone;
    if (look.attributedPlaceholder) {
      self.attributedPlaceholder =
          nutrition::ios::toAttributedString(*look.attributedPlaceholder, look.alignment);
    } else {
      self.placeholder = toNSString(look.placeholder);
    }
    _look = std::move(look);
  }
  self.enabled = field->isEnabled;
  const BOOL attachedChanged = self.inputView != inputView || self.inputAccessoryView != accessory;
  self.inputView = inputView;
  self.inputAccessoryView = accessory;
  if (attachedChanged && self.isFirstResponder) [self reloadInputViews];
  if (self.leftView != leftView) self.leftView = leftView;
  self.leftViewMode = leftView != nil ? UITextFieldViewModeAlways : UITextFieldViewModeNever;
  // The core decides who edits: a screen may start or end editing from code. Changing UIKit's
  // first responder tells other fields' delegates, so it waits until the tree is shown.
  const int ask = (field->isFirstResponder() ? 2 : 0) + (self.window != nil ? 1 : 0);
  if (field->isFirstResponder() == static_cast<bool>(self.isFirstResponder)) {
    _focusAsked = -1;
  } else if (ask != _focusAsked) {
    _focusAsked = ask;
    __weak NKTextField* weakSelf = self;
    dispatch_async(dispatch_get_main_queue(), ^{
      [weakSelf followCoreFocus];
    });
  }
}

- (void)followCoreFocus {
  auto field = _source.lock();
  if (!field) return;
  if (field->isFirstResponder() && !self.isFirstResponder && self.window != nil) {
    [self becomeFirstResponder];
  } else if (!field->isFirstResponder() && self.isFirstResponder) {
    [self resignFirstResponder];
  }
}

- (void)edited {
  auto field = _source.lock();
  if (!field) return;
  std::string typed = nutrition::ios::toString(self.text);
  forwardInput("typing", [&] { field->type(std::move(typed)); });
}

- (BOOL)textFieldShouldBeginEditing:(UITextField*)textField {
  if ([textField.inputView isKindOfClass:[NKPickerView class]]) {
    [static_cast<NKPickerView*>(textField.inputView) reloadFromSource];
  }
  return YES;
}

- (void)textFieldDidBeginEditing:(UITextField*)textField {
  if (auto field = _source.lock()) {
    forwardInput("editing", [&] { field->becomeFirstResponder(); });
  }
}

- (void)textFieldDidEndEditing:(UITextField*)textField {
  if (auto field = _source.lock()) {
    forwardInput("editing", [&] { field->resignFirstResponder(); });
  }
}

- (BOOL)textFieldShouldReturn:(UITextField*)textField {
  [textField resignFirstResponder];
  return NO;
}

@end

@implementation NKDatePicker {
  std::weak_ptr<nutrition::DatePicker> _source;
  BOOL _shown;
  nutrition::Date _mirrored;
}

- (instancetype)initWithFrame:(CGRect)frame {
  if ((self = [super initWithFrame:frame])) {
    [self addTarget:self action:@selector(picked) forControlEvents:UIControlEventValueChanged];
  }
  return self;
}

- (void)showDatePicker:(const std::shared_ptr<nutrition::DatePicker>&)picker {
  _source = picker;
  switch (picker->datePickerMode) {
    case nutrition::DatePicker::Mode::time:
      self.datePickerMode = UIDatePickerModeTime;
      break;
    case nutrition::DatePicker::Mode::date:
      self.datePickerMode = UIDatePickerModeDate;
      break;
    case nutrition::DatePicker::Mode::dateAndTime:
      self.datePickerMode = UIDatePickerModeDateAndTime;
      break;
  }
  const UIDatePickerStyle style =
      picker->prefersWheels ? UIDatePickerStyleWheels : UIDatePickerStyleAutomatic;
  if (self.preferredDatePickerStyle != style) self.preferredDatePickerStyle = style;
  self.minimumDate = nutrition::ios::toNSDate(picker->minimumDate);
  self.maximumDate = nutrition::ios::toNSDate(picker->maximumDate);
  NSString* locale = toNSString(picker->localeIdentifier);
  if (locale.length > 0 && ![self.locale.localeIdentifier isEqualToString:locale]) {
    self.locale = [NSLocale localeWithLocaleIdentifier:locale];
  }
  if (_shown && picker->date() == _mirrored) return;
  _shown = YES;
  _mirrored = picker->date();
  if (NSDate* date = nutrition::ios::toNSDate(_mirrored)) self.date = date;
}

- (void)picked {
  auto picker = _source.lock();
  const auto date = nutrition::ios::toDate(self.date);
  if (!picker || !date) return;
  forwardInput("date pick", [&] { picker->pick(*date); });
  // The core clamps to its limits; the wheel shows what it kept at the next refresh.
  _mirrored = *date;
}

@end

@implementation NKPickerView {
  std::weak_ptr<nutrition::PickerView> _source;
  std::vector<int> _rows;
}

- (instancetype)initWithFrame:(CGRect)frame {
  if ((self = [super initWithFrame:frame])) {
    self.dataSource = self;
    self.delegate = self;
  }
  return self;
}

- (void)showPickerView:(const std::shared_ptr<nutrition::PickerView>&)picker {
  _source = picker;
  // Titles are asked only when the rows change or the wheel is about to show.
  if (nutrition::ios::rowCounts(*picker) != _rows) [self reloadFromSource];
  [self showSelection:*picker];
}

- (void)reloadFromSource {
  auto picker = _source.lock();
  if (!picker) return;
  _rows = nutrition::ios::rowCounts(*picker);
  [self reloadAllComponents];
  [self showSelection:*picker];
}

- (void)showSelection:(const nutrition::PickerView&)picker {
  for (std::size_t component = 0; component < _rows.size(); ++component) {
    const int row = picker.selectedRow(static_cast<int>(component));
    const auto index = static_cast<NSInteger>(component);
    if (row >= 0 && row < _rows[component] && [self selectedRowInComponent:index] != row) {
      [self selectRow:row inComponent:index animated:NO];
    }
  }
}

- (NSInteger)numberOfComponentsInPickerView:(UIPickerView*)pickerView {
  return static_cast<NSInteger>(_rows.size());
}

- (NSInteger)pickerView:(UIPickerView*)pickerView numberOfRowsInComponent:(NSInteger)component {
  return component >= 0 && static_cast<std::size_t>(component) < _rows.size()
             ? _rows[static_cast<std::size_t>(component)]
             : 0;
}

- (NSString*)pickerView:(UIPickerView*)pickerView
            titleForRow:(NSInteger)row
           forComponent:(NSInteger)component {
  auto picker = _source.lock();
  if (!picker || picker->dataSource == nullptr) return @"";
  return toNSString(
      picker->dataSource->titleForRow(*picker, static_cast<int>(row), static_cast<int>(component)));
}

- (void)pickerView:(UIPickerView*)pickerView
      didSelectRow:(NSInteger)row
       inComponent:(NSInteger)component {
  if (auto picker = _source.lock()) {
    forwardInput("wheel pick",
                 [&] { picker->pick(static_cast<int>(row), static_cast<int>(component)); });
  }
}

@end

@implementation NKToolbar {
  std::weak_ptr<nutrition::Toolbar> _source;
  std::string _signature;
}

- (void)showToolbar:(const std::shared_ptr<nutrition::Toolbar>&)toolbar {
  _source = toolbar;
  self.barTintColor = toUIColor(toolbar->barTintColor);
  std::string signature;
  for (const auto& item : toolbar->items)
    signature += nutrition::ios::barItemSignature(item);
  if (signature == _signature && self.items.count == toolbar->items.size()) return;
  _signature = std::move(signature);
  NSMutableArray<UIBarButtonItem*>* items = [NSMutableArray array];
  for (std::size_t i = 0; i < toolbar->items.size(); ++i) {
    UIBarButtonItem* item =
        nutrition::ios::toBarButtonItem(toolbar->items[i], self, @selector(tapped:));
    item.tag = static_cast<NSInteger>(i);
    [items addObject:item];
  }
  [self setItems:items animated:NO];
}

- (void)tapped:(UIBarButtonItem*)sender {
  auto toolbar = _source.lock();
  if (!toolbar || sender.tag < 0 || static_cast<std::size_t>(sender.tag) >= toolbar->items.size()) {
    return;
  }
  // A copy: the action may replace the items.
  auto action = toolbar->items[static_cast<std::size_t>(sender.tag)].action;
  if (action) forwardInput("toolbar tap", action);
}

@end
