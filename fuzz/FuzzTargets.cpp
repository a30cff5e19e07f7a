#include "fuzz/FuzzTargets.h"

#include <unistd.h>

#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <map>
#include <string>

#include "base/Date.h"
#include "base/Log.h"
#include "json/JsonReader.h"
#include "model/AlertItem.h"
#include "model/AyunoPhase.h"
#include "model/HealthProfile.h"
#include "model/ModelCodec.h"
#include "model/NutritionCatalogues.h"
#include "model/NutritionCredentials.h"
#include "model/NutritionDistribution.h"
#include "model/NutritionFavoriteDish.h"
#include "model/NutritionMenu.h"
#include "model/NutritionPreference.h"
#include "model/NutritionUser.h"
#include "model/NutritionUserResponse.h"
#include "model/PublicProfile.h"
#include "model/SelectedIntake.h"
#include "model/WaitScreen.h"
#include "platform/ResourceBundle.h"
#include "platform/linux/FileKeyValueStore.h"
#include "platform/linux/FileNotificationScheduler.h"
#include "text/StringTables.h"

namespace nutrition::fuzz {
namespace {

void require(bool holds, const char* what) {
  if (holds) return;
  std::fprintf(stderr, "fuzz property broken: %s\n", what);
  std::abort();
}

// The fuzzers feed thousands of broken files a second; their warnings say nothing new.
void quiet() {
  static const bool silenced = [] {
    setLogSink(nullptr);
    return true;
  }();
  (void)silenced;
}

std::string_view text(const std::uint8_t* data, std::size_t size) {
  return {reinterpret_cast<const char*>(data), size};
}

// What decodes must encode, and decode again to the same record.
template <class T>
void roundTrip(std::string_view json) {
  auto first = json::decodeDocument<T>(json);
  if (!first.ok()) return;
  auto encoded = encodeJson(first.value());
  require(encoded.ok(), "a decoded record does not encode");
  auto second = json::decodeDocument<T>(encoded.value());
  require(second.ok(), "an encoded record does not decode");
  require(second.value() == first.value(), "a record changed through encode and decode");
}

template <class T>
void recordAndList(std::string_view json) {
  roundTrip<T>(json);
  roundTrip<std::vector<T>>(json);
}

// A file of this process's own for the loaders, rewritten for every input.
const std::filesystem::path& scratchFile(const char* name) {
  static const std::filesystem::path directory = [] {
    auto path =
        std::filesystem::temp_directory_path() / ("nutrition-fuzz-" + std::to_string(::getpid()));
    std::filesystem::create_directories(path);
    return path;
  }();
  static std::map<std::string, std::filesystem::path> files;
  auto [it, added] = files.try_emplace(name, directory / name);
  return it->second;
}

void writeScratch(const std::filesystem::path& file, std::string_view bytes) {
  std::FILE* out = std::fopen(file.c_str(), "wb");
  require(out != nullptr, "the scratch file cannot be written");
  if (!bytes.empty()) std::fwrite(bytes.data(), 1, bytes.size(), out);
  std::fclose(out);
}

class BytesBundle final : public ResourceBundle {
 public:
  explicit BytesBundle(std::string_view bytes) : bytes_(bytes) {}
  [[nodiscard]] std::optional<std::string> resource(std::string_view,
                                                    std::string_view) const override {
    return std::string(bytes_);
  }

