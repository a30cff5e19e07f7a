// Stored values the module did not write as it expects (damaged files, values of the wrong
// type) and a clock that jumps: read as absent or released, never a crash, and nothing lost
// that was saved before.

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>

#include "facade/Core.h"
#include "platform/linux/FileKeyValueStore.h"
#include "support/TestPlatform.h"

namespace nutrition {
namespace {

using namespace std::chrono_literals;

class StoredValues : public ::testing::Test {
 protected:
  StoredValues() {
    core_.session().currentUser = NutritionUser::empty();
    core_.session().currentUser->intermittentFastingID = 3;
  }
  std::shared_ptr<KeyValueStore> preferences() {
    return platform_.stores().suite("NutritionPreferences");
  }

  test::TestPlatform platform_{{.now = test::utc(2026, 11, 22, 12), .realResources = true}};
  Core core_{platform_.shared()};
};

TEST_F(StoredValues, WrongTypesReadAsAbsent) {
  AyunoUtils& ayuno = core_.ayuno();
  preferences()->set("ayuno_timer", std::string("yesterday"));
  EXPECT_TRUE(ayuno.isFinished());
  EXPECT_FALSE(ayuno.getCurrentTime().has_value());
  EXPECT_EQ(ayuno.getCurrentPercentage(), 0);
  preferences()->set("ayuno_timer", std::vector<std::string>{"1", "2"});
  EXPECT_TRUE(ayuno.isFinished());
  // Opening the fasting screen starts a new fast over the bad value.
  EXPECT_TRUE(ayuno.startIfFinished());
  EXPECT_EQ(ayuno.getCurrentTime(), 0);

  auto standard = platform_.stores().standard();
  standard->set("hold_menu_timer", std::vector<std::string>{"soon"});
  EXPECT_TRUE(core_.utils().canViewMenu());
  standard->set("hold_menu_timer", std::string("later"));
  EXPECT_TRUE(core_.utils().canViewMenu());
}

TEST_F(StoredValues, ClockJumpsBackADayAndForwardTenYears) {
  AyunoUtils& ayuno = core_.ayuno();
  auto standard = platform_.stores().standard();
  ASSERT_TRUE(ayuno.startIfFinished());
  const auto started = preferences()->getDouble("ayuno_timer");
  standard->set("hold_menu_timer", platform_.nowSeconds() + 5);
  EXPECT_FALSE(core_.utils().canViewMenu());

  // Back a day: the hold now lies further ahead than a profile change ever sets, so it is
  // released; the fast reads as not yet begun, and is kept.
  platform_.clock().advance(-24h);
  EXPECT_TRUE(core_.utils().canViewMenu());
  EXPECT_FALSE(standard->value("hold_menu_timer").has_value());
  EXPECT_EQ(ayuno.getCurrentTime(), -86400);
  EXPECT_FALSE(ayuno.isFinished());
  EXPECT_EQ(preferences()->getDouble("ayuno_timer"), started);

  // Forward ten years: the fast is long over, its start still stored, every read finite.
  platform_.clock().advance(24h + 24h * 3653);
  EXPECT_TRUE(ayuno.isFinished());
  EXPECT_EQ(ayuno.getCurrentTime(), 3653 * 86400);
  EXPECT_EQ(ayuno.getCurrentTimeString(), "87672:00:00");
  EXPECT_EQ(ayuno.getCurrentPercentage(), 0.999);  // the ring's cap
  EXPECT_EQ(preferences()->getDouble("ayuno_timer"), started);
  standard->set("hold_menu_timer", platform_.nowSeconds() + 5);
  EXPECT_FALSE(core_.utils().canViewMenu());
}

TEST(StoredFiles, ADamagedStoreLosesNothingOfTheOthers) {
  const auto directory =
      std::filesystem::temp_directory_path() / ("nutrition-stored-" + std::to_string(::getpid()));
  std::filesystem::remove_all(directory);
  {
    FileKeyValueStores stores(directory);
    stores.suite("NutritionPreferences")->set("ayuno_timer", 1'800'000'000.0);
    stores.suite("nutritionSDK")->set("profileFilledUsers", std::vector<std::string>{"m1_acme"});
    stores.standard()->set("hold_menu_timer", 1'800'000'005.0);
  }
  // The standard store is cut short and then overwritten with binary bytes.
  for (const auto& entry : std::filesystem::directory_iterator(directory)) {
    if (entry.path().filename().string().find("suite.") == 0) continue;
    std::ofstream(entry.path(), std::ios::binary | std::ios::trunc)
        << std::string("\0\xff{\"ho", 6);
  }
  FileKeyValueStores reopened(directory);
  EXPECT_FALSE(reopened.standard()->value("hold_menu_timer").has_value());
  EXPECT_EQ(reopened.suite("NutritionPreferences")->getDouble("ayuno_timer"), 1'800'000'000.0);
  EXPECT_EQ(reopened.suite("nutritionSDK")->value("profileFilledUsers"),
            StoredValue(std::vector<std::string>{"m1_acme"}));
  // Writing the damaged store replaces it with a good one.
  reopened.standard()->set("hold_menu_timer", 7.0);
  FileKeyValueStores again(directory);
  EXPECT_EQ(again.standard()->getDouble("hold_menu_timer"), 7.0);
  std::filesystem::remove_all(directory);
}

}  // namespace
}  // namespace nutrition
