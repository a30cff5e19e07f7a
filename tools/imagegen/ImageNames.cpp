#include "tools/imagegen/ImageNames.h"

#include <algorithm>
#include <set>

#include "base/File.h"
#include "base/Log.h"
#include "model/AlertItem.h"
#include "model/AyunoPhase.h"
#include "model/HealthProfile.h"
#include "model/ModelCodec.h"
#include "model/WaitScreen.h"
#include "sandbox/SeedData.h"
#include "ui/BundleImages.h"

namespace nutrition::imagegen {
namespace {

template <class T>
std::vector<T> readArray(const std::filesystem::path& file) {
  const auto text = readFile(file);
  if (!text) fatal("cannot read " + file.string());
  auto decoded = decodeJsonArray<T>(*text);
  if (!decoded) fatal("cannot decode " + file.string());
  return std::move(*decoded);
}

// The catalogue that offers the rows of a list question without answers of its own.
const std::vector<sandbox::SeedEntry>* catalogueFor(const std::string& identifier) {
  const auto& seed = sandbox::SeedData::embedded().catalogues;
  if (identifier == "preferences" || identifier == "intollerance") return &seed.preferences;
  if (identifier == "excludedAliment") return &seed.excludedAliments;
  if (identifier == "physicalIntensityID") return &seed.physicalIntensities;
  if (identifier == "desiredBalanceID") return &seed.balances;
  if (identifier == "selectedIntakes") return &seed.intakes;
  if (identifier == "distributionByIntakeID") return &seed.distributions;
  if (identifier == "intermittentFastingID") return &seed.fastings;
  if (identifier == "lunchDishes" || identifier == "dinnerDishes") return &seed.dishOrders;
  return nullptr;
}

}  // namespace

std::vector<RequiredImage> requiredImages(const std::filesystem::path& resources) {
  std::set<RequiredImage> names;
  auto add = [&](std::string name, ImageKind kind) { names.insert({std::move(name), kind}); };
  for (auto name : kScreenImages)
    add(std::string(name), ImageKind::screen);
  for (const auto& phase : readArray<AyunoPhase>(resources / "fasesAyuno.json")) {
    if (phase.image) add(*phase.image, ImageKind::phaseIcon);
  }
  for (const auto& screen : readArray<WaitScreen>(resources / "wait_screens.json")) {
    add(screen.image, ImageKind::waitScreen);
  }
  for (const auto& entry : std::filesystem::directory_iterator(resources)) {
    const std::string file = entry.path().filename().string();
    if (!file.starts_with("info_") || entry.path().extension() != ".json") continue;
    for (const auto& item : readArray<AlertItem>(entry.path())) {
      if (item.icon) add(*item.icon, ImageKind::infoIcon);
    }
  }
  for (const char* questionnaire : {"profileWithExcluded.json", "profileWithoutExcluded.json"}) {
    for (const auto& page : readArray<HealthProfilePage>(resources / questionnaire)) {
      for (const auto& panel : page.panels.value_or(std::vector<HealthProfilePanel>{})) {
        for (const auto& question : panel.questions) {
          if (question.type != AnswerType::list || !question.identifier) continue;
          const std::string& identifier = *question.identifier;
          for (const auto& answer : question.answers.value_or(std::vector<QuestionaryAnswer>{})) {
            if (answer.score) add(checkImageName(identifier, *answer.score), ImageKind::check);
          }
          if (const auto* catalogue = catalogueFor(identifier)) {
            for (const auto& row : *catalogue)
              add(checkImageName(identifier, row.id), ImageKind::check);
          }
        }
      }
    }
  }
  return {names.begin(), names.end()};
}

}  // namespace nutrition::imagegen
