// The shipped resources: both questionnaires, the fasting phases, the waiting screens, the
// information files and the string tables in seven languages.

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <regex>
#include <set>
#include <sstream>

#include "json/JsonReader.h"
#include "model/AlertItem.h"
#include "model/AyunoPhase.h"
#include "model/HealthProfile.h"
#include "model/ModelCodec.h"
#include "model/WaitScreen.h"
#include "platform/linux/DirectoryResourceBundle.h"

namespace nutrition {
namespace {

namespace fs = std::filesystem;

const DirectoryResourceBundle& bundle() {
  static const DirectoryResourceBundle resources(NUTRITION_RESOURCES_DIR);
  return resources;
}

template <class T>
std::vector<T> load(const std::string& name) {
  const auto text = bundle().resource(name, "json");
  EXPECT_TRUE(text.has_value()) << name;
  auto decoded = decodeJsonArray<T>(text.value_or("[]"));
  EXPECT_TRUE(decoded.ok()) << name << ": " << (decoded.ok() ? "" : decoded.error().message);
  return decoded.ok() ? *decoded : std::vector<T>{};
}

std::vector<HealthQuestion> questionsOf(const std::vector<HealthProfilePage>& pages) {
  std::vector<HealthQuestion> questions;
  for (const auto& page : pages) {
    for (const auto& panel : page.panels.value_or(std::vector<HealthProfilePanel>{})) {
      questions.insert(questions.end(), panel.questions.begin(), panel.questions.end());
    }
  }
  return questions;
}

// Every Spanish text the resources show, which the string tables must translate.
std::set<std::string> resourceTexts() {
  std::set<std::string> texts;
  const auto add = [&](const std::optional<std::string>& text) {
    if (text) texts.insert(*text);
  };
  for (const auto& question : questionsOf(load<HealthProfilePage>("profileWithExcluded"))) {
    add(question.title);
    add(question.placeholder);
    for (const auto& answer : question.answers.value_or(std::vector<QuestionaryAnswer>{})) {
      add(answer.title);
    }
    for (const auto& label : question.closedAnswers.value_or(std::vector<std::string>{})) {
      texts.insert(label);
    }
  }
  for (const auto& phase : load<AyunoPhase>("fasesAyuno")) {
    add(phase.name);
    add(phase.timeInfo);
    add(phase.helpText);
  }
  for (const auto& screen : load<WaitScreen>("wait_screens"))
    texts.insert(screen.text);
  for (const auto& entry : fs::directory_iterator(NUTRITION_RESOURCES_DIR)) {
    const std::string name = entry.path().stem().string();
    if (!name.starts_with("info_")) continue;
    for (const auto& item : load<AlertItem>(name)) {
      add(item.title);
      add(item.text);
    }
  }
  return texts;
}

// Every text the code looks up: the literal argument of each localized("...") call.
std::set<std::string> codeTexts() {
  std::set<std::string> texts;
  const std::regex call(R"re(localized\("((?:[^"\\]|\\.)*)"\))re");
  for (const auto& root : {"src", "apps"}) {
    for (const auto& entry :
         fs::recursive_directory_iterator(fs::path(NUTRITION_SOURCE_DIR) / root)) {
      if (entry.path().extension() != ".cpp" && entry.path().extension() != ".h") continue;
      std::ifstream in(entry.path());
      std::stringstream contents;
      contents << in.rdbuf();
      const std::string text = contents.str();
      for (std::sregex_iterator it(text.begin(), text.end(), call), end; it != end; ++it) {
        texts.insert((*it)[1].str());
      }
    }
  }
  return texts;
}

TEST(Resources, QuestionnairesCoverEveryAnswerTypeAndHandledIdentifier) {
  const auto withExcluded = load<HealthProfilePage>("profileWithExcluded");
  const auto withoutExcluded = load<HealthProfilePage>("profileWithoutExcluded");
  const std::set<std::string> handled{"gender",
                                      "dateOfBirth",
                                      "height",
                                      "algorithm",
                                      "difficulty",
                                      "countries",
                                      "preferences",
                                      "intollerance",
                                      "excludedAliment",
                                      "physicalIntensityID",
                                      "desiredBalanceID",
                                      "selectedIntakes",
                                      "distributionByIntakeID",
                                      "lunchDishes",
                                      "dinnerDishes",
                                      "intermittentFastingID"};
  std::set<AnswerType> types;
  std::set<std::string> identifiers;
  for (const auto& question : questionsOf(withExcluded)) {
    ASSERT_TRUE(question.identifier && question.type && question.title);
    EXPECT_TRUE(handled.contains(*question.identifier)) << *question.identifier;
    identifiers.insert(*question.identifier);
    types.insert(*question.type);
    if (question.info) {
      EXPECT_FALSE(load<AlertItem>(*question.info).empty()) << *question.info;
    }
  }
  EXPECT_EQ(types.size(), 7u);
  EXPECT_TRUE(identifiers.contains("intermittentFastingID"));

  // Vegan and vegetarian are answered on the second page.
  const auto secondPage = questionsOf({withExcluded.at(1)});
  EXPECT_TRUE(std::any_of(secondPage.begin(), secondPage.end(),
                          [](const auto& q) { return q.identifier == "preferences"; }));

  // The two files differ only in the excluded-aliment question.
  auto stripped = questionsOf(withExcluded);
  std::erase_if(stripped, [](const auto& q) { return q.identifier == "excludedAliment"; });
  EXPECT_EQ(stripped, questionsOf(withoutExcluded));
  EXPECT_EQ(questionsOf(withoutExcluded).size() + 1, questionsOf(withExcluded).size());
}

TEST(Resources, FastingPhasesHaveSixBandsWithEveryText) {
  const auto phases = load<AyunoPhase>("fasesAyuno");
  ASSERT_EQ(phases.size(), 6u);
  const std::vector<std::int64_t> hours{0, 3, 9, 11, 14, 16};
  for (std::size_t i = 0; i < phases.size(); ++i) {
    SCOPED_TRACE(i);
    EXPECT_EQ(phases[i].hour, hours[i]);
    EXPECT_TRUE(phases[i].name && phases[i].timeInfo && phases[i].image && phases[i].helpText);
  }
  EXPECT_EQ(load<WaitScreen>("wait_screens").size(), 4u);
}

TEST(Resources, StringTablesAreCompleteInEveryLanguage) {
  std::set<std::string> needed = resourceTexts();
  const auto code = codeTexts();
  EXPECT_GE(code.size(), 10u);  // the scan found the code's lookups
  needed.insert(code.begin(), code.end());

  std::optional<std::set<std::string>> firstKeys;
  for (const char* language : {"es", "en", "pt", "de", "ca", "it", "fr"}) {
    SCOPED_TRACE(language);
    const auto bytes =
        bundle().resource(std::string("strings/NutritionStrings.") + language, "json");
    ASSERT_TRUE(bytes.has_value());
    const auto table =
        json::decodeDocument<std::map<std::string, std::string, std::less<>>>(*bytes);
    ASSERT_TRUE(table.ok()) << table.error().message;
    std::set<std::string> keys;
    for (const auto& [key, value] : *table) {
      keys.insert(key);
      EXPECT_FALSE(value.empty()) << key;
      for (const char* placeholder : {"%d", "%@"}) {
        EXPECT_EQ(key.find(placeholder) == std::string::npos,
                  value.find(placeholder) == std::string::npos)
            << key;
      }
    }
    for (const auto& text : needed)
      EXPECT_TRUE(keys.contains(text)) << "missing: " << text;
    if (firstKeys) {
      EXPECT_EQ(keys, *firstKeys);
    }
    firstKeys = keys;
  }
}

}  // namespace
}  // namespace nutrition
