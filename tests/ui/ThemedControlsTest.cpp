#include <gtest/gtest.h>

#include "UIFixture.h"
#include "support/Snapshot.h"
#include "ui/CustomNavViewController.h"
#include "ui/ThemedButtons.h"
#include "ui/ThemedFields.h"
#include "ui/TintViews.h"
#include "views/SystemColors.h"
#include "views/TextRenderer.h"

namespace nutrition {
namespace {

using ThemedControls = test::UIFixture;

const Color kHostGreen = Color::fromHex("2E7D32");

TEST_F(ThemedControls, EachTakesTheHostColourAtItsOwnMoments) {
  auto custom = makeView<CustomButton>(ui_);
  auto login = makeView<LoginButton>(ui_);
  auto tintButton = makeView<TintButton>(ui_);
  auto background = makeView<BackgroundTintButton>(ui_);
  auto image = makeView<TintImage>(ui_);
  auto label = makeView<TintLabel>(ui_);
  auto view = makeView<TintView>(ui_);
  auto segments = makeView<OrvaneSegmentedControl>(ui_);
  auto round = makeView<RoundButton>(ui_);
  const Color original = config_.primaryColor;
  EXPECT_EQ(custom->currentTitleColor(), original);  // waking
  EXPECT_EQ(tintButton->tintColor(), original);
  EXPECT_EQ(view->backgroundColor, original);
  EXPECT_FALSE(round->backgroundColor.has_value());  // only drawing paints it

  View parent(Rect{{}, {390, 200}});
  for (const std::shared_ptr<View>& child : std::vector<std::shared_ptr<View>>{
           custom, login, tintButton, background, image, label, view, segments, round}) {
    child->setSize({120, 44});
    parent.addSubview(child);
  }
  config_.primaryColor = kHostGreen;
  parent.prepareForDisplay();  // layout, then draw
  // Drawing and layout pick the new colour up; a look taken only when waking keeps the old.
  EXPECT_EQ(custom->currentTitleColor(), original);
  EXPECT_EQ(login->backgroundColor, kHostGreen);
  EXPECT_EQ(tintButton->tintColor(), kHostGreen);
  EXPECT_EQ(background->backgroundColor, kHostGreen);
  EXPECT_EQ(image->tintColor(), kHostGreen);
  EXPECT_EQ(label->textColor, kHostGreen);
  EXPECT_EQ(view->backgroundColor, kHostGreen);
  EXPECT_EQ(segments->selectedSegmentTintColor, kHostGreen);
  EXPECT_EQ(round->backgroundColor, kHostGreen);
  // Rounded controls follow their height at every layout.
  EXPECT_EQ(custom->cornerRadius, 22);
  custom->setSize({120, 60});
  parent.prepareForDisplay();
  EXPECT_EQ(custom->cornerRadius, 30);
  EXPECT_EQ(login->cornerRadius, 22);
}

TEST_F(ThemedControls, SelectionLooks) {
  auto border = makeView<BorderButton>(ui_);
  EXPECT_EQ(border->borderWidth, 1);
  EXPECT_EQ(border->backgroundColor, systemColors::clear);
  border->setSelected(true);
  EXPECT_EQ(border->backgroundColor, (Color{255, 255, 255, 178}));

  auto rate = makeView<RateButton>(ui_);
  EXPECT_EQ(rate->tintColor(), systemColors::tertiaryLabel);
  rate->setSelected(true);
  EXPECT_EQ(rate->tintColor(), config_.primaryColor);

  auto profile = makeView<ProfileButton>(ui_);
  profile->setSelected(true);
  EXPECT_EQ(profile->tintColor(), systemColors::label);
  profile->setSelected(false);
  EXPECT_EQ(profile->tintColor(), systemColors::tertiaryLabel);

  auto training = makeView<TrainingProfileButton>(ui_);
  EXPECT_EQ(training->cornerRadius, 17);
  EXPECT_EQ(training->tintColor(), systemColors::white);
  training->configDeselected();
  EXPECT_EQ(training->borderColor, systemColors::systemGray);
  EXPECT_EQ(training->currentTitleColor(), systemColors::tertiaryLabel);
  training->configSelected();
  EXPECT_TRUE(training->isSelected());
  EXPECT_EQ(training->currentTitleColor(), config_.primaryColor);
  training->backgroundColor = systemColors::black;
  training->draw();
  EXPECT_EQ(training->backgroundColor, systemColors::systemBackground);
}

TEST_F(ThemedControls, FieldsKeepTheirShapeAtAnySize) {
  auto field = makeView<RoundField>(ui_);
  field->setSize({300, 40});
  field->prepareForDisplay();
  EXPECT_EQ(field->cornerRadius, 20);
  EXPECT_EQ(field->backgroundColor, systemColors::secondarySystemBackground);
  ASSERT_NE(field->leftView, nullptr);
  EXPECT_EQ(field->leftView->frame().width(), 16);
  EXPECT_EQ(field->tintColor(), config_.primaryColor);

  auto underlined = makeView<UnderlinedtextField>();
  underlined->setSize({300, 48});
  underlined->prepareForDisplay();
  EXPECT_EQ(underlined->underline->frame(), (Rect{{0, 47}, {300, 1}}));
  EXPECT_EQ(underlined->leftView->frame().size, (Size{12, 35}));
  EXPECT_EQ(underlined->backgroundColor, systemColors::clear);
}

TEST_F(ThemedControls, NavigationTakesTheHostLookAndReappliesItOnDarkModeChange) {
  config_.navigationBarColor = Color::fromHex("112233");
  config_.navigationTitle = "Mi menú";
  auto screen = std::make_shared<OrvaneViewController>(ui_);
  auto navigation = std::make_shared<CustomNavViewController>(ui_, screen);
  root_->present(navigation, false);
  EXPECT_EQ(navigation->navigationBar.barTintColor, Color::fromHex("112233"));
  EXPECT_EQ(navigation->navigationBar.tintColor, systemColors::label);  // none set
  EXPECT_EQ(navigation->navigationBar.titleFont.size, 22);
  EXPECT_EQ(screen->navigationItem.title, "Mi menú");

  config_.navigationTintColor = Color::fromHex("FFFFFF");
  notifications_.post(CustomNavViewController::kDarkModeChange);
  EXPECT_EQ(navigation->navigationBar.tintColor, systemColors::white);

  navigation->pushViewController(std::make_shared<OrvaneViewController>(ui_), false);
  test::expectSnapshot("CustomNavViewController_pushed", renderText(*navigation));
  ASSERT_TRUE(screen->navigationItem.backBarButtonItem.has_value());
  EXPECT_EQ(screen->navigationItem.backBarButtonItem->title, "Cerrar");

  // A navigation controller that is gone no longer listens.
  root_->dismiss(false);
  platform_.queue().runUntilIdle();
  navigation.reset();
  EXPECT_EQ(notifications_.observerCount(CustomNavViewController::kDarkModeChange), 0u);
}

}  // namespace
}  // namespace nutrition
