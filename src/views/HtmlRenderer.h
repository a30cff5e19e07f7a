#pragma once
// Renders a view tree, or a screen with what is presented on it, as an HTML fragment that a
// browser shows at the phone's size in points: every view is an element placed at its frame
// (a stack's arranged views flow in a flex box), with its colours, corner radius, border,
// alpha, shadow and clipping; labels with their runs, buttons, images, text fields (a date
// wheel as <input type=date>, a picker wheel as <select>), progress bars, page controls,
// activity indicators, scroll, collection and table views with their cells, the arcs of shape
// layers as SVG, and a navigation controller's bar. Hidden views are left out with everything
// under them.
//
// Whatever a member can act on carries an id: controls and views with a tap action, the cells
// of collection and table views, text fields and wheels, bar items, scroll views, and the
// view of a page controller that turns pages on a swipe (in data-swipe). The
// rendering keeps what each id does, so a host that shows the page hands the member's input
// back with `apply(id, value)`, on the main queue. Ids are numbered in document order, so the
// same tree renders the same ids; the targets hold views weakly and do nothing once the view
// is gone.
//
// Rendering runs the tree's layout and drawing first, as a platform does before showing it.
// No screen is known here: a screen added to the core renders without changes.

#include <functional>
#include <map>
#include <string>

namespace nutrition {

class View;
class ViewController;
struct Image;

struct HtmlOptions {
  // The address of a bundle image; "images/<name>" when not given.
  std::function<std::string(const std::string& name)> bundleImageURL;
  // The address of image bytes (a dish photo); a data: URL when not given.
  std::function<std::string(const Image& image)> imageURL;
};

struct HtmlRendering {
  std::string html;
  // What the member's input on each id does. The value is empty for a tap; a text field takes
  // the typed text, a date wheel "yyyy-mm-dd", a picker wheel the row's index, a scroll view
  // "x,y", a page controller's view (its id in data-swipe) "forward" or "reverse". Each returns
  // false when the input is refused (the view is gone, hidden, disabled, or the value does not
  // fit).
  std::map<std::string, std::function<bool(const std::string& value)>> targets;

  // Runs the target `id` with `value`; false when there is no such id or it refused.
  [[nodiscard]] bool apply(const std::string& id, const std::string& value = {}) const;
};

HtmlRendering renderHtml(View& view, const HtmlOptions& options = {});
// The screen (with its navigation bar when it is a navigation controller), then each screen
// presented on it, each as a layer over the one below the size of the phone's screen.
HtmlRendering renderHtml(ViewController& controller, const HtmlOptions& options = {});

// The style sheet the fragments rely on (positioning, flow, label lines, spinners).
const char* htmlStyleSheet();

// Text made safe inside an element or a quoted attribute.
std::string escapeHtml(const std::string& text);

}  // namespace nutrition
