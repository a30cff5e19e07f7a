// The answers a questionnaire field offers, made from the data holder's catalogues.

#include <algorithm>

#include "logic/NutritionUtils.h"

namespace nutrition {
namespace {

// A catalogue completion that hands `completion` one answer per entry (title = name,
// score = identifier), after `adjust` has filtered or ordered the entries.
template <class T, class Adjust>
auto answering(NutritionUtils::Completion<std::vector<QuestionaryAnswer>> completion,
               std::optional<std::string> T::*name, std::optional<std::int64_t> T::*id,
               Adjust adjust) {
  return
      [completion = std::move(completion), name, id, adjust](std::optional<std::vector<T>> list) {
        if (!list) return completion(std::nullopt);
        adjust(*list);
        std::vector<QuestionaryAnswer> answers;
        answers.reserve(list->size());
        for (const auto& entry : *list)
          answers.push_back({entry.*name, entry.*id, false});
        completion(std::move(answers));
      };
}

template <class T>
auto answering(NutritionUtils::Completion<std::vector<QuestionaryAnswer>> completion,
               std::optional<std::string> T::*name, std::optional<std::int64_t> T::*id) {
  return answering(std::move(completion), name, id, [](std::vector<T>&) {});
}

}  // namespace

void NutritionUtils::getAnswersFor(std::string_view field,
                                   Completion<std::vector<QuestionaryAnswer>> completion) {
  const auto preferencesOfKind = [](bool intolerances) {
    return [intolerances](std::vector<NutritionPreference>& list) {
      std::erase_if(list, [&](const NutritionPreference& p) {
        return (p.preferenceType == PreferenceType::intollerance) != intolerances;
      });
    };
  };
  const auto preference = [&](bool intolerances) {
    return answering(completion, &NutritionPreference::preferenceName,
                     &NutritionPreference::preferenceID, preferencesOfKind(intolerances));
  };

  if (field == "intollerance") {
    getPreferences(preference(true));
  } else if (field == "excludedAliment") {
    getExcludedAliments(answering(completion, &NutritionExcluded::excludedAlimentName,
                                  &NutritionExcluded::excludedAlimentId));
  } else if (field == "preferences") {
    getPreferences(preference(false));
  } else if (field == "physicalIntensityID") {
    getActivityIntensity(answering(completion, &PhysicalIntensity::physicalIntensityName,
                                   &PhysicalIntensity::physicalIntensityID));
  } else if (field == "desiredBalanceID") {
    getBalances(answering(completion, &NutritionBalance::desiredBalanceName,
                          &NutritionBalance::desiredBalanceID));
  } else if (field == "selectedIntakes") {
    getIntakes(answering(completion, &NutritionIntake::name, &NutritionIntake::intakeId));
  } else if (field == "distributionByIntakeID") {
    getDistributions(answering(completion, &NutritionDistribution::distributionByIntakeName,
                               &NutritionDistribution::distributionByIntakeID,
                               [](std::vector<NutritionDistribution>& list) {
                                 std::stable_sort(
                                     list.begin(), list.end(), [](const auto& a, const auto& b) {
                                       return a.distributionByIntakeID < b.distributionByIntakeID;
                                     });
                               }));
  } else if (field == "intermittentFastingID") {
    getFastings(answering(completion, &IntermittentFasting::intermittentFastingName,
                          &IntermittentFasting::intermittentFastingID,
                          [](std::vector<IntermittentFasting>& list) {
                            std::erase_if(list, [](const auto& f) { return !f.enabled; });
                          }));
  } else if (field == "lunchDishes" || field == "dinnerDishes") {
    getDishOrders(answering(completion, &NutritionDishOrder::dishOrderName,
                            &NutritionDishOrder::dishOrderID));
  } else if (field == "difficulty") {
    completion(std::vector<QuestionaryAnswer>{{strings_.localized("Fácil"), 1, false},
                                              {strings_.localized("Intermedia"), 2, false},
                                              {strings_.localized("Elaborada"), 3, false}});
  } else {
    completion(std::nullopt);
  }
}

}  // namespace nutrition
