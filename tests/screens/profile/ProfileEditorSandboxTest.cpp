// The profile editor end to end: a real Core over libcurl against the shared sandbox backend,
// the member answering every page through the views, and the snapshots of each page of both
// questionnaire files in Spanish and English.

#include <gtest/gtest.h>

#include <chrono>
#include <map>
#include <memory>

#include "ProfileFixture.h"
#include "platform/linux/CurlHttpClient.h"
#include "support/SharedSandbox.h"
#include "support/Snapshot.h"
#include "ui/HealthAlertViewController.h"
#include "views/TextRenderer.h"

namespace nutrition {
namespace {

using namespace std::chrono_literals;
using Answers = std::map<std::string, std::vector<std::string>>;

class ProfileEditorSandbox : public ::testing::Test {
 protected:
  explicit ProfileEditorSandbox(const std::string& language = "es")
      : platform_{{.language = language, .http = http_, .realResources = true}} {
    core_->sdk().setURL(server_.baseURL());
    window_->setRootViewController(root_);
    core_->application().setKeyWindow(window_);
  }

  bool runUntil(const std::function<bool()>& done, std::chrono::milliseconds timeout = 10s) {
    const auto deadline = std::chrono::steady_clock::now() + timeout;
    while (!done()) {
      if (std::chrono::steady_clock::now() >= deadline) return false;
      platform_.queue().waitAndRun(20ms);
    }
    return true;
  }

  void startMember(const std::string& member) {
    const auto* test = ::testing::UnitTest::GetInstance()->current_test_info();
    core_->session().start(member + "-" + test->name(), "demo", "demo-password");
    ASSERT_TRUE(runUntil([&] { return core_->session().currentUser.has_value(); }));
  }

  std::shared_ptr<ProfilePageViewController> openEditor() {
    auto pages = core_->utils().getProfileQuestionary();
    EXPECT_TRUE(pages.has_value());
    auto editor = makeProfileEditor(
        screens_, ProfileEditorServices::from(platform_.bundle(), core_->dataService()), *pages);
    editor->modalPresentationStyle = ModalPresentationStyle::fullScreen;
    root_->present(editor, false);
    return editor;
  }

  // Every catalogue a page asks for has arrived.
  static bool loaded(NutritionProfileViewController& page) {
    for (auto* panel : page.panelViews()) {
      for (auto* view : panel->questionViews()) {
        const auto& question = *view->question;
        if (question.type == AnswerType::picker && !view->pickerView) return false;
        if (question.type == AnswerType::list && !question.answers &&
            view->answersVerticalStackView->arrangedSubviews().empty()) {
          return false;
        }
      }
    }
    return true;
  }

  void answerPage(ProfilePageViewController& editor, const Answers& answers) {
    NutritionProfileViewController* page = editor.currentPage();
    ASSERT_TRUE(runUntil([&] { return loaded(*page); }));
    for (auto* panel : page->panelViews()) {
      for (auto* view : panel->questionViews()) {
        const auto found = answers.find(view->question->identifier.value_or(""));
        if (found == answers.end()) continue;
        TapResult result = tapAnswer(*view, found->second);
        if (!result.waitingRows.empty()) {
          ASSERT_TRUE(runUntil(
              [&] { return !view->answersVerticalStackView->arrangedSubviews().empty(); }));
          result = tapRows(*view, result.waitingRows);
        }
        EXPECT_TRUE(result.ok) << found->first << ": " << result.problem;
      }
    }
    page->nextButton->tap();
    EXPECT_EQ(page->presentedViewController(), nullptr)
        << "a notice stopped page " << page->pageIndex;
  }

  // Answers the three pages, confirms, and waits for the editor to close.
  void sendWholeProfile(ProfilePageViewController& editor) {
    answerPage(editor, {{"height", {"172"}},
                        {"dateOfBirth", {"12/04/1985"}},
                        {"gender", {"Mujer"}},
                        {"physicalIntensityID", {"2"}},
                        {"desiredBalanceID", {"1"}},
                        {"countries", {"España"}}});
    answerPage(editor,
               {{"preferences", {"1"}}, {"intollerance", {"No"}}, {"excludedAliment", {"1"}}});
    answerPage(editor, {{"distributionByIntakeID", {"5"}},
                        {"lunchDishes", {"1", "2"}},
                        {"dinnerDishes", {"2"}},
                        {"difficulty", {"Fácil"}},
                        {"intermittentFastingID", {"3"}}});
    auto* confirmation =
        dynamic_cast<HealthAlertViewController*>(core_->application().topViewController());
    ASSERT_NE(confirmation, nullptr);
    confirmation->continueButton->tap();
    ASSERT_TRUE(runUntil([&] { return root_->presentedViewController() == nullptr; }));
  }

  std::vector<std::string> userRequests() const {
    std::vector<std::string> lines;
    for (const auto& request : server_.requests()) {
      if (request.path == "/api/user") lines.push_back(request.method + " " + request.path);
    }
    return lines;
  }

