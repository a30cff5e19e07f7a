// The data holder's catalogues: held once downloaded, downloaded while not held.

#include "logic/NutritionUtils.h"

namespace nutrition {

template <class T, class Fetch>
void NutritionUtils::cachedOrDownloaded(std::optional<std::vector<T>> NutritionUtils::*field,
                                        Fetch fetch, Completion<std::vector<T>> completion) {
  if (this->*field) {
    completion(this->*field);
    return;
  }
  (service_.*fetch)(onMain<std::vector<T>>(
      [this, field, completion = std::move(completion)](std::optional<std::vector<T>> list) {
        if (list) this->*field = list;
        completion(std::move(list));
      }));
}

void NutritionUtils::getDishOrders(Completion<std::vector<NutritionDishOrder>> completion) {
  cachedOrDownloaded(&NutritionUtils::dishOrders, &DataServiceNutrition::getDishOrder,
                     std::move(completion));
}

void NutritionUtils::getPreferences(Completion<std::vector<NutritionPreference>> completion) {
  cachedOrDownloaded(&NutritionUtils::preferences, &DataServiceNutrition::getPreferences,
                     std::move(completion));
}

void NutritionUtils::getFastings(Completion<std::vector<IntermittentFasting>> completion) {
  cachedOrDownloaded(&NutritionUtils::fastings, &DataServiceNutrition::getIntermitentFasting,
                     std::move(completion));
}

void NutritionUtils::getDistributions(Completion<std::vector<NutritionDistribution>> completion) {
  cachedOrDownloaded(&NutritionUtils::distributions, &DataServiceNutrition::getDistributions,
                     std::move(completion));
}

void NutritionUtils::getIntakes(Completion<std::vector<NutritionIntake>> completion) {
  cachedOrDownloaded(&NutritionUtils::intakes, &DataServiceNutrition::getIntakes,
                     std::move(completion));
}

void NutritionUtils::getBalances(Completion<std::vector<NutritionBalance>> completion) {
  cachedOrDownloaded(&NutritionUtils::balances, &DataServiceNutrition::getBalances,
                     std::move(completion));
}

void NutritionUtils::getActivityIntensity(Completion<std::vector<PhysicalIntensity>> completion) {
  cachedOrDownloaded(&NutritionUtils::physicalIntensity, &DataServiceNutrition::getPhysicalActivity,
                     std::move(completion));
}

void NutritionUtils::getExcludedAliments(Completion<std::vector<NutritionExcluded>> completion) {
  cachedOrDownloaded(&NutritionUtils::excludedAliments, &DataServiceNutrition::getExcludedAliments,
                     std::move(completion));
}

void NutritionUtils::getDistributionByID(std::int64_t id,
                                         Completion<NutritionDistribution> completion) {
  getDistributions([id, completion = std::move(completion)](
                       std::optional<std::vector<NutritionDistribution>> list) {
    if (list) {
      for (const auto& distribution : *list) {
        if (distribution.distributionByIntakeID == id) {
          completion(distribution);
          return;
        }
      }
    }
    completion(std::nullopt);
  });
}

}  // namespace nutrition
