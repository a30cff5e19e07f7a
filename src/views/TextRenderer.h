#pragma once
// Prints a view tree, or a screen with what is presented on it, as indented text: one line a
// view with its kind, outlet name, texts, colours (#RRGGBB, or #RRGGBBAA when not opaque),
// hidden and alpha, size and images; children below, indented. Looks left at their defaults
// are not printed, so a line says what the screen set. The command-line host shows screens
// this way and the snapshot tests compare screens against reviewed files of it.
//
// Rendering runs the tree's layout and drawing first, as a platform does before showing it.

#include <string>

namespace nutrition {

class View;
class ViewController;

std::string renderText(View& view);
// The screen (its navigation bar when it is a navigation controller, its view tree), then each
// screen presented on it, in turn.
std::string renderText(ViewController& controller);

}  // namespace nutrition