 private:
  std::string_view bytes_;
};

bool sameValue(const StoredValue& left, const StoredValue& right) {
  const auto* a = std::get_if<double>(&left);
  const auto* b = std::get_if<double>(&right);
  if (a && b && std::isnan(*a) && std::isnan(*b)) return true;
  return left == right;
}

}  // namespace

int backendRecords(const std::uint8_t* data, std::size_t size) {
  quiet();
  if (size == 0) return 0;
  const std::string_view json = text(data + 1, size - 1);
  switch (data[0] % 20) {
    case 0:
      recordAndList<NutritionMenu>(json);
      break;
    case 1:
      recordAndList<NutritionDay>(json);
      break;
    case 2:
      recordAndList<NutritionIntake>(json);
      break;
    case 3:
      recordAndList<NutritionDish>(json);
      break;
    case 4:
      recordAndList<NutritionUserResponse>(json);
      break;
    case 5:
      recordAndList<NutritionUser>(json);
      break;
    case 6:
      recordAndList<NutritionCredentialsIA>(json);
      break;
    case 7:
      recordAndList<NutritionLoginAuth>(json);
      break;
    case 8:
      recordAndList<NutritionPreference>(json);
      break;
    case 9:
      recordAndList<NutritionExcluded>(json);
      break;
    case 10:
      recordAndList<PhysicalIntensity>(json);
      break;
    case 11:
      recordAndList<NutritionBalance>(json);
      break;
    case 12:
      recordAndList<NutritionCountry>(json);
      break;
    case 13:
      recordAndList<NutritionDistribution>(json);
      break;
    case 14:
      recordAndList<IPDistribution>(json);
      break;
    case 15:
      recordAndList<IntermittentFasting>(json);
      break;
    case 16:
      recordAndList<NutritionDishOrder>(json);
      break;
    case 17:
      recordAndList<NutritionFavoriteDishPost>(json);
      break;
    case 18:
      recordAndList<NutritionFavoriteDishesGet>(json);
      break;
    default:
      recordAndList<PublicProfile>(json);
      break;
  }
  return 0;
}

int resourceRecords(const std::uint8_t* data, std::size_t size) {
  quiet();
  if (size == 0) return 0;
  const std::string_view json = text(data + 1, size - 1);
  switch (data[0] % 7) {
    case 0:
      recordAndList<HealthProfilePage>(json);
      break;
    case 1:
      recordAndList<HealthQuestion>(json);
      break;
    case 2:
      recordAndList<QuestionaryAnswer>(json);
      break;
    case 3:
      recordAndList<AyunoPhase>(json);
      break;
    case 4:
      recordAndList<AlertItem>(json);
      break;
    case 5:
      recordAndList<WaitScreen>(json);
      break;
    default:
      recordAndList<SelectedIntake>(json);
      break;
  }
  return 0;
}

int dates(const std::uint8_t* data, std::size_t size) {
  const auto parsed = parseIso8601(text(data, size));
  if (!parsed) return 0;
  // A date written in the backend's form reads back to itself.
  if (hasIso8601Form(*parsed)) {
    const std::string written = formatIso8601(*parsed);
    require(parseIso8601(written) == parsed, "a written date reads back differently");
  }
  return 0;
}

int keyValueFile(const std::uint8_t* data, std::size_t size) {
  quiet();
  const auto& file = scratchFile("store.json");
  writeScratch(file, text(data, size));
  std::optional<StoredValue> timer;
  {
    FileKeyValueStore store(file);
    timer = store.value("ayuno_timer");
    (void)store.value("hold_menu_timer");
    (void)store.value("profileFilledUsers");
    store.set("fuzz", 42.0);  // written through
  }
  // What was read and what was saved are there when the file is read again.
  FileKeyValueStore again(file);
  const auto saved = again.value("fuzz");
  require(saved && sameValue(*saved, StoredValue{42.0}), "a saved value was lost");
  const auto reread = again.value("ayuno_timer");
  require(reread.has_value() == timer.has_value() && (!timer || sameValue(*reread, *timer)),
          "a stored value changed through a save");
  return 0;
}

int notificationFile(const std::uint8_t* data, std::size_t size) {
  quiet();
  const auto& file = scratchFile("notifications.json");
  writeScratch(file, text(data, size));
  std::vector<NotificationRequest> before;
  {
    FileNotificationScheduler scheduler(file);
    before = scheduler.pending();
    scheduler.removePending("ayuno");
    scheduler.add({"ayuno", "fin", LocalDateTime{2026, 11, 22, 20, 0, 0, 1}});
  }
  FileNotificationScheduler again(file);
  const auto after = again.pending();
  require(!after.empty() && after.back().identifier == "ayuno", "a scheduled request was lost");
  std::size_t kept = 0;
  for (const auto& request : before)
    kept += request.identifier != "ayuno" ? 1 : 0;
  require(after.size() == kept + 1, "another pending request was lost");
  return 0;
}

int stringTables(const std::uint8_t* data, std::size_t size) {
  quiet();
  // A shipped table that does not decode stops the program by design; what decodes must be
  // looked up entry for entry.
  const auto table =
      json::decodeDocument<std::map<std::string, std::string, std::less<>>>(text(data, size));
  if (!table.ok()) return 0;
  const BytesBundle bundle(text(data, size));
  const StringTables tables(bundle, "en");
  for (const auto& [key, value] : table.value())
    require(tables.localized(key) == value, "a table entry reads back differently");
  return 0;
}

}  // namespace nutrition::fuzz
