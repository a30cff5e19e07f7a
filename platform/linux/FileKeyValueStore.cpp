#include "platform/linux/FileKeyValueStore.h"

#include "base/File.h"
#include "base/Log.h"
#include "json/JsonCursor.h"
#include "json/JsonWriter.h"

namespace nutrition {
namespace {

// A stored value is a number, a string or a list of strings. Any other value, or a list
// holding anything but strings, is passed over (and checked) and reads as no value.
std::optional<StoredValue> readStoredValue(json::Cursor& in) {
  switch (in.peek()) {
    case json::JsonType::number: {
      double number = 0;
      if (in.readDouble(number)) return number;
      return std::nullopt;
    }
    case json::JsonType::string: {
      std::string text;
      if (in.readString(text)) return text;
      return std::nullopt;
    }
    case json::JsonType::array: {
      std::vector<std::string> list;
      bool allStrings = true;
      if (!in.beginArray()) return std::nullopt;
      for (bool first = true; in.nextElement(first); first = false) {
        if (allStrings && in.peek() == json::JsonType::string) {
          if (!in.readString(list.emplace_back())) return std::nullopt;
        } else {
          allStrings = false;
          if (!in.skipValue()) return std::nullopt;
        }
      }
      if (!in.ok() || !allStrings) return std::nullopt;
      return list;
    }
    default:
      in.skipValue();
      return std::nullopt;
  }
}

std::map<std::string, StoredValue, std::less<>> load(const std::filesystem::path& file) {
  std::map<std::string, StoredValue, std::less<>> values;
  const auto contents = readFile(file);
  if (!contents) return values;
  json::Cursor in(*contents);
  std::string_view key;
  if (in.beginObject()) {
    for (bool first = true; in.nextKey(first, key); first = false) {
      std::string name(key);
      if (auto stored = readStoredValue(in)) values.insert_or_assign(std::move(name), *stored);
    }
  }
  if (!in.ok() || !in.finish()) {
    // A file cut short or damaged is not trusted at all.
    log(LogLevel::warning,
        "ignoring unreadable store " + file.string() + " (" + in.error().message + ")");
    values.clear();
  }
  return values;
}

std::string fileNameFor(std::string_view suite) {
  std::string name = "suite.";
  for (const char c : suite) {
    const bool safe = (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || (c >= '0' && c <= '9') ||
                      c == '-' || c == '_';
    name += safe ? c : '_';
  }
  return name + ".json";
}

}  // namespace

FileKeyValueStore::FileKeyValueStore(std::filesystem::path file)
    : file_(std::move(file)), values_(load(file_)) {}

std::optional<StoredValue> FileKeyValueStore::value(std::string_view key) const {
  std::lock_guard lock(mutex_);
  const auto found = values_.find(key);
  if (found == values_.end()) return std::nullopt;
  return found->second;
}

void FileKeyValueStore::set(std::string_view key, StoredValue value) {
  std::lock_guard lock(mutex_);
  values_.insert_or_assign(std::string(key), std::move(value));
  save();
}

void FileKeyValueStore::remove(std::string_view key) {
  std::lock_guard lock(mutex_);
  const auto found = values_.find(key);
  if (found == values_.end()) return;
  values_.erase(found);
  save();
}

void FileKeyValueStore::save() const {
  json::JsonWriter out;
  out.beginObject();
  for (const auto& [key, value] : values_) {
    out.key(key);
    if (const auto* number = std::get_if<double>(&value)) {
      // A non-finite number cannot be stored as JSON; it is dropped as unreadable.
      out.number(*number);
    } else if (const auto* text = std::get_if<std::string>(&value)) {
      out.string(*text);
    } else {
      out.beginArray();
      for (const auto& item : std::get<std::vector<std::string>>(value))
        out.string(item);
      out.endArray();
    }
  }
  out.endObject();

  if (!writeFileAtomically(file_, out.text()))
    log(LogLevel::error, "could not write " + file_.string());
}

FileKeyValueStores::FileKeyValueStores(std::filesystem::path directory)
    : directory_(std::move(directory)) {}

std::shared_ptr<KeyValueStore> FileKeyValueStores::standard() {
  return open("standard.json");
}

std::shared_ptr<KeyValueStore> FileKeyValueStores::suite(std::string_view name) {
  return open(fileNameFor(name));
}

std::shared_ptr<KeyValueStore> FileKeyValueStores::open(const std::string& fileName) {
  std::lock_guard lock(mutex_);
  auto& store = stores_[fileName];
  if (!store) store = std::make_shared<FileKeyValueStore>(directory_ / fileName);
  return store;
}

}  // namespace nutrition
