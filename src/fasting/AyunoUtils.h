#pragma once
// The intermittent-fasting clock. A fast is only its start instant, kept under "ayuno_timer"
// in the "NutritionPreferences" suite; elapsed time, percentage, phase, start and end texts and
// whether it is finished are worked out from it, the clock and the member's scheme on every
// question. Also schedules the one end-of-fast notification, "ayuno".
//
// Schemes by the member's intermittentFastingID: 1 fasts 12 hours, 2 fasts 14, any other 16;
// without a member or a scheme the length is 0. A fast runs for its length plus a day.

#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "backend/RequestContext.h"
#include "base/Date.h"
#include "model/AyunoPhase.h"
#include "platform/Platform.h"
#include "text/StringTables.h"

namespace nutrition {

class AyunoUtils {
 public:
  static constexpr const char* kNotificationId = "ayuno";

  static AyunoUtils& shared();

  // Takes the notification scheduler, the "NutritionPreferences" suite, the clock, the
  // calendar and the phase table from `platform`; the scheme is `user`'s.
  AyunoUtils(const Platform& platform, const CurrentUserSource& user, const StringTables& strings);

  std::shared_ptr<NotificationScheduler> center;
  std::vector<AyunoPhase> phases;
  std::shared_ptr<KeyValueStore> preferences;

  // Seconds since the stored start (negative when the clock went back); nothing without one.
  [[nodiscard]] std::optional<std::int64_t> getCurrentTime() const;
  [[nodiscard]] bool isFinished() const;
  // Elapsed over the fasting length; 0.999 once past it.
  [[nodiscard]] double getCurrentPercentage() const;
  // "HH:MM:SS" of the elapsed time; hours are not reduced to a day.
  [[nodiscard]] std::string getCurrentTimeString() const;
  // "Hoy, 08:30" or "Ayer, 23:00" (localised day word); empty without a start.
  [[nodiscard]] std::string getStartTime() const;
  [[nodiscard]] std::optional<Date> getFinishTimeDate() const;
  // "Hoy, 15:00" or "Mañana, 07:00"; empty without a start.
  [[nodiscard]] std::string getFinishTime() const;
  // The table row for the elapsed hours (bands from 0, 3, 9, 11, 14 and 16 hours).
  [[nodiscard]] AyunoPhase getCurrentPhase() const;
  // Replaces the pending end-of-fast notification.
  void addAyunoNotification();
  void loadPhases();

  // Starts a fast now when none is running (as opening the fasting screen does) and schedules
  // its notification; false when one was already running.
  bool startIfFinished();
  // Ends the running fast; the scheduled notification stays.
  void finish();

 private:
  [[nodiscard]] std::optional<double> storedStart() const;
  [[nodiscard]] double fastingLength() const;
  std::string dayAndTime(double seconds, const char* todayWord, const char* otherWord) const;

  const CurrentUserSource& user_;
  const StringTables& strings_;
  std::shared_ptr<const Clock> clock_;
  std::shared_ptr<const Calendar> calendar_;
  std::shared_ptr<const ResourceBundle> resources_;
};

}  // namespace nutrition
