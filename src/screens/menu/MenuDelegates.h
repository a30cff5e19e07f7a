#pragma once
// How the menu screens hand over to the screen that shows them: the home screen presents the
// intake preview a card asks for and the full intake the preview leads to, and hears when a
// favourite changed on an intake screen.

#include <cstddef>

#include "model/NutritionIntake.h"
#include "views/ViewController.h"

namespace nutrition {

class IntakePreviewDelegate {
 public:
  // The screen the preview is presented on.
  virtual ViewController& previewPresenter() = 0;
  // Presents the full intake, full-screen and animated.
  virtual void showIntake(const NutritionIntake& intake) = 0;

 protected:
  ~IntakePreviewDelegate() = default;
};

// What a card needs of the screen that shows it: no more than the preview's delegate.
class IntakeCellDelegate : public IntakePreviewDelegate {
 protected:
  ~IntakeCellDelegate() = default;
};

class IntakeViewDelegate {
 public:
  // The member added or removed a favourite on the intake screen.
  virtual void favoritesDidChange() = 0;

 protected:
  ~IntakeViewDelegate() = default;
};

// The recipe pages' hook into the intake screen that pages them: fades its floating buttons,
// and hears what changed on a page.
class RecetaScrollDelegate {
 public:
  // Fades the floating buttons in or out over a short animation.
  virtual void animateButtons(bool show) = 0;
  // The page at `pageIndex` now shows `dish`, an alternative the backend gave.
  virtual void dishDidChange(std::size_t pageIndex, const NutritionDish& dish) = 0;
  // The page's dish was added to or removed from the favourites.
  virtual void favoriteDidChange(bool isFavorite) = 0;

 protected:
  ~RecetaScrollDelegate() = default;
};

}  // namespace nutrition
