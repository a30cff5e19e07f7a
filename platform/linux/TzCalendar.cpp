#include "platform/linux/TzCalendar.h"

#include <date/tz.h>

#include <cstdlib>
#include <exception>

#include "base/Log.h"

namespace nutrition {
namespace {

const date::time_zone* locateZone(const std::string& name) {
  try {
    return date::locate_zone(name);
  } catch (const std::exception& error) {
    log(LogLevel::warning, "unknown time zone '" + name + "', using UTC: " + error.what());
    return nullptr;
  }
}

const date::time_zone* currentZone() {
  // date::current_zone() ignores TZ; honour it as the C library does.
  if (const char* tz = std::getenv("TZ"); tz != nullptr && *tz != '\0') {
    return locateZone(tz[0] == ':' ? tz + 1 : tz);
  }
  try {
    return date::current_zone();
  } catch (const std::exception& error) {
    log(LogLevel::warning, std::string("no current time zone, using UTC: ") + error.what());
    return nullptr;
  }
}

}  // namespace

TzCalendar::TzCalendar() : zone_(currentZone()) {}

TzCalendar::TzCalendar(const std::string& zoneName) : zone_(locateZone(zoneName)) {}

std::string TzCalendar::timeZoneIdentifier() const {
  return zone_ ? std::string(zone_->name()) : "UTC";
}

std::chrono::seconds TzCalendar::utcOffset(Date instant) const {
  if (!zone_) return std::chrono::seconds{0};
  return zone_->get_info(instant).offset;
}

}  // namespace nutrition
