#include "fasting/AyunoUtils.h"

#include <algorithm>
#include <cmath>
#include <cstdio>

#include "base/Log.h"
#include "base/Saturating.h"
#include "model/ModelCodec.h"
#include "session/NutritionAuth.h"

namespace nutrition {
namespace {

constexpr const char* kStartKey = NutritionAuth::kFastingStartKey;
constexpr double kOneDay = 86400.0;

// Stored instants are outside data: keep them within what a calendar can show.
Date dateFromSeconds(double seconds) {
  constexpr double kLimit = 900'000'000'000.0;
  const double clamped = std::clamp(std::floor(seconds), -kLimit, kLimit);
  return Date{std::chrono::seconds{static_cast<std::int64_t>(clamped)}};
}

bool sameLocalDay(const LocalDateTime& a, const LocalDateTime& b) {
  return a.year == b.year && a.month == b.month && a.day == b.day;
}

}  // namespace

AyunoUtils::AyunoUtils(const Platform& platform, const CurrentUserSource& user,
                       const StringTables& strings)
    : center(platform.notifications),
      preferences(platform.keyValueStores->suite(NutritionAuth::kFastingSuite)),
      user_(user),
      strings_(strings),
      clock_(platform.clock),
      calendar_(platform.calendar),
      resources_(platform.resources) {
  loadPhases();
}

std::optional<double> AyunoUtils::storedStart() const {
  if (!preferences) return std::nullopt;
  const auto start = preferences->getDouble(kStartKey);
  if (!start || !std::isfinite(*start)) return std::nullopt;  // a corrupt start is no start
  return start;
}

double AyunoUtils::fastingLength() const {
  const NutritionUser* user = user_.currentMember();
  if (!user || !user->intermittentFastingID) return 0;
  switch (*user->intermittentFastingID) {
    case 1:
      return 43200;
    case 2:
      return 50400;
    default:
      return 57600;
  }
}

std::optional<std::int64_t> AyunoUtils::getCurrentTime() const {
  const auto start = storedStart();
  if (!start) return std::nullopt;
  const double elapsed = secondsSince1970(*clock_) - *start;
  if (!std::isfinite(elapsed)) return std::nullopt;
  return saturatingToInt64(elapsed);
}

bool AyunoUtils::isFinished() const {
  const auto elapsed = getCurrentTime();
  if (!elapsed) return true;
  const NutritionUser* user = user_.currentMember();
  if (!user || !user->intermittentFastingID) return true;
  return double(*elapsed) / (fastingLength() + kOneDay) >= 1.0;
}

double AyunoUtils::getCurrentPercentage() const {
  const double elapsed = double(getCurrentTime().value_or(0));
  const double ratio = elapsed / fastingLength();
  return ratio > 1.0 ? 0.999 : ratio;
}

std::string AyunoUtils::getCurrentTimeString() const {
  const std::int64_t seconds = getCurrentTime().value_or(0);
  const std::int64_t minutes = seconds / 60;
  const std::int64_t hours = minutes / 60;
  char text[64];
  std::snprintf(text, sizeof text, "%02lld:%02lld:%02lld", static_cast<long long>(hours),
                static_cast<long long>(minutes - 60 * hours),
                static_cast<long long>(seconds - 60 * (seconds / 60)));
  return text;
}

std::string AyunoUtils::dayAndTime(double seconds, const char* todayWord,
                                   const char* otherWord) const {
  const Date instant = dateFromSeconds(seconds);
  const bool today =
      sameLocalDay(calendar_->components(instant), calendar_->components(currentDate(*clock_)));
  return strings_.localized(today ? todayWord : otherWord) + ", " +
         calendar_->format(instant, "HH:mm");
}

std::string AyunoUtils::getStartTime() const {
  const auto start = storedStart();
  if (!start) return {};
  return dayAndTime(*start, "Hoy", "Ayer");
}

std::optional<Date> AyunoUtils::getFinishTimeDate() const {
  const auto start = storedStart();
  if (!start) return std::nullopt;
  return dateFromSeconds(*start + fastingLength());
}

std::string AyunoUtils::getFinishTime() const {
  const auto start = storedStart();
  if (!start) return {};
  return dayAndTime(*start + fastingLength(), "Hoy", "Mañana");
}

AyunoPhase AyunoUtils::getCurrentPhase() const {
  const double elapsed = double(getCurrentTime().value_or(0));
  const std::int64_t hours = saturatingToInt64(elapsed / 60.0 / 60.0);
  std::size_t index = 0;
  if (hours >= 16) {
    index = 5;
  } else if (hours >= 14) {
    index = 4;
  } else if (hours >= 11) {
    index = 3;
  } else if (hours >= 9) {
    index = 2;
  } else if (hours >= 3) {
    index = 1;
  }
  if (index >= phases.size()) {
    fatal("the fasting phase table (fasesAyuno) has no row " + std::to_string(index));
  }
  return phases[index];
}

void AyunoUtils::addAyunoNotification() {
  center->removePending(kNotificationId);
  const auto finish = getFinishTimeDate();
  if (!finish) return;
  center->add(NotificationRequest{
      kNotificationId, strings_.localized("Tu periodo de ayuno intermitente ha finalizado"),
      calendar_->components(*finish)});
}

void AyunoUtils::loadPhases() {
  const auto file = resources_->resource("fasesAyuno", "json");
  if (!file) return;
  auto decoded = decodeJsonArray<AyunoPhase>(*file);
  if (!decoded.ok()) fatal("fasesAyuno.json is malformed: " + decoded.error().message);
  // The table is written in Spanish; its texts are keys of the strings table.
  for (auto& phase : *decoded) {
    for (auto* text : {&phase.name, &phase.timeInfo, &phase.helpText}) {
      if (*text) *text = strings_.localized(**text);
    }
  }
  phases = std::move(decoded).value();
}

bool AyunoUtils::startIfFinished() {
  if (!isFinished() || !preferences) return false;
  preferences->set(kStartKey, secondsSince1970(*clock_));
  addAyunoNotification();
  return true;
}

void AyunoUtils::finish() {
  if (preferences) preferences->remove(kStartKey);
}

}  // namespace nutrition
