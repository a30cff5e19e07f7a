#include "platform/linux/FileNotificationScheduler.h"

#include <fstream>
#include <sstream>
#include <system_error>

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

}  // namespace

FileNotificationScheduler::FileNotificationScheduler(std::filesystem::path file)
    : file_(std::move(file)) {
  std::ifstream in(file_, std::ios::binary);
  if (!in) return;
  std::stringstream contents;
  contents << in.rdbuf();
  const auto stored = json::decodeDocument<std::vector<StoredRequest>>(contents.str());
  if (!stored.ok()) {
    log(LogLevel::warning, "ignoring unreadable notifications file " + file_.string());
    return;
  }
  for (const auto& s : *stored) {
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
  std::error_code error;
  std::filesystem::create_directories(file_.parent_path(), error);
  const auto temporary = std::filesystem::path(file_).concat(".tmp");
  {
    std::ofstream out(temporary, std::ios::binary | std::ios::trunc);
    out << *text;
    if (!out) return;
  }
  std::filesystem::rename(temporary, file_, error);
}

}  // namespace nutrition
