#pragma once
// The member as NutritionKit sends it to the backend (the body of the create and update
// requests), and the energy and weight calculations made from it before it is sent.
//
// A default-constructed NutritionUser carries the starting defaults (algorithm 2, difficulty 2,
// training 1, diet 1, empty preferences and intakes, regenerate on); `empty()` has every field
// absent, as a record decoded from "{}" has.

#include <cstdint>
#include <optional>
#include <string>
#include <tuple>
#include <vector>

#include "base/Date.h"
#include "json/JsonFields.h"
#include "model/BariatricoPhase.h"
#include "model/NutritionEnums.h"
#include "model/NutritionUserResponse.h"
#include "model/SelectedIntake.h"

namespace nutrition {

class Calendar;

struct NutritionUser {
  std::optional<std::string> userID;
  std::optional<std::string> memberID;
  std::optional<std::int64_t> clientID;
  std::optional<std::int64_t> algorithm = 2;
  std::optional<std::int64_t> difficulty = 2;
  std::optional<std::string> userName;
  std::optional<std::string> userSurnames;
  std::optional<std::string> password;
  std::optional<Date> dateOfBirth;
  std::optional<NutritionGender> gender;
  std::optional<std::int64_t> physicalIntensityID;
  std::optional<std::int64_t> targetWeight;
  std::optional<std::int64_t> weight;
  std::optional<std::int64_t> height;
  std::optional<std::int64_t> desiredBalanceID;
  std::optional<double> dailyKcal;
  std::optional<std::int64_t> trainingID = 1;
  std::optional<std::vector<std::int64_t>> countries;
  std::optional<std::vector<std::int64_t>> preferences = std::vector<std::int64_t>{};
  std::optional<std::int64_t> dietID = 1;
  std::optional<std::int64_t> distributionByIntakeID;
  std::optional<std::vector<SelectedIntake>> selectedIntakes = std::vector<SelectedIntake>{};
  std::optional<std::vector<std::int64_t>> excludedAliments;
  std::optional<bool> regenerateMenu = true;
  std::optional<std::int64_t> intermittentFastingID;

  NutritionUser() = default;
  // The defaults above, then every profile field copied from the backend's record.
  explicit NutritionUser(const NutritionUserResponse& response);
  static NutritionUser empty();

  bool operator==(const NutritionUser&) const = default;

  // Ideal weight in kg by height and sex (a linear rule from 150 cm).
  [[nodiscard]] double getIdealWeight() const;
  // Weight of an ideal body-mass index (22 male, 21 otherwise) in kg.
  [[nodiscard]] double getIdealWeightKcal() const;
  // Kilocalories per kilogram for the activity level.
  [[nodiscard]] double getActivityNumber() const;
  // Age correction of the energy need: whole years of age at `now` in `calendar`.
  [[nodiscard]] double getYearsFactor(Date now, const Calendar& calendar) const;
  // Daily energy need (kcal) for the weight goal.
  [[nodiscard]] double getKcalForDiet(Date now, const Calendar& calendar) const;
  // Sets the target weight (ideal weight truncated) and the daily energy, as saving the
  // questionnaire's last page does.
  void setTargetWeightAndDailyKcal(Date now, const Calendar& calendar);
  // Picks the intake distribution that matches the selected intakes.
  void updateDistributionForIntakes();
  // The bariatric phase reached from `date` (the operation) to `now`: whole days in `calendar`.
  static BariatricoPhase getPhaseForOperationDate(Date date, Date now, const Calendar& calendar);

  static constexpr auto jsonFields() {
    using U = NutritionUser;
    using json::field;
    return std::tuple{
        field("UserId", &U::userID),
        field("MemberId", &U::memberID),
        field("ClientId", &U::clientID),
        field("UserName", &U::userName),
        field("UserSurnames", &U::userSurnames),
        field("Password", &U::password),
        field("DateOfBirth", &U::dateOfBirth),
        field("Gender", &U::gender),
        field("PhysicalIntensityId", &U::physicalIntensityID),
        field("DailyKcal", &U::dailyKcal),
        field("TargetWeight", &U::targetWeight),
        field("Weight", &U::weight),
        field("Height", &U::height),
        field("DesiredBalanceId", &U::desiredBalanceID),
        field("TrainingId", &U::trainingID),
        field("Countries", &U::countries),
        field("Preferences", &U::preferences),
        field("DietId", &U::dietID),
        field("DistributionByIntakeId", &U::distributionByIntakeID),
        field("SelectedIntakes", &U::selectedIntakes),
        field("ExcludedAlimentIds", &U::excludedAliments),
        field("Algorithm", &U::algorithm),
        field("RegenerateMenu", &U::regenerateMenu),
        field("IntermittentFastingId", &U::intermittentFastingID),
        field("Difficulty", &U::difficulty),
    };
  }
};

}  // namespace nutrition
