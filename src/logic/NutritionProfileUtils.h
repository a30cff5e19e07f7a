#pragma once
// Writes one questionnaire answer into the member being edited (the session's current user),
// by the question's field name, and reads it back for the question's default answer.

#include <optional>
#include <string_view>

#include "logic/AnyValue.h"
#include "logic/NutritionUtils.h"
#include "session/NutritionAuth.h"

namespace nutrition {

class NutritionProfileUtils {
 public:
  static NutritionProfileUtils& sharedInstance();

  // Edits `session`'s current user; distributions come from `utils`.
  NutritionProfileUtils(NutritionAuth& session, NutritionUtils& utils)
      : session_(session), utils_(utils) {}

  // Field names, matched in this order: "dateOfBirth", "height" (a text), "desiredBalanceID",
  // "excludedAliment", "preferences", "difficulty", "intollerance" (appended to preferences),
  // "countries", "intermittentFastingID", "gender" (0 male, other integers female),
  // "physicalIntensityID", "algorithm", "selectedIntakes", "distributionByIntakeID",
  // "dinnerDishes", "lunchDishes". A value of another type than the field expects leaves the
  // field absent; an unknown name changes nothing.
  void updateUserField(std::string_view field, const AnyValue& value);

  // The field's current value, in the type updateUserField expects; nothing without a member
  // or for an unknown name.
  [[nodiscard]] AnyValue getValueForField(std::string_view field) const;

 private:
  NutritionAuth& session_;
  NutritionUtils& utils_;
};

}  // namespace nutrition
