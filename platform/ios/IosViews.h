#pragma once
// The UIKit views that show the core's view kinds, and the conversions of the core's values to
// UIKit's. Each view class takes the state of its core view in one `show…:` call (cheap when
// nothing changed) and sends the member's input back to that core view: taps, typed text,
// wheel turns, scrolling. The core view is held weakly; input to a view that is gone is dropped.
//
// Everything here runs on the main thread, where the core lives.

#import <UIKit/UIKit.h>

#include <functional>
#include <memory>
#include <string>

#include "views/Button.h"
#include "views/CollectionView.h"
#include "views/Controls.h"
#include "views/ImageView.h"
#include "views/Label.h"
#include "views/Pickers.h"
#include "views/ScrollView.h"
#include "views/TextField.h"
#include "views/Toolbar.h"

NS_ASSUME_NONNULL_BEGIN

namespace nutrition::ios {

UIColor* toUIColor(const Color& color);
UIColor* _Nullable toUIColor(const std::optional<Color>& color);
UIFont* toUIFont(const Font& font);
UIEdgeInsets toUIEdgeInsets(const EdgeInsets& insets);
NSTextAlignment toNSTextAlignment(TextAlignment alignment);
NSAttributedString* toAttributedString(const AttributedText& text, TextAlignment alignment);
// A bundle image by name (the screen's scale picked by UIKit) or decoded bytes; a template
// image is drawn in its view's tint. Nil when the bundle has no such image or the bytes are not
// an image.
UIImage* _Nullable toUIImage(const ImageRef& image);
UIBarButtonItem* toBarButtonItem(const BarButtonItem& item, id _Nullable target,
                                 SEL _Nullable action);
// What a bar item shows, as one comparable string: bars rebuild their items only when it changes.
std::string barItemSignature(const BarButtonItem& item);

// Runs a member's input in the core. Nothing thrown inside reaches UIKit: it is logged.
void forwardInput(const char* what, const std::function<void()>& input);

}  // namespace nutrition::ios

// A target for UIKit's target-action: runs its block as the member's input.
@interface NKAction : NSObject
- (instancetype)initWithName:(const char*)name block:(std::function<void()>)block;
- (void)run:(id)sender;
@end

@interface NKLabel : UILabel
- (void)showLabel:(const nutrition::Label&)label;
@end

@interface NKImageView : UIImageView
- (void)showImageView:(const nutrition::ImageView&)imageView;
@end

@interface NKButton : UIButton
- (void)showButton:(const std::shared_ptr<nutrition::Button>&)button;
@end

// Any other control: a tap sends touch-up-inside.
@interface NKControl : UIControl
- (void)showControl:(const std::shared_ptr<nutrition::Control>&)control;
@end

@interface NKSegmentedControl : UISegmentedControl
- (void)showSegments:(const std::shared_ptr<nutrition::SegmentedControl>&)control;
@end

// Scroll, collection and table views: the content the core laid out, scrolled by the member
// (the core hears each scroll) or by the program (UIKit follows).
@interface NKScrollView : UIScrollView <UIScrollViewDelegate>
- (void)showScrollView:(const std::shared_ptr<nutrition::ScrollView>&)scrollView;
@end

@interface NKTextField : UITextField <UITextFieldDelegate>
// `inputView`, `accessory` and `leftView` are the UIKit views of the field's attached views.
- (void)showTextField:(const std::shared_ptr<nutrition::TextField>&)field
            inputView:(nullable UIView*)inputView
            accessory:(nullable UIView*)accessory
             leftView:(nullable UIView*)leftView;
@end

@interface NKDatePicker : UIDatePicker
- (void)showDatePicker:(const std::shared_ptr<nutrition::DatePicker>&)picker;
@end

@interface NKPickerView : UIPickerView <UIPickerViewDataSource, UIPickerViewDelegate>
- (void)showPickerView:(const std::shared_ptr<nutrition::PickerView>&)picker;
// Asks the core's data source again: before the wheel is shown.
- (void)reloadFromSource;
@end

@interface NKToolbar : UIToolbar
- (void)showToolbar:(const std::shared_ptr<nutrition::Toolbar>&)toolbar;
@end

namespace nutrition::ios {

// The status views take no input: they only show the core's state.
void showProgressView(UIProgressView* view, const ProgressView& progress);
void showPageControl(UIPageControl* view, const PageControl& pages);
void showActivityIndicator(UIActivityIndicatorView* view, const ActivityIndicator& indicator);

}  // namespace nutrition::ios

NS_ASSUME_NONNULL_END
