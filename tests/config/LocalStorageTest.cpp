#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>

#include "config/NutritionSDKUtils.h"
#include "facade/Core.h"
#include "support/TestPlatform.h"

namespace nutrition {
namespace {

namespace fs = std::filesystem;

// The smallest whole PNG: the signature and the end chunk.
const std::string kPng("\x89PNG\r\n\x1A\n\0\0\0\0IEND\xAE\x42\x60\x82", 20);

Image image(const std::string& bytes) {
  return Image{{bytes.begin(), bytes.end()}};
}

TEST(LocalStorage, ProfileFilledMembersAreRecordedPerMemberId) {
  test::TestPlatform platform;
  NutritionSDKUtils utils(platform.bundle(), "es");
  EXPECT_FALSE(utils.isProfileFilled("m1"));

  utils.setUserProfileAsFilled("m1");
  utils.setUserProfileAsFilled("m1");
  EXPECT_TRUE(utils.isProfileFilled("m1"));
  EXPECT_EQ(platform.stores().suite("nutritionSDK")->getStringList("profileFilledUsers"),
            (std::vector<std::string>{"m1", "m1"}));
  EXPECT_FALSE(utils.isProfileFilled("m2"));

  // The empty member id is recorded like any other.
  utils.setUserProfileAsFilled("");
  EXPECT_TRUE(utils.isProfileFilled(""));

  // A value of another type reads as nothing recorded and is replaced on the next write.
  platform.stores().suite("nutritionSDK")->set("profileFilledUsers", 3.0);
  EXPECT_FALSE(utils.isProfileFilled("m1"));
  utils.setUserProfileAsFilled("");
  EXPECT_EQ(platform.stores().suite("nutritionSDK")->getStringList("profileFilledUsers"),
            std::vector<std::string>{""});
}

TEST(LocalStorage, FoldersAreCreatedAtStartInTheDocumentsDirectory) {
  test::TestPlatform platform;
  const NutritionSDKUtils utils(platform.bundle(), "es");
  for (const char* folder :
       {"workouts", "staticWorkouts", "wearables", "customization", "vimeo", "recipes"}) {
    EXPECT_TRUE(fs::is_directory(platform.documents() / "MyOrvane" / folder)) << folder;
  }
  EXPECT_EQ(utils.getURLForFolder(Folder::recipes),
            (platform.documents() / "MyOrvane/recipes").string());
}

TEST(LocalStorage, ImageCacheUsesTheUrlsFileNameAndNeverLeavesItsFolder) {
  test::TestPlatform platform;
  const NutritionSDKUtils utils(platform.bundle(), "es");
  const std::string first = "https://cdn.test/a/dish-3.png";
  const std::string second = "https://other.test/b/dish-3.png";
  EXPECT_FALSE(utils.existImage(first, Folder::recipes));
  utils.writeImage(image(kPng), first, Folder::recipes);
  EXPECT_TRUE(utils.existImage(second, Folder::recipes));  // same name, same file
  EXPECT_EQ(utils.getImage(second, Folder::recipes), image(kPng));
  EXPECT_FALSE(utils.getImage(first, Folder::vimeo).has_value());

  for (const char* url : {"https://cdn.test/", "https://cdn.test/..", "https://cdn.test/.", ".."}) {
    SCOPED_TRACE(url);
    utils.writeImage(image(kPng), url, Folder::recipes);
    EXPECT_FALSE(utils.existImage(url, Folder::recipes));
    EXPECT_FALSE(utils.getImage(url, Folder::recipes).has_value());
  }
  std::size_t files = 0;
  for (const auto& entry : fs::recursive_directory_iterator(platform.documents())) {
    files += entry.is_regular_file();
  }
  EXPECT_EQ(files, 1u);
}

TEST(LocalStorage, DownloadedImagesAreCachedOnlyWhenTheyAreImages) {
  test::TestPlatform platform;
  const NutritionSDKUtils utils(platform.bundle(), "es");
  std::vector<std::optional<Image>> results;
  const auto keep = [&](std::optional<Image> picture) { results.push_back(std::move(picture)); };

  utils.downloadImage("https://cdn.test/img/plate.png", Folder::recipes, keep);
  EXPECT_EQ(platform.http().requests().back().method, "GET");
  platform.http().answer(kPng);
  EXPECT_TRUE(results.empty());
  platform.queue().runUntilIdle();
  ASSERT_EQ(results.size(), 1u);
  EXPECT_EQ(results[0], image(kPng));
  EXPECT_TRUE(utils.existImage("plate.png", Folder::recipes));

  utils.downloadImage("https://cdn.test/img/error.png", Folder::recipes, keep);
  platform.http().answer("<html>not found</html>", 404);
  utils.downloadImage("https://cdn.test/img/offline.png", Folder::recipes, keep);
  platform.http().failTransport();
  platform.queue().runUntilIdle();
  ASSERT_EQ(results.size(), 3u);
  EXPECT_FALSE(results[1].has_value());
  EXPECT_FALSE(results[2].has_value());
  EXPECT_FALSE(utils.existImage("error.png", Folder::recipes));

  // Shown but not cached: the URL names no file.
  utils.downloadImage("https://cdn.test/img/", Folder::recipes, keep);
  platform.http().answer(kPng);
  platform.queue().runUntilIdle();
  EXPECT_EQ(results.back(), image(kPng));

  const auto sent = platform.http().requests().size();
  utils.downloadImage("no url at all", Folder::recipes, keep);
  EXPECT_EQ(platform.http().requests().size(), sent);
}

TEST(LocalStorage, SupplementAdviceOnlyForTheFirstFourPhases) {
  const auto advice = &NutritionSDKUtils::getSuplementosForPhase;
  EXPECT_EQ(advice(12, 1), "Tomar un comprimido de SUPRADYN");
  EXPECT_FALSE(advice(10, 2).has_value());  // not every intake
  EXPECT_FALSE(advice(13, 3).has_value());
  EXPECT_FALSE(advice(14, 1).has_value());  // the last phase has none
  EXPECT_FALSE(advice(1, 1).has_value());
}

TEST(Facade, ProfileReadsFollowTheMemberAndTheDevicesZone) {
  test::TestPlatform platform(
      {.calendar = std::make_shared<FixedOffsetCalendar>(std::chrono::hours(-5), "UTC-5")});
  Core core(platform.shared());
  auto& sdk = core.sdk();
  EXPECT_FALSE(sdk.getProfile().has_value());
  EXPECT_FALSE(sdk.getUserYear().has_value());
  EXPECT_FALSE(sdk.getUserHeight().has_value());

  NutritionUser user;
  user.userName = "Ana";
  user.userSurnames = "Pérez";
  user.height = 165;
  user.weight = 60;
  user.gender = NutritionGender::female;
  user.dateOfBirth = test::utc(1990, 1, 1, 2);  // still 1989 five hours west of UTC
  core.session().currentUser = user;
  EXPECT_EQ(sdk.getProfile(), (PublicProfile{"Ana", "Pérez", 165, 60, NutritionGender::female,
                                             test::utc(1990, 1, 1, 2)}));
  EXPECT_EQ(sdk.getUserYear(), 1989);
  EXPECT_EQ(sdk.getUserWeight(), 60);
  EXPECT_EQ(sdk.getUserGender(), NutritionGender::female);

  // A setter turns the host's hex text into a colour on the spot, bad text into black.
  sdk.setMainColor("00FF00");
  sdk.setNavigationBarColor("zzz");
  EXPECT_EQ(core.config().primaryColor, (Color{0, 255, 0, 255}));
  EXPECT_EQ(core.config().navigationBarColor, (Color{0, 0, 0, 255}));
}

}  // namespace
}  // namespace nutrition
