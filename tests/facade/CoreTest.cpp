// The composition root and the facade's own reads: what one Core owns, when the data holder
// is made, and what installing a platform discards.

#include "facade/Core.h"

#include <gtest/gtest.h>

#include "base/File.h"
#include "platform/linux/DirectoryResourceBundle.h"
#include "screens/fasting/PhaseAlertViewController.h"
#include "support/TestLog.h"
#include "support/TestPlatform.h"
#include "ui/FontRegistration.h"

namespace nutrition {
namespace {

constexpr const char* kAccount = R"([{"ClientId": 7, "ClientAlias": "acme"}])";

class CoreTest : public ::testing::Test {
 protected:
  CoreTest() { core_.config().mainURL = "https://backend.test/"; }

  // Logs in as `member` and answers the member download with `memberAnswer`.
  void startAs(const char* member, const char* memberAnswer) {
    core_.sdk().start(member, "acme", "secret");
    http().answer(kAccount);
    platform_.queue().runUntilIdle();
    http().answer(memberAnswer);
    platform_.queue().runUntilIdle();
  }
  std::vector<std::string> paths() {
    std::vector<std::string> out;
    for (const auto& request : platform_.http().requests())
      out.push_back(request.url.substr(request.url.find("/api/") + 1));
    return out;
  }
  test::ScriptedHttpClient& http() { return platform_.http(); }

  test::TestPlatform platform_{{.realResources = true}};
  Core core_{platform_.shared()};
};

TEST_F(CoreTest, TheDataHolderIsMadeWhenFirstNeededAndThenAsksForItsLists) {
  startAs("m1", "[]");
  EXPECT_EQ(paths(),
            (std::vector<std::string>{"api/auth/login", "api/user?Language=es_ES&UserId=m1_acme"}));

  // The first facade operation that needs held data makes the holder.
  EXPECT_EQ(core_.sdk().getTodayMenu(), NutritionDay{});
  EXPECT_EQ(paths(),
            (std::vector<std::string>{"api/auth/login", "api/user?Language=es_ES&UserId=m1_acme",
                                      "api/favorite-dish?UserId=m1_acme&Language=es_ES",
                                      "api/excluded-aliment?Language=es_ES"}));
  EXPECT_EQ(core_.sdk().getTodayMenu(), NutritionDay{});
  EXPECT_EQ(http().requests().size(), 4u);
}

TEST_F(CoreTest, FacadeFastingReadsFollowTheMemberAndTheStoredStart) {
  EXPECT_FALSE(core_.sdk().hasIntermittentFasting());  // no member
  EXPECT_FALSE(core_.sdk().isDoingIntermittentFasting());
  startAs("m1", R"([{"UserId": "m1_acme", "IntermittentFastingId": 0}])");
  EXPECT_FALSE(core_.sdk().hasIntermittentFasting());
  core_.session().currentUser->intermittentFastingID.reset();
  EXPECT_FALSE(core_.sdk().hasIntermittentFasting());
  core_.session().currentUser->intermittentFastingID = 2;
  EXPECT_TRUE(core_.sdk().hasIntermittentFasting());

  auto fasting = platform_.stores().suite("NutritionPreferences");
  fasting->set("ayuno_timer", platform_.nowSeconds() - 4 * 3600);
  EXPECT_TRUE(core_.sdk().isDoingIntermittentFasting());
  EXPECT_EQ(core_.sdk().getIntermittentFastingPhase(), core_.ayuno().phases.at(1).name);
  fasting->set("ayuno_timer", platform_.nowSeconds() - (50400 + 86400));  // 14 h + a day
  EXPECT_FALSE(core_.sdk().isDoingIntermittentFasting());
}

TEST_F(CoreTest, FastingScreensComeOnlyForAMemberWithAScheme) {
  std::vector<std::shared_ptr<ViewController>> given;
  int calls = 0;
  auto take = [&](std::shared_ptr<ViewController> screen) {
    ++calls;
    given.push_back(std::move(screen));
  };
  core_.sdk().getAyunoController(take);  // no member: absent, at once
  startAs("m1", R"([{"UserId": "m1_acme", "IntermittentFastingId": 0}])");
  core_.sdk().getAyunoController(take);  // scheme 0: absent, at once
  ASSERT_EQ(calls, 2);
  EXPECT_EQ(given[0], nullptr);
  EXPECT_EQ(given[1], nullptr);

  core_.session().currentUser->intermittentFastingID = 1;
  core_.sdk().getAyunoController(take);
  EXPECT_EQ(calls, 2);  // later, on the main queue
  platform_.queue().runUntilIdle();
  ASSERT_EQ(calls, 3);
  ASSERT_NE(given[2], nullptr);
  EXPECT_EQ(given[2]->kind(), "AyunoViewController");

  platform_.stores()
      .suite("NutritionPreferences")
      ->set("ayuno_timer", platform_.nowSeconds() - 12 * 3600);
  core_.sdk().getAyunoPhaseInfo(take);
  ASSERT_EQ(calls, 4);  // at once
  auto* popUp = dynamic_cast<PhaseAlertViewController*>(given[3].get());
  ASSERT_NE(popUp, nullptr);
  EXPECT_EQ(popUp->phase->name, core_.ayuno().phases.at(3).name);
}

TEST_F(CoreTest, NumberOfIntakesIsFiveAtOnce) {
  std::optional<std::int64_t> count;
  core_.sdk().getNumberOfIntakes([&](std::int64_t n) { count = n; });
  EXPECT_EQ(count, 5);
  EXPECT_TRUE(http().requests().empty());
}

TEST_F(CoreTest, TodayMenuWaitsForAProcessedMenu) {
  startAs("m1", "[]");
  std::vector<std::optional<NutritionDay>> days;
  core_.sdk().getTodayMenu([&](auto day) { days.push_back(std::move(day)); });
  // 2026-11-21 is a Saturday: day 6.
  ASSERT_TRUE(http().answerTo("api/menu", R"([{"Processed": true, "Days": [{"DayNum": 6,
      "KcalDay": 1700}]}])"));
  platform_.queue().runUntilIdle();
  ASSERT_EQ(days.size(), 1u);
  EXPECT_EQ(days[0]->kcalDay, 1700);
  EXPECT_EQ(core_.sdk().getTodayMenu().kcalDay, 1700);
}

