// What a Swift host sees of the iOS framework, checked from its public headers: the names and
// argument labels the product documents, the enumeration cases with the raw values the core
// sends, and the README's Swift sample calling only what the headers declare. (Clang checks
// each annotation against its method's arity when the iOS type-check compiles the headers.)

#include <gtest/gtest.h>

#include <cstdint>
#include <fstream>
#include <map>
#include <regex>
#include <set>
#include <sstream>
#include <string>
#include <vector>

#include "base/RawEnum.h"
#include "model/NutritionEnums.h"

namespace nutrition {
namespace {

// The product's Swift interface of NutritionSDK, as host apps write it.
const std::set<std::string> kFacadeSwiftNames = {
    "start(with:appID:password:)",
    "startSession(appID:password:)",
    "setMemberId(_:)",
    "logout()",
    "setURL(url:)",
    "setMainColor(color:)",
    "setNavigationBarColor(color:)",
    "setNavigationTintColor(color:)",
    "setNavigationTitle(title:)",
    "preferLargeTitlte(_:)",
    "setLanguage(_:)",
    "setCountry(_:)",
    "setDietType(diet:)",
    "setShortProfile(_:)",
    "setWaitingSecodsForScreen(_:)",
    "setIntermittentFastingEnable(_:)",
    "getProfile()",
    "getUserYear()",
    "getUserHeight()",
    "getUserWeight()",
    "getUserGender()",
    "isProfileFilled()",
    "updateProfile(sex:height:weigth:birthDate:generateMenu:needsWaitingScreens:)",
    "updateProfile(sex:height:weigth:birthDate:activityLevel:operationDate:generateMenu:"
    "needsWaitingScreens:)",
    "hasIntermittentFasting()",
    "isDoingIntermittentFasting()",
    "getIntermittentFastingPhase()",
    "showNutritionModule()",
    "getNutritionModule(_:)",
    "getWeekMenu(_:)",
    "showProfile()",
    "getNutritionProfile(_:)",
    "showTodayIntake(_:)",
    "getTodayMenu(_:)",
    "getTodayMenu()",
    "getNumberOfIntakes(_:)",
    "getAyunoController(_:)",
    "getAyunoPhaseInfo(_:)",
};

// Members Swift reads as properties rather than calls.
const std::set<std::string> kFacadeProperties = {"sharedInstance", "showExcludedAliments"};

const std::set<std::string> kPublicTypes = {"NutritionSDK",      "NutritionGender",
                                            "NutritionLanguage", "NutritionUserCountry",
                                            "DietType",          "PublicProfile",
                                            "NutritionDay",      "NutritionIntake",
                                            "NutritionDish",     "NutritionScreenCompletion"};

std::string read(const std::string& relativePath) {
  std::ifstream file(std::string(NUTRITION_SOURCE_DIR) + "/" + relativePath);
  EXPECT_TRUE(file) << relativePath;
  std::stringstream text;
  text << file.rdbuf();
  return text.str();
}

std::string header(const std::string& name) {
  return read("platform/ios/include/NutritionKit/" + name);
}

// Every match of `pattern`'s first group in `text`.
std::vector<std::string> captures(const std::string& text, const std::regex& pattern) {
  std::vector<std::string> found;
  for (std::sregex_iterator it(text.begin(), text.end(), pattern), end; it != end; ++it) {
    found.push_back((*it)[1].str());
  }
  return found;
}

// The body of `@interface name ... @end` in `text`.
std::string interfaceOf(const std::string& text, const std::string& name) {
  const std::size_t start = text.find("@interface " + name + " ");
  if (start == std::string::npos) return {};
  return text.substr(start, text.find("@end", start) - start);
}

TEST(SwiftInterface, FacadeMethodsCarryExactlyTheProductsSwiftNames) {
  const std::string facade = interfaceOf(header("NutritionSDK.h"), "NutritionSDK");
  ASSERT_FALSE(facade.empty());

  // Each method declaration (from "- (" to its ";") names itself for Swift.
  std::set<std::string> declared;
  const std::regex method(R"(\n- \(([^;]*);)");
  for (const std::string& declaration : captures(facade, method)) {
    std::smatch name;
    ASSERT_TRUE(std::regex_search(declaration, name, std::regex(R"(NS_SWIFT_NAME\(([^)]*\)))")) ||
                declaration.find("NS_UNAVAILABLE") != std::string::npos)
        << "no Swift name: " << declaration;
    if (!name.empty()) {
      EXPECT_TRUE(declared.insert(name[1].str()).second) << "twice: " << name[1];
    }
  }
  EXPECT_EQ(declared, kFacadeSwiftNames);

  std::set<std::string> properties;
  for (const std::string& property :
       captures(facade, std::regex(R"(@property\([^)]*\) \w+\s*\*?\s*(\w+);)"))) {
    properties.insert(property);
  }
  EXPECT_EQ(properties, kFacadeProperties);
  EXPECT_NE(facade.find("@property(class, nonatomic, readonly) NutritionSDK* sharedInstance;"),
            std::string::npos);
}

TEST(SwiftInterface, PublicTypesAndNullabilityAreDeclaredForSwift) {
  std::set<std::string> types;
  std::string all;
  for (const char* name :
       {"NutritionSDK.h", "NutritionTypes.h", "PublicProfile.h", "NutritionDay.h"}) {
    const std::string text = header(name);
    SCOPED_TRACE(name);
    EXPECT_NE(text.find("NS_ASSUME_NONNULL_BEGIN"), std::string::npos);
    EXPECT_NE(text.find("NS_ASSUME_NONNULL_END"), std::string::npos);
    // Plain Objective-C: nothing of C++ reaches the host.
    EXPECT_EQ(text.find("std::"), std::string::npos);
    EXPECT_EQ(text.find("namespace"), std::string::npos);
    EXPECT_EQ(text.find("#include"), std::string::npos);
    all += text;
  }
  // Types are named for Swift where they are declared: `NS_SWIFT_NAME(T)` right after a
  // typedef or before an @interface.
  for (const std::string& type :
       captures(all, std::regex(R"(NS_SWIFT_NAME\(([A-Z]\w*)\)\s*(?:@interface|;))"))) {
    types.insert(type);
  }
  EXPECT_EQ(types, kPublicTypes);

  // The umbrella header brings every public header.
  const std::string umbrella = header("NutritionKit.h");
  for (const char* name :
       {"NutritionSDK.h", "NutritionTypes.h", "PublicProfile.h", "NutritionDay.h"}) {
    EXPECT_NE(umbrella.find(std::string("#import <NutritionKit/") + name + ">"), std::string::npos)
        << name;
  }
}

// The Swift name and raw value of each case of an enumeration, from the header (integer cases)
// or from the header's constants and their definitions (string cases).
std::map<std::string, std::string> integerCases(const std::string& prefix) {
  std::map<std::string, std::string> cases;
  const std::regex line(prefix + R"(\w+ NS_SWIFT_NAME\((\w+)\) = (\d+),)");
  const std::string text = header("NutritionTypes.h");
  for (std::sregex_iterator it(text.begin(), text.end(), line), end; it != end; ++it) {
    cases[(*it)[1].str()] = (*it)[2].str();
  }
  return cases;
}

std::map<std::string, std::string> stringCases(const std::string& type) {
  std::map<std::string, std::string> swiftNameOfConstant;
  const std::string text = header("NutritionTypes.h");
  const std::regex declaration(type + R"( const (\w+) NS_SWIFT_NAME\((\w+)\);)");
  for (std::sregex_iterator it(text.begin(), text.end(), declaration), end; it != end; ++it) {
    swiftNameOfConstant[(*it)[1].str()] = (*it)[2].str();
  }
  std::map<std::string, std::string> cases;
  const std::string definitions = read("platform/ios/NutritionRecords.mm");
  const std::regex definition(type + R"re( const (\w+) = @"([^"]*)";)re");
  for (std::sregex_iterator it(definitions.begin(), definitions.end(), definition), end; it != end;
       ++it) {
    const auto swiftName = swiftNameOfConstant.find((*it)[1].str());
    EXPECT_NE(swiftName, swiftNameOfConstant.end()) << "undeclared " << (*it)[1];
    if (swiftName != swiftNameOfConstant.end()) cases[swiftName->second] = (*it)[2].str();
  }
  EXPECT_EQ(cases.size(), swiftNameOfConstant.size()) << type << ": a constant has no value";
  return cases;
}

template <class E>
std::map<std::string, std::string> coreCases(
    const std::vector<std::pair<std::string, E>>& swiftNames) {
  std::map<std::string, std::string> cases;
  for (const auto& [name, value] : swiftNames) {
    std::ostringstream raw;
    raw << rawValue(value);
    cases[name] = raw.str();
  }
  return cases;
}

TEST(SwiftInterface, EnumerationCasesCarryTheCoresRawValues) {
  using G = NutritionGender;
  using L = NutritionLanguage;
  using C = NutritionUserCountry;
  EXPECT_EQ(stringCases("NutritionGender"),
            coreCases<G>({{"male", G::male}, {"female", G::female}}));
  EXPECT_EQ(stringCases("NutritionLanguage"), coreCases<L>({{"es", L::es},
                                                            {"en", L::en},
                                                            {"pt", L::pt},
                                                            {"de", L::de},
                                                            {"ca", L::ca},
                                                            {"it", L::it},
                                                            {"fr", L::fr}}));
  EXPECT_EQ(integerCases("NutritionUserCountry"), coreCases<C>({{"spain", C::spain},
                                                                {"portugal", C::portugal},
                                                                {"colombia", C::colombia},
                                                                {"uk", C::uk},
                                                                {"france", C::france},
                                                                {"usa", C::usa},
                                                                {"germany", C::germany},
                                                                {"italy", C::italy},
                                                                {"cataluna", C::cataluna},
                                                                {"spainEUS", C::spainEUS},
                                                                {"usa2", C::usa2}}));
  EXPECT_EQ(integerCases("DietType"), coreCases<DietType>({{"standard", DietType::standard},
                                                           {"diabetes", DietType::diabetes}}));
}

// The Swift name of each call in `code`: `x.start(with: a, appID: b, password: c)` gives
// "start(with:appID:password:)", a trailing closure `x.getWeekMenu { ... }` "getWeekMenu(_:)".
std::vector<std::string> swiftCalls(const std::string& code) {
  std::vector<std::string> calls;
  const std::regex call(R"(\.(\w+)\s*([({]))");
  for (std::sregex_iterator it(code.begin(), code.end(), call), end; it != end; ++it) {
    const std::string name = (*it)[1].str();
    if ((*it)[2].str() == "{") {
      calls.push_back(name + "(_:)");
      continue;
    }
    // The arguments up to the matching parenthesis, split at top-level commas.
    std::size_t position = static_cast<std::size_t>(it->position(2)) + 1;
    int depth = 0;
    std::string labels;
    std::string argument;
    auto closeArgument = [&] {
      std::smatch label;
      const std::string trimmed = std::regex_replace(argument, std::regex(R"(^\s+)"), "");
      if (trimmed.empty()) return;
      labels += std::regex_search(trimmed, label, std::regex(R"(^(\w+):)")) ? label[1].str() + ":"
                                                                            : std::string("_:");
    };
    for (; position < code.size(); ++position) {
      const char c = code[position];
      if (depth == 0 && c == ')') break;
      if (c == '(' || c == '[' || c == '{') ++depth;
      if (c == ')' || c == ']' || c == '}') --depth;
      if (depth == 0 && c == ',') {
        closeArgument();
        argument.clear();
        continue;
      }
      argument += c;
    }
    closeArgument();
    // A trailing closure after the parentheses is one more unlabelled argument.
    const std::size_t next = code.find_first_not_of(" \t", position + 1);
    if (next != std::string::npos && code[next] == '{') labels += "_:";
    calls.push_back(name + "(" + labels + ")");
  }
  return calls;
}

TEST(SwiftInterface, ReadmeSampleCallsOnlyDeclaredNames) {
  // The parser itself, on the shapes the sample uses.
  EXPECT_EQ(swiftCalls(R"(sdk.start(with: id, appID: "a", password: p.trim()) sdk.logout()
                          sdk.getAyunoController { vc in } sdk.getTodayMenu(x) { d in })"),
            (std::vector<std::string>{"start(with:appID:password:)", "trim()", "logout()",
                                      "getAyunoController(_:)", "getTodayMenu(_:_:)"}));

  const std::string readme = read("README.md");
  const std::size_t start = readme.find("```swift\n");
  ASSERT_NE(start, std::string::npos) << "the README has no Swift sample";
  const std::size_t end = readme.find("```", start + 9);
  const std::string sample = readme.substr(start + 9, end - start - 9);

  // Each call on the facade, read from where it starts (it may span lines).
  std::set<std::string> facadeCalls;
  const std::regex onFacade(R"((?:NutritionSDK\.sharedInstance|\bsdk)\.\w+\s*[({])");
  for (std::sregex_iterator it(sample.begin(), sample.end(), onFacade), last; it != last; ++it) {
    const std::string rest = sample.substr(static_cast<std::size_t>(it->position()));
    facadeCalls.insert(swiftCalls(rest.substr(rest.find('.'))).front());
  }
  EXPECT_GE(facadeCalls.size(), 8u) << "the sample shows too little of the facade";
  for (const std::string& name : facadeCalls) {
    EXPECT_TRUE(kFacadeSwiftNames.count(name) == 1)
        << "the sample calls " << name << ", which the headers do not declare";
  }
}

}  // namespace
}  // namespace nutrition
