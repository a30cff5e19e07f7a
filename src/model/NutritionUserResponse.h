#pragma once
// The member as the backend returns it: one element of the array that "api/user" answers.
// Its list keys differ from the request record's ("CountryIds" and "PreferenceIds" here,
// "Countries" and "Preferences" there); that asymmetry is the backend's and is kept.

#include <cstdint>
#include <optional>
#include <string>
#include <tuple>
#include <vector>

#include "base/Date.h"
#include "json/JsonFields.h"
#include "model/NutritionEnums.h"
#include "model/SelectedIntake.h"

namespace nutrition {

struct NutritionUserResponse {
  std::optional<std::string> id;
  std::optional<std::string> userID;
  std::optional<std::string> memberID;
  std::optional<std::int64_t> clientID;
  std::optional<std::int64_t> intermittentFastingID;
  std::optional<Date> dateOfBirth;
  std::optional<std::int64_t> difficulty;
  std::optional<NutritionGender> gender;
  std::optional<std::int64_t> physicalIntensityID;
  std::optional<std::int64_t> targetWeight;
  std::optional<std::int64_t> weight;
  std::optional<double> dailyKcal;
  std::optional<std::int64_t> height;
  std::optional<std::int64_t> desiredBalanceID;
  std::optional<std::int64_t> trainingID;
  std::optional<std::int64_t> dietID;
  std::optional<std::int64_t> distributionByIntakeID;
  std::optional<std::string> clientAlias;
  std::optional<std::vector<SelectedIntake>> selectedIntakes;
  std::optional<std::vector<std::int64_t>> excludedAlimentIDS;
  std::optional<std::vector<std::int64_t>> preferenceIDS;
  std::optional<std::vector<std::int64_t>> countryIDS;

  bool operator==(const NutritionUserResponse&) const = default;

  static constexpr auto jsonFields() {
    using R = NutritionUserResponse;
    using json::field;
    return std::tuple{
        field("_id", &R::id),
        field("UserId", &R::userID),
        field("MemberId", &R::memberID),
        field("ClientId", &R::clientID),
        field("DateOfBirth", &R::dateOfBirth),
        field("Difficulty", &R::difficulty),
        field("Gender", &R::gender),
        field("PhysicalIntensityId", &R::physicalIntensityID),
        field("DailyKcal", &R::dailyKcal),
        field("TargetWeight", &R::targetWeight),
        field("Weight", &R::weight),
        field("Height", &R::height),
        field("DesiredBalanceId", &R::desiredBalanceID),
        field("TrainingId", &R::trainingID),
        field("DietId", &R::dietID),
        field("DistributionByIntakeId", &R::distributionByIntakeID),
        field("ClientAlias", &R::clientAlias),
        field("ExcludedAlimentIds", &R::excludedAlimentIDS),
        field("PreferenceIds", &R::preferenceIDS),
        field("CountryIds", &R::countryIDS),
        field("SelectedIntakes", &R::selectedIntakes),
        field("IntermittentFastingId", &R::intermittentFastingID),
    };
  }
};

}  // namespace nutrition
