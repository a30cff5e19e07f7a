#include <gtest/gtest.h>

#include "UIFixture.h"
#include "facade/Core.h"
#include "support/Snapshot.h"
#include "ui/HealthAlertViewController.h"
#include "ui/ProfileAlertInfoViewController.h"
#include "ui/TrainingAlerts.h"
#include "views/AlertController.h"
#include "views/TextRenderer.h"

namespace nutrition {
namespace {

using AlertScreens = test::UIFixture;

std::shared_ptr<HealthAlertViewController> card(const UIContext& ui,
                                                std::optional<std::string> button,
                                                std::function<void()> onComplete) {
  return std::make_shared<HealthAlertViewController>(
      ui, "Aviso", "¿Estás seguro de que quieres volver a generar el menú?", std::nullopt,
      std::move(button), ImageRef::named("food"), true, std::move(onComplete));
}

TEST_F(AlertScreens, ContinueRunsTheCompletionOnceAfterTheDismissalAndExitNever) {
  int completions = 0;
  bool dismissedFirst = false;
  auto alert = card(ui_, "Generar nuevo menú", [&] {
    ++completions;
    dismissedFirst = root_->presentedViewController() == nullptr;
  });
  root_->present(alert, true);
  EXPECT_FALSE(alert->continueButton->isHidden);
  EXPECT_EQ(alert->continueButton->currentTitle(), "Generar nuevo menú");
  EXPECT_EQ(alert->titleLabel->text(), "Aviso");
  EXPECT_EQ(alert->subtitleLabel->text(), "");
  EXPECT_EQ(alert->imageView->image, ImageRef::named("food"));
  test::expectSnapshot("HealthAlertViewController", renderText(*alert));
  ASSERT_TRUE(alert->continueButton->tap());
  EXPECT_EQ(completions, 1);
  EXPECT_TRUE(dismissedFirst);
  EXPECT_EQ(presenter_->events.back(),
            "dismiss HealthAlertViewController from ViewController (animated)");

  completions = 0;
  auto closed = card(ui_, "Generar nuevo menú", [&] { ++completions; });
  root_->present(closed, true);
  ASSERT_TRUE(closed->exitButton->tap());
  EXPECT_EQ(root_->presentedViewController(), nullptr);
  platform_.queue().runUntilIdle();
  EXPECT_EQ(completions, 0);

  // Without a button title the card can only be closed.
  auto plain = card(ui_, std::nullopt, [&] { ++completions; });
  root_->present(plain, false);
  EXPECT_TRUE(plain->continueButton->isHidden);
  EXPECT_FALSE(plain->continueButton->tap());
  EXPECT_NE(root_->presentedViewController(), nullptr);
}

TEST_F(AlertScreens, TrainingAlertHasOneOkThatOnlyCloses) {
  TrainingAlerts::showAlert("Se ha producido un error al actualizar el perfil", "Aviso", *root_);
  auto* alert = dynamic_cast<AlertController*>(root_->presentedViewController());
  ASSERT_NE(alert, nullptr);
  EXPECT_TRUE(alert->wasPresentedAnimated());
  EXPECT_EQ(alert->titleText, "Aviso");
  EXPECT_EQ(alert->message, "Se ha producido un error al actualizar el perfil");
  ASSERT_EQ(alert->actions().size(), 1u);
  EXPECT_EQ(alert->actions()[0].title, "Ok");
  EXPECT_EQ(alert->actions()[0].style, AlertAction::Style::cancel);
  EXPECT_TRUE(alert->tapAction("Ok"));
  EXPECT_EQ(root_->presentedViewController(), nullptr);
}

TEST_F(AlertScreens, InfoListShowsOneRowPerItemOfTheResource) {
  Core core(platform_.shared());
  const auto items = core.utils().getInfoFile("info_ayuno");
  ASSERT_FALSE(items.empty());
  auto info = std::make_shared<ProfileAlertInfoViewController>(ui_);
  info->items = items;
  root_->present(info, true);
  ASSERT_EQ(info->contentItems->arrangedSubviews().size(), items.size());
  auto* first = dynamic_cast<AlertItemView*>(info->contentItems->arrangedSubviews()[0].get());
  ASSERT_NE(first, nullptr);
  EXPECT_EQ(first->titleLabel->text(), items[0].title.value_or(""));
  EXPECT_EQ(first->textLabel->text(), items[0].text.value_or(""));
  test::expectSnapshot("ProfileAlertInfoViewController", renderText(*info));

  ASSERT_TRUE(info->closeButton->tap());
  EXPECT_EQ(root_->presentedViewController(), nullptr);
  root_->present(info, false);  // shown again: the same rows, not more
  EXPECT_EQ(info->contentItems->arrangedSubviews().size(), items.size());

  EXPECT_TRUE(core.utils().getInfoFile("info_missing").empty());
}

}  // namespace
}  // namespace nutrition
