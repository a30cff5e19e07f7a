#include "platform/linux/FileNotificationScheduler.h"

#include "base/File.h"
#include "base/Log.h"
#include "json/JsonEncode.h"
#include "json/JsonReader.h"

namespace nutrition {
namespace {

struct StoredRequest {
  std::string identifier;
  std::string body;
  std::int64_t year = 0, month = 0, day = 0, hour = 0, minute = 0, second = 0;

  static constexpr auto jsonFields() {
    using S = StoredRequest;
    using json::required;
    return std::tuple{required("identifier", &S::identifier),
                      required("body", &S::body),
                      required("year", &S::year),
                      required("month", &S::month),
                      required("day", &S::day),
                      required("hour", &S::hour),
                      required("minute", &S::minute),
                      required("second", &S::second)};
  }
};

// A trigger the calendar can hold; anything else in the file is treated as unreadable.
bool plausible(const StoredRequest& s) {
  const auto within = [](std::int64_t value, std::int64_t low, std::int64_t high) {
    return value >= low && value <= high;
  };
  return within(s.year, 1, 9999) && within(s.month, 1, 12) && within(s.day, 1, 31) &&
         within(s.hour, 0, 23) && within(s.minute, 0, 59) && within(s.second, 0, 60);
}

}  // namespace

FileNotificationScheduler::FileNotificationScheduler(std::filesystem::path file)
    : file_(std::move(file)) {
  const auto contents = readFile(file_);
  if (!contents) return;
  const auto stored = json::decodeDocument<std::vector<StoredRequest>>(*contents);
  if (!stored.ok()) {
    log(LogLevel::warning, "ignoring unreadable notifications file " + file_.string() + " (" +
                               stored.error().message + ")");
    return;
  }
  for (const auto& s : *stored) {
    if (!plausible(s)) {
      log(LogLevel::warning,
          "ignoring a notification with an impossible date in " + file_.string());
      continue;
    }
    LocalDateTime trigger;
    trigger.year = int(s.year);
    trigger.month = unsigned(s.month);
    trigger.day = unsigned(s.day);
    trigger.hour = int(s.hour);
    trigger.minute = int(s.minute);
    trigger.second = int(s.second);
    pending_.push_back(NotificationRequest{s.identifier, s.body, trigger});
  }
}

void FileNotificationScheduler::removePending(std::string_view identifier) {
  InMemoryNotificationScheduler::removePending(identifier);
  save();
}

void FileNotificationScheduler::add(NotificationRequest request) {
  InMemoryNotificationScheduler::add(std::move(request));
  save();
}

void FileNotificationScheduler::save() const {
  std::vector<StoredRequest> stored;
  for (const auto& request : pending()) {
    const auto& t = request.trigger;
    stored.push_back(
        {request.identifier, request.body, t.year, t.month, t.day, t.hour, t.minute, t.second});
  }
  const auto text = json::encodeJson(stored);
  if (!text.ok() || !writeFileAtomically(file_, *text)) {
    log(LogLevel::error, "could not write " + file_.string());
  }
}

}  // namespace nutrition