TEST(CoreLifetime, InstallingAPlatformDiscardsTheCoreAndItsAnswers) {
  int answers = 0;
  {
    test::TestPlatform first({.install = true});
    NutritionSDK::sharedInstance().setURL("https://first.test/");
    NutritionSDK::sharedInstance().setWaitingSecodsForScreen(9);
    DataServiceNutrition::sharedInstance().getIntakes([&](auto, auto) { ++answers; });
    ASSERT_EQ(first.http().requests().size(), 1u);
    first.http().answer("[]");  // in the old main queue, not yet run

    test::TestPlatform second({.install = true});
    EXPECT_EQ(NutritionSDKUtils::sharedInstance().mainURL, NutritionSDKUtils::kDefaultBackendURL);
    EXPECT_EQ(NutritionSDKUtils::sharedInstance().waitingSeconds, 5);
    first.queue().runUntilIdle();  // the answer finds its service gone
  }
  EXPECT_EQ(answers, 0);
}

TEST(StringTables, LookupsFollowTheDeviceLanguageWithSpanishAsFallback) {
  test::TestPlatform platform({.realResources = true});
  const auto& resources = *platform.bundle().resources;
  const StringTables english(resources, "en");
  EXPECT_EQ(english.language(), "en");
  EXPECT_EQ(english.localized("Hoy"), "Today");
  EXPECT_EQ(english.localized("Texto sin traducir"), "Texto sin traducir");
  EXPECT_EQ(StringTables(resources, "fr").localized("Ayer"), "Hier");
  EXPECT_EQ(StringTables(resources, "es").localized("Hoy"), "Hoy");
  EXPECT_EQ(StringTables(resources, "ja").localized("Hoy"), "Hoy");  // no table: Spanish
  EXPECT_EQ(StringTables(EmptyResourceBundle{}, "en").localized("Hoy"), "Hoy");
}

TEST(FontRegistration, EachFailureHasItsMessage) {
  test::TestPlatform platform({.realResources = true});
  InMemoryFontRegistry fonts;
  const auto& bundle = *platform.bundle().resources;
  EXPECT_FALSE(registerFont("NoSuchFont.ttf", bundle, fonts));
  EXPECT_TRUE(test::logged("UIFont+:  Failed to register font - path for resource not found."));
  EXPECT_FALSE(registerFont("fasesAyuno.json", bundle, fonts));
  EXPECT_TRUE(test::logged("UIFont+:  Failed to register font - font could not be loaded."));
  EXPECT_FALSE(registerFont("../CMakeLists.txt", bundle, fonts));
  EXPECT_EQ(fonts.count(), 0u);

  // A TrueType file registers once; the second time the font manager refuses it.
  const std::string font = std::string("\x00\x01\x00\x00", 4) + std::string(60, '\0');
  ASSERT_TRUE(writeFileAtomically(platform.documents() / "Regular.ttf", font));
  const DirectoryResourceBundle fontBundle(platform.documents());
  EXPECT_TRUE(registerFont("Regular.ttf", fontBundle, fonts));
  EXPECT_FALSE(registerFont("Regular.ttf", fontBundle, fonts));
  EXPECT_TRUE(test::logged(
      "UIFont+:  Failed to register font - register graphics font failed - this font may have "
      "already been registered in the main bundle."));
  EXPECT_EQ(fonts.count(), 1u);
}

}  // namespace
}  // namespace nutrition
