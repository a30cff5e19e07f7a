#pragma once
// The member's generated weekly menu, as "api/menu" and the dish replacement answer it (the
// first element of a JSON array). `processed` stays false while the backend is still building
// it. The timestamps are kept as the text received, not parsed.

#include <cstdint>
#include <optional>
#include <string>
#include <tuple>
#include <vector>

#include "json/JsonFields.h"
#include "model/NutritionDay.h"

namespace nutrition {

struct NutritionMenu {
  std::optional<std::string> id;
  std::optional<std::int64_t> clientID;
  std::optional<std::string> userID;
  std::optional<bool> current;
  std::optional<std::int64_t> serialNumber;
  std::optional<double> kcalMedia;
  std::optional<bool> processed;
  std::optional<bool> viableKcal;
  std::optional<std::vector<NutritionDay>> days;
  std::optional<bool> enabled;
  std::optional<std::string> changedAt;
  std::optional<std::string> createdAt;

  bool operator==(const NutritionMenu&) const = default;

  // Key order is the backend's: "KcalMedia" is written last.
  static constexpr auto jsonFields() {
    using M = NutritionMenu;
    using json::field;
    return std::tuple{
        field("_id", &M::id),
        field("ClientId", &M::clientID),
        field("UserId", &M::userID),
        field("Current", &M::current),
        field("SerialNumber", &M::serialNumber),
        field("Processed", &M::processed),
        field("ViableKcal", &M::viableKcal),
        field("Days", &M::days),
        field("Enabled", &M::enabled),
        field("ChangedAt", &M::changedAt),
        field("CreatedAt", &M::createdAt),
        field("KcalMedia", &M::kcalMedia),
    };
  }
};

}  // namespace nutrition
