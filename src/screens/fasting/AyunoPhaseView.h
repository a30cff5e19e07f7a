#pragma once
// One phase of the fast as a row of the fasting screen: bullet, name, hours text and icon, in
// the host's colour once the fast has reached the phase and greyed before. Its button opens
// the phase's pop-up on the top screen.

#include <memory>
#include <optional>

#include "model/AyunoPhase.h"
#include "screens/ScreenContext.h"
#include "ui/ThemedButtons.h"
#include "ui/TintViews.h"
#include "views/ImageView.h"
#include "views/Label.h"

namespace nutrition {

class AyunoPhaseView : public View {
 public:
  static constexpr double kHeight = 64;

  AyunoPhaseView(const ScreenContext& context, std::optional<AyunoPhase> phase, bool isEnabled);

  [[nodiscard]] std::string_view kind() const override { return "AyunoPhaseView"; }

  std::shared_ptr<View> contentView;
  std::shared_ptr<CustomButton> button;
  std::shared_ptr<Label> timeHelp;
  std::shared_ptr<Label> titleLabel;
  std::shared_ptr<ImageView> icon;
  std::shared_ptr<TintView> bullet;
  std::optional<AyunoPhase> phase;
  bool isEnabled;

  void loadUI();
  void configColor();
  void showPhaseAlert();

 private:
  const ScreenContext& context_;
};

}  // namespace nutrition