  // The backend's menu of the member once it has built it: the hold first runs out, then the
  // menu is downloaded until it is processed.
  void expectNewMenu(std::int64_t serial) {
    NutritionUtils& utils = core_->utils();
    EXPECT_FALSE(utils.canViewMenu());
    platform_.clock().advance(6s);
    EXPECT_TRUE(utils.canViewMenu());
    test::sandboxNow() = test::sandboxNow() + 10;
    std::optional<NutritionMenu> menu;
    bool answered = false;
    utils.downloadMenu([&](std::optional<NutritionMenu> held) {
      menu = std::move(held);
      answered = true;
    });
    ASSERT_TRUE(runUntil([&] { return answered; }));
    ASSERT_TRUE(menu.has_value());
    EXPECT_EQ(menu->processed, true);
    EXPECT_EQ(menu->serialNumber, serial);
    EXPECT_FALSE(menu->days.value_or(std::vector<NutritionDay>{}).empty());
  }

  sandbox::SandboxServer& server_ = test::sharedSandbox();
  std::shared_ptr<CurlHttpClient> http_ = std::make_shared<CurlHttpClient>();
  test::TestPlatform platform_;
  std::unique_ptr<Core> core_ = std::make_unique<Core>(platform_.shared());
  test::RecordingRoutes routes_;
  ScreenContext screens_{core_->ui(), core_->ayuno(), core_->screens().user,
                         core_->screens().services, routes_};
  std::shared_ptr<test::RecordingPresenter> presenter_ =
      std::make_shared<test::RecordingPresenter>();
  std::shared_ptr<Window> window_ =
      std::make_shared<Window>(presenter_, platform_.bundle().mainQueue);
  std::shared_ptr<ViewController> root_ = std::make_shared<ViewController>();
};

TEST_F(ProfileEditorSandbox, NewMemberIsCreatedWithPostAndGetsAMenu) {
  startMember("new");
  ASSERT_TRUE(core_->session().isUnregister);
  // The closed menu-type question shows no value for a new member and does not stop the send.
  auto editor = openEditor();
  sendWholeProfile(*editor);

  EXPECT_EQ(userRequests(),
            (std::vector<std::string>{"GET /api/user", "POST /api/user", "GET /api/user"}));
  const NutritionUser& member = *core_->session().currentUser;
  EXPECT_EQ(member.height, 172);
  EXPECT_EQ(member.gender, NutritionGender::female);
  EXPECT_EQ(member.preferences, (std::vector<std::int64_t>{1}));
  EXPECT_EQ(member.intermittentFastingID, 3);
  EXPECT_EQ(member.dietID, 1);
  EXPECT_FALSE(core_->session().isUnregister);
  EXPECT_EQ(routes_.weekMenus, 1);
  expectNewMenu(1);
}

TEST_F(ProfileEditorSandbox, KnownMemberIsUpdatedWithPatchAndGetsANewMenu) {
  startMember("known");
  auto first = openEditor();
  core_->session().currentUser->algorithm = 2;
  sendWholeProfile(*first);
  ASSERT_FALSE(core_->session().isUnregister);
  server_.clearRequests();

  // The member's answers come back as the defaults: only the changes are tapped.
  auto editor = openEditor();
  answerPage(*editor, {{"height", {"180"}}});
  answerPage(*editor, {});
  answerPage(*editor, {{"difficulty", {"Elaborada"}}});
  auto* confirmation =
      dynamic_cast<HealthAlertViewController*>(core_->application().topViewController());
  ASSERT_NE(confirmation, nullptr);
  confirmation->continueButton->tap();
  ASSERT_TRUE(runUntil([&] { return root_->presentedViewController() == nullptr; }));

  EXPECT_EQ(userRequests(), (std::vector<std::string>{"PATCH /api/user", "GET /api/user"}));
  EXPECT_EQ(core_->session().currentUser->height, 180);
  EXPECT_EQ(core_->session().currentUser->difficulty, 3);
  EXPECT_EQ(routes_.weekMenus, 2);
  expectNewMenu(2);
}

class ProfileSnapshots : public ProfileEditorSandbox,
                         public ::testing::WithParamInterface<std::string> {
 protected:
  ProfileSnapshots() : ProfileEditorSandbox(GetParam()) {}
};

TEST_P(ProfileSnapshots, EveryPageOfBothQuestionnaires) {
  startMember("snapshots");
  for (const bool excluded : {true, false}) {
    core_->config().showExcludedAliments = excluded;
    auto editor = openEditor();
    const std::size_t count = editor->pages->size();
    for (std::size_t index = 0; index < count; ++index) {
      NutritionProfileViewController* page = editor->currentPage();
      ASSERT_EQ(page->pageIndex, index);
      ASSERT_TRUE(runUntil([&] { return loaded(*page); }));
      test::expectSnapshot("profile-" + std::string(excluded ? "with" : "without") + "Excluded-" +
                               GetParam() + "-page" + std::to_string(index + 1),
                           renderText(*editor));
      editor->nextProfilePage();
    }
    editor->dismiss(false);
  }
}

INSTANTIATE_TEST_SUITE_P(Languages, ProfileSnapshots, ::testing::Values("es", "en"));

}  // namespace
}  // namespace nutrition
