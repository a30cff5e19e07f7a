#include <gtest/gtest.h>

#include <cstdlib>
#include <filesystem>
#include <fstream>

#include "platform/linux/EnvDeviceLocale.h"
#include "platform/linux/FileKeyValueStore.h"

namespace nutrition {
namespace {

namespace fs = std::filesystem;

class FileKeyValueStoreTest : public ::testing::Test {
 protected:
  void SetUp() override {
    directory_ = fs::temp_directory_path() /
                 ("nutrition-kv-" + std::to_string(::getpid()) + "-" +
                  ::testing::UnitTest::GetInstance()->current_test_info()->name());
    fs::remove_all(directory_);
  }
  void TearDown() override { fs::remove_all(directory_); }

  fs::path directory_;
};

TEST_F(FileKeyValueStoreTest, ValuesSurviveReopeningWithTheirTypes) {
  {
    FileKeyValueStores stores(directory_);
    stores.standard()->set("hold_menu_timer", 1700000000.5);
    stores.standard()->set("training_auth_token", std::string("tok\"en"));
    stores.suite("nutritionSDK")->set("profileFilledUsers", std::vector<std::string>{"m1", "m1"});
    stores.suite("NutritionPreferences")->set("ayuno_timer", 12.0);
    stores.suite("NutritionPreferences")->remove("ayuno_timer");
    EXPECT_EQ(stores.suite("nutritionSDK"), stores.suite("nutritionSDK"));
  }
  FileKeyValueStores reopened(directory_);
  EXPECT_EQ(reopened.standard()->getDouble("hold_menu_timer"), 1700000000.5);
  EXPECT_EQ(reopened.standard()->getString("training_auth_token"), "tok\"en");
  EXPECT_FALSE(reopened.standard()->getDouble("training_auth_token").has_value());
  EXPECT_EQ(reopened.suite("nutritionSDK")->getStringList("profileFilledUsers"),
            (std::vector<std::string>{"m1", "m1"}));
  EXPECT_FALSE(reopened.suite("NutritionPreferences")->value("ayuno_timer").has_value());
  // Suites are separate from each other and from the standard store.
  EXPECT_FALSE(reopened.suite("nutritionSDK")->value("hold_menu_timer").has_value());
}

TEST_F(FileKeyValueStoreTest, CorruptFilesReadAsEmptyAndAreReplacedOnWrite) {
  fs::create_directories(directory_);
  std::ofstream(directory_ / "standard.json") << R"({"hold_menu_timer": 12, "broken": [)";
  FileKeyValueStores stores(directory_);
  EXPECT_FALSE(stores.standard()->getDouble("other").has_value());
  stores.standard()->set("fresh", 1.0);
  FileKeyValueStores reopened(directory_);
  EXPECT_EQ(reopened.standard()->getDouble("fresh"), 1.0);
}

TEST_F(FileKeyValueStoreTest, SuiteNamesNeverLeaveTheDirectory) {
  FileKeyValueStores stores(directory_);
  stores.suite("../../escape")->set("k", 1.0);
  stores.suite("a/b")->set("k", 2.0);
  for (const auto& entry :
       fs::recursive_directory_iterator(directory_.parent_path() / directory_.filename())) {
    EXPECT_EQ(entry.path().parent_path(), directory_) << entry.path();
  }
  EXPECT_FALSE(fs::exists(directory_.parent_path().parent_path() / "escape"));
  EXPECT_EQ(FileKeyValueStores(directory_).suite("a/b")->getDouble("k"), 2.0);
}

TEST(EnvDeviceLocale, ReadsTheLanguageOfTheFirstSetLocaleVariable) {
  EXPECT_EQ(languageFromLocaleName("fr_FR.UTF-8"), "fr");
  EXPECT_EQ(languageFromLocaleName("EN"), "en");
  EXPECT_EQ(languageFromLocaleName("pt-BR"), "pt");
  EXPECT_EQ(languageFromLocaleName("ca_ES@valencia"), "ca");
  EXPECT_EQ(languageFromLocaleName("C.UTF-8"), "");
  EXPECT_EQ(languageFromLocaleName("POSIX"), "");
  EXPECT_EQ(languageFromLocaleName(""), "");

  const auto setOrClear = [](const char* name, const char* value) {
    if (value) {
      ::setenv(name, value, 1);
    } else {
      ::unsetenv(name);
    }
  };
  struct Case {
    const char* all;
    const char* messages;
    const char* lang;
    const char* expected;
  };
  for (const Case& c :
       {Case{"de_DE.UTF-8", "it_IT", "en_GB", "de"}, Case{"", "it_IT", "en_GB", "it"},
        Case{nullptr, nullptr, "en_GB.UTF-8", "en"}, Case{nullptr, nullptr, nullptr, ""},
        Case{"C", "it_IT", "en_GB", ""}}) {
    setOrClear("LC_ALL", c.all);
    setOrClear("LC_MESSAGES", c.messages);
    setOrClear("LANG", c.lang);
    EXPECT_EQ(EnvDeviceLocale().languageCode(), c.expected);
  }
  ::unsetenv("LC_ALL");
  ::unsetenv("LC_MESSAGES");
  ::unsetenv("LANG");
}

}  // namespace
}  // namespace nutrition
