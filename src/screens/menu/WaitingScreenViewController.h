#pragma once
// The screen shown while the member's new menu is made: a bar that fills in ten steps of 0.6 s
// and three pulsing dots, then "¡Menú listo!", a word on alternatives and "Ver menú", which
// leads to the weekly menu unless the member came from the menu itself.
//
// The bar counts in single precision, as a phone's progress view does: ten steps of 0.1 reach
// 1.0. Were the sum to land just below, an eleventh step would end the wait.

#include <memory>
#include <vector>

#include "model/WaitScreen.h"
#include "screens/ScreenContext.h"
#include "ui/ThemedButtons.h"
#include "views/Button.h"
#include "views/Controls.h"
#include "views/ImageView.h"
#include "views/Label.h"
#include "views/Layer.h"
#include "views/StackView.h"
#include "views/Timer.h"
#include "views/ViewController.h"

namespace nutrition {

// Three dots that pulse one after the other (scale animations on their layers, each delayed
// by a third of the cycle). Made in code only.
class DotsAnimationView : public View {
 public:
  DotsAnimationView(Size dotSize, Color dotColor, double animationTime);

  [[nodiscard]] std::string_view kind() const override { return "DotsAnimationView"; }

  std::shared_ptr<View> dot1View;
  std::shared_ptr<View> dot2View;
  std::shared_ptr<View> dot3View;
  BasicAnimation dot1Animation;
  BasicAnimation dot2Animation;
  BasicAnimation dot3Animation;
  Size dotSize;
  Color dotColor;
  double animationTime;
};

class WaitingScreenViewController : public ViewController {
 public:
  static constexpr std::chrono::milliseconds kTickInterval{600};
  static constexpr float kStep = 0.1F;

  explicit WaitingScreenViewController(const ScreenContext& context) : context_(context) {}

  [[nodiscard]] std::string_view kind() const override { return "WaitingScreenViewController"; }

  std::vector<WaitScreen> waitingScreens;
  int currentScreen = 0;
  std::shared_ptr<ProgressView> progressView;
  std::shared_ptr<ImageView> imageView;
  std::shared_ptr<Label> textLabel;
  std::shared_ptr<Label> titleLabel;
  std::shared_ptr<CustomButton> button;
  std::shared_ptr<StackView> dotsView;
  std::shared_ptr<Button> closeButton;
  bool isFromMenu = true;

  void viewDidLoad() override;
  void viewWillAppear(bool animated) override;
  void viewDidDisappear(bool animated) override;
  void setFinishTexts();
  void didTapViewMenu();
  void didTapCloseButton();
  // Whether the bar's timer still runs.
  [[nodiscard]] bool isWaiting() const { return timer_.isValid(); }

 protected:
  void loadView() override;

 private:
  void tick();

  const ScreenContext& context_;
  Timer timer_;
};

}  // namespace nutrition
