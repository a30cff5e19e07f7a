#include "logic/NutritionProfileUtils.h"

#include <algorithm>
#include <charconv>

#include "base/Log.h"

namespace nutrition {
namespace {

// A base-10 integer with an optional sign and nothing else, within range.
std::optional<std::int64_t> parseInteger(std::string_view text) {
  // One optional sign, then digits only; from_chars takes a minus sign but no plus sign.
  const bool negative = text.starts_with('-');
  const std::string_view digits = negative || text.starts_with('+') ? text.substr(1) : text;
  if (digits.empty() ||
      !std::all_of(digits.begin(), digits.end(), [](char c) { return c >= '0' && c <= '9'; })) {
    return std::nullopt;
  }
  const std::string_view number = negative ? text : digits;
  std::int64_t value = 0;
  const auto result = std::from_chars(number.data(), number.data() + number.size(), value);
  if (result.ec != std::errc{}) return std::nullopt;
  return value;
}

std::optional<std::vector<std::int64_t>> dishesOf(const NutritionUser& user, std::int64_t intake) {
  if (!user.selectedIntakes) return std::nullopt;
  for (const auto& selected : *user.selectedIntakes) {
    if (selected.intake == intake) return selected.dishes;
  }
  return std::nullopt;
}

}  // namespace

void NutritionProfileUtils::updateUserField(std::string_view field, const AnyValue& value) {
  auto& current = session_.currentUser;
  if (!current) return;
  NutritionUser& user = *current;

  if (field == "dateOfBirth") {
    user.dateOfBirth = value.date();
  } else if (field == "height") {
    const auto text = value.text();
    user.height = text ? parseInteger(*text) : std::nullopt;
  } else if (field == "desiredBalanceID") {
    user.desiredBalanceID = value.integer();
  } else if (field == "excludedAliment") {
    user.excludedAliments = value.integerList();
  } else if (field == "preferences") {
    user.preferences = value.integerList();
  } else if (field == "difficulty") {
    user.difficulty = value.integer();
  } else if (field == "intollerance") {
    // Intolerances share the preference list; nothing to add leaves it as it is.
    if (const auto list = value.integerList()) {
      if (!user.preferences) user.preferences = std::vector<std::int64_t>{};
      user.preferences->insert(user.preferences->end(), list->begin(), list->end());
    }
  } else if (field == "countries") {
    const auto country = value.integer();
    user.countries = country ? std::optional(std::vector<std::int64_t>{*country}) : std::nullopt;
  } else if (field == "intermittentFastingID") {
    user.intermittentFastingID = value.integer();
  } else if (field == "gender") {
    const auto code = value.integer();
    user.gender = code && *code != 0 ? NutritionGender::female : NutritionGender::male;
  } else if (field == "physicalIntensityID") {
    user.physicalIntensityID = value.integer();
  } else if (field == "algorithm") {
    user.algorithm = value.integer();
  } else if (field == "selectedIntakes") {
    const auto list = value.integerList();
    if (!list) {
      user.selectedIntakes.reset();
      return;
    }
    // Lunch and dinner come with their courses from "lunchDishes" and "dinnerDishes".
    user.selectedIntakes = std::vector<SelectedIntake>{};
    for (const auto intake : *list) {
      if (intake == kLunchIntake || intake == kDinnerIntake) continue;
      user.selectedIntakes->push_back(SelectedIntake{intake, std::vector<std::int64_t>{1}});
    }
  } else if (field == "distributionByIntakeID") {
    user.selectedIntakes = std::vector<SelectedIntake>{};
    user.distributionByIntakeID = value.integer();
    if (!user.distributionByIntakeID) return;
    utils_.getDistributionByID(
        *user.distributionByIntakeID,
        [&session = session_](std::optional<NutritionDistribution> distribution) {
          auto& edited = session.currentUser;
          if (!distribution || !edited || !edited->selectedIntakes) return;
          const auto intakes = distribution->getSelectedIntakeForDistribution();
          edited->selectedIntakes->insert(edited->selectedIntakes->end(), intakes.begin(),
                                          intakes.end());
        });
  } else if (field == "dinnerDishes" || field == "lunchDishes") {
    if (!user.selectedIntakes) return;
    const std::int64_t intake = field == "dinnerDishes" ? kDinnerIntake : kLunchIntake;
    user.selectedIntakes->push_back(SelectedIntake{intake, value.integerList()});
  } else {
    log(LogLevel::debug, "no profile field is called '" + std::string(field) + "'");
  }
}

AnyValue NutritionProfileUtils::getValueForField(std::string_view field) const {
  const auto& current = session_.currentUser;
  if (!current) return {};
  const NutritionUser& user = *current;
  const auto integer = [](const std::optional<std::int64_t>& value) {
    return value ? AnyValue(*value) : AnyValue();
  };
  const auto list = [](const std::optional<std::vector<std::int64_t>>& values) {
    return values ? AnyValue(*values) : AnyValue();
  };

  if (field == "dateOfBirth") return user.dateOfBirth ? AnyValue(*user.dateOfBirth) : AnyValue();
  if (field == "height") return user.height ? AnyValue(std::to_string(*user.height)) : AnyValue();
  if (field == "desiredBalanceID") return integer(user.desiredBalanceID);
  if (field == "excludedAliment") return list(user.excludedAliments);
  if (field == "preferences" || field == "intollerance") return list(user.preferences);
  if (field == "difficulty") return integer(user.difficulty);
  if (field == "countries") {
    return user.countries && !user.countries->empty() ? AnyValue(user.countries->front())
                                                      : AnyValue();
  }
  if (field == "intermittentFastingID") return integer(user.intermittentFastingID);
  if (field == "gender") {
    if (!user.gender) return {};
    return AnyValue(std::int64_t{*user.gender == NutritionGender::male ? 0 : 1});
  }
  if (field == "physicalIntensityID") return integer(user.physicalIntensityID);
  if (field == "algorithm") return integer(user.algorithm);
  if (field == "selectedIntakes") {
    if (!user.selectedIntakes) return {};
    AnyValue::List intakes;
    for (const auto& selected : *user.selectedIntakes)
      intakes.push_back(selected.intake);
    return AnyValue(intakes);
  }
  if (field == "distributionByIntakeID") return integer(user.distributionByIntakeID);
  if (field == "dinnerDishes") return list(dishesOf(user, kDinnerIntake));
  if (field == "lunchDishes") return list(dishesOf(user, kLunchIntake));
  return {};
}

}  // namespace nutrition
