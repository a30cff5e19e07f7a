#pragma once
// The home screen's fasting cards: `AyunoCell` while no fast runs, `AyunoInfoCell` while one
// does, with a small ring timer and a button that explains the current phase.

#include <memory>

#include "screens/ScreenContext.h"
#include "screens/fasting/AyunoTimerView.h"
#include "views/Button.h"
#include "views/CollectionView.h"
#include "views/ImageView.h"
#include "views/Label.h"
#include "views/StackView.h"

namespace nutrition {

class AyunoCell : public ReusableCell {
 public:
  explicit AyunoCell(const ScreenContext& context);

  [[nodiscard]] std::string_view kind() const override { return "AyunoCell"; }

  std::shared_ptr<Label> titleLabel;
  std::shared_ptr<ImageView> imgView;
  std::shared_ptr<View> veloView;
  std::shared_ptr<Button> button;

  void awakeFromNib() override;

 protected:
  const ScreenContext& context_;
};

class AyunoInfoCell : public AyunoCell {
 public:
  explicit AyunoInfoCell(const ScreenContext& context);

  [[nodiscard]] std::string_view kind() const override { return "AyunoInfoCell"; }

  std::shared_ptr<StackView> contentClock;

  // Replaces the timer view in `contentClock` with a new small one. The old view, and with it
  // its timer, goes away.
  void loadAyunoView();
  void showPhaseInfo();
};

}  // namespace nutrition
