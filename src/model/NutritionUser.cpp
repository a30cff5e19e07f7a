#include "model/NutritionUser.h"

#include <algorithm>
#include <array>
#include <span>

#include "base/Saturating.h"
#include "platform/Calendar.h"

namespace nutrition {
namespace {

bool isMale(const NutritionUser& user) {
  return user.gender == NutritionGender::male;
}

}  // namespace

NutritionUser::NutritionUser(const NutritionUserResponse& response) {
  userID = response.userID;
  memberID = response.memberID;
  clientID = response.clientID;
  dateOfBirth = response.dateOfBirth;
  gender = response.gender;
  difficulty = response.difficulty;
  physicalIntensityID = response.physicalIntensityID;
  dailyKcal = response.dailyKcal;
  targetWeight = response.targetWeight;
  weight = response.weight;
  height = response.height;
  desiredBalanceID = response.desiredBalanceID;
  trainingID = response.trainingID;
  countries = response.countryIDS;
  preferences = response.preferenceIDS;
  dietID = response.dietID;
  distributionByIntakeID = response.distributionByIntakeID;
  selectedIntakes = response.selectedIntakes;
  excludedAliments = response.excludedAlimentIDS;
  intermittentFastingID = response.intermittentFastingID;
}

NutritionUser NutritionUser::empty() {
  NutritionUser user;
  user.algorithm.reset();
  user.difficulty.reset();
  user.trainingID.reset();
  user.preferences.reset();
  user.dietID.reset();
  user.selectedIntakes.reset();
  user.regenerateMenu.reset();
  return user;
}

double NutritionUser::getIdealWeight() const {
  const double base = isMale(*this) ? 50.0 : 45.5;
  const double heightTerm = height ? (static_cast<double>(*height) - 150.0) * 0.92 : 18.4;
  return base + heightTerm;
}

double NutritionUser::getIdealWeightKcal() const {
  const double factor = isMale(*this) ? 22.0 : 21.0;
  const double metres = height ? static_cast<double>(*height) / 100.0 : 1.7;
  return factor * metres * metres;
}

double NutritionUser::getActivityNumber() const {
  const bool male = isMale(*this);
  switch (physicalIntensityID.value_or(0)) {
    case 1:
      return 30;
    case 2:
      return male ? 35 : 33;
    case 3:
      return male ? 40 : 35;
    case 4:
      return male ? 46 : 40;
    default:
      return male ? 52 : 45;
  }
}

double NutritionUser::getYearsFactor(Date now, const Calendar& calendar) const {
  const std::int64_t age = calendar.yearsBetween(dateOfBirth.value_or(now), now);
  if (age <= 40) return 1.0;
  if (age <= 50) return 0.95;
  if (age <= 60) return 0.9;
  if (age <= 70) return 0.8;
  return 0.7;
}

double NutritionUser::getKcalForDiet(Date now, const Calendar& calendar) const {
  const double activity = getActivityNumber();
  const double ideal = getIdealWeightKcal();
  const double actual = static_cast<double>(weight.value_or(0));
  const double yearsFactor = getYearsFactor(now, calendar);
  const double adjustedWeight = ideal + (actual - ideal) * 0.25;
  const double base = activity * adjustedWeight;
  switch (desiredBalanceID.value_or(0)) {
    case 2:
      return yearsFactor * base;
    case 1:
      return yearsFactor * base * 0.8;
    default:
      return yearsFactor * base * 1.2;
  }
}

void NutritionUser::setTargetWeightAndDailyKcal(Date now, const Calendar& calendar) {
  targetWeight = saturatingToInt64(getIdealWeight());
  dailyKcal = getKcalForDiet(now, calendar);
}

void NutritionUser::updateDistributionForIntakes() {
  struct Rule {
    std::array<std::int64_t, 5> intakes;
    std::size_t count;
    std::int64_t distribution;
  };
  static constexpr std::array<Rule, 8> kRules{{
      {{3, 5}, 2, 2},
      {{1, 3, 5}, 3, 3},
      {{1, 3, 4, 5}, 4, 4},
      {{1, 2, 3, 4, 5}, 5, 5},
      {{1, 2, 3, 5}, 4, 7},
      {{2, 3, 4, 5}, 4, 8},
      {{3, 4, 5}, 3, 9},
      {{2, 3, 5}, 3, 10},
  }};
  constexpr std::int64_t kFallback = 2;
  distributionByIntakeID = kFallback;
  if (!selectedIntakes) return;

  std::vector<std::int64_t> chosen;
  chosen.reserve(selectedIntakes->size());
  for (const auto& selected : *selectedIntakes)
    chosen.push_back(selected.intake.value_or(0));

  for (const auto& rule : kRules) {
    const std::span<const std::int64_t> intakes(rule.intakes.data(), rule.count);
    if (std::equal(intakes.begin(), intakes.end(), chosen.begin(), chosen.end())) {
      distributionByIntakeID = rule.distribution;
      return;
    }
  }
}

BariatricoPhase NutritionUser::getPhaseForOperationDate(Date date, Date now,
                                                        const Calendar& calendar) {
  const std::int64_t days = calendar.daysBetween(date, now);
  if (days < 1) return BariatricoPhase::phase0;
  if (days <= 28) return BariatricoPhase::phase1;
  if (days <= 56) return BariatricoPhase::phase2;
  if (days <= 84) return BariatricoPhase::phase3;
  return BariatricoPhase::phase4;
}

}  // namespace nutrition
