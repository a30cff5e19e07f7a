#pragma once
// The fasting screen. Opening it starts a fast when none is running (and schedules the
// end-of-fast notification); it shows the scheme, the ring timer, when the fast started and
// ends, and the phases the scheme reaches, lit up to the elapsed hour. "Terminar ayuno" ends
// the fast and closes the screen.
//
// The phase rows are added on every appearance, after those of earlier appearances, as the
// product has always done.

#include <memory>
#include <vector>

#include "screens/ScreenContext.h"
#include "screens/fasting/AyunoTimerView.h"
#include "ui/ThemedButtons.h"
#include "views/Label.h"
#include "views/ScrollView.h"
#include "views/StackView.h"
#include "views/ViewController.h"

namespace nutrition {

class AyunoViewController : public ViewController {
 public:
  explicit AyunoViewController(const ScreenContext& context) : context_(context) {}

  [[nodiscard]] std::string_view kind() const override { return "AyunoViewController"; }

  std::shared_ptr<AyunoTimerView> ayunoView;
  std::shared_ptr<Label> startTime;
  std::shared_ptr<Label> finishTime;
  std::shared_ptr<Label> ayunoTitle;
  std::shared_ptr<Label> estasAyunando;
  std::shared_ptr<Label> startTitle;
  std::shared_ptr<Label> endTitle;
  std::shared_ptr<CustomButton> finishButton;
  std::shared_ptr<Label> faseAyunoTitle;
  std::shared_ptr<View> contentTimes;
  std::vector<std::shared_ptr<View>> points;
  std::shared_ptr<StackView> phasesView;

  void viewDidLoad() override;
  void viewWillAppear(bool animated) override;
  void finishAyuno();

 protected:
  void loadView() override;

 private:
  std::shared_ptr<View> timeColumn(const char* titleName, const char* timeName,
                                   std::shared_ptr<Label>& titleOutlet,
                                   std::shared_ptr<Label>& timeOutlet);
  void fitContent();

  const ScreenContext& context_;
  std::shared_ptr<ScrollView> scroll_;
  std::shared_ptr<StackView> content_;
};

// The scheme as the fasting screen names it: "12/12" for 1, "14/10" for 2, "16/8" otherwise.
const char* fastingSchemeLabel(const NutritionUser* member);
// The scheme's length in whole hours: 12, 14 or 16; 0 without a member or a scheme.
std::int64_t fastingSchemeHours(const NutritionUser* member);

}  // namespace nutrition
