#include "platform/linux/FileKeyValueStore.h"

#include <simdjson.h>

#include <cstdio>
#include <fstream>
#include <sstream>
#include <system_error>

#include "base/Log.h"
#include "json/JsonWriter.h"

namespace nutrition {
namespace {

namespace od = simdjson::ondemand;

std::optional<StoredValue> readStoredValue(od::value value) {
  od::json_type type;
  if (value.type().get(type)) return std::nullopt;
  switch (type) {
    case od::json_type::number: {
      double number = 0;
      if (value.get_double().get(number)) return std::nullopt;
      return number;
    }
    case od::json_type::string: {
      std::string_view text;
      if (value.get_string().get(text)) return std::nullopt;
      return std::string(text);
    }
    case od::json_type::array: {
      od::array array;
      if (value.get_array().get(array)) return std::nullopt;
      std::vector<std::string> list;
      for (auto element : array) {
        std::string_view text;
        if (element.get_string().get(text)) return std::nullopt;
        list.emplace_back(text);
      }
      return list;
    }
    default:
      return std::nullopt;
  }
}

std::map<std::string, StoredValue, std::less<>> load(const std::filesystem::path& file) {
  std::map<std::string, StoredValue, std::less<>> values;
  std::ifstream in(file, std::ios::binary);
  if (!in) return values;
  std::stringstream contents;
  contents << in.rdbuf();
  const simdjson::padded_string padded(contents.str());
  od::parser parser;
  od::document document;
  od::object object;
  if (parser.iterate(padded).get(document) || document.get_object().get(object)) {
    log(LogLevel::warning, "ignoring unreadable store " + file.string());
    return values;
  }
  for (auto entry : object) {
    od::field field;
    std::string_view key;
    if (std::move(entry).get(field) || field.unescaped_key().get(key)) break;
    std::string name(key);
    if (auto stored = readStoredValue(field.value())) values.insert_or_assign(name, *stored);
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

  std::error_code error;
  std::filesystem::create_directories(file_.parent_path(), error);
  const auto temporary = std::filesystem::path(file_).concat(".tmp");
  {
    std::ofstream stream(temporary, std::ios::binary | std::ios::trunc);
    stream << out.text();
    stream.flush();
    if (!stream) {
      log(LogLevel::error, "could not write " + temporary.string());
      return;
    }
  }
  std::filesystem::rename(temporary, file_, error);
  if (error) log(LogLevel::error, "could not replace " + file_.string() + ": " + error.message());
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
