#include "platform/linux/DirectoryResourceBundle.h"

#include <simdjson.h>

#include <fstream>
#include <sstream>

#include "base/Log.h"

namespace nutrition {
namespace {

// Resource names are plain file names: nothing that climbs out of the bundle.
bool isPlainName(std::string_view name) {
  return !name.empty() && name != "." && name != ".." && name.find('/') == std::string_view::npos &&
         name.find('\0') == std::string_view::npos;
}

std::optional<std::string> readFile(const std::filesystem::path& path) {
  std::ifstream in(path, std::ios::binary);
  if (!in) return std::nullopt;
  std::stringstream contents;
  contents << in.rdbuf();
  return contents.str();
}

}  // namespace

std::optional<std::string> DirectoryResourceBundle::resource(std::string_view name,
                                                             std::string_view extension) const {
  std::string file(name);
  if (!extension.empty()) file += "." + std::string(extension);
  if (!isPlainName(name) || !isPlainName(file)) return std::nullopt;
  return readFile(root_ / file);
}

std::optional<std::map<std::string, std::string, std::less<>>> DirectoryResourceBundle::strings(
    std::string_view table, std::string_view language) const {
  const std::string file = std::string(table) + "." + std::string(language) + ".json";
  if (!isPlainName(table) || !isPlainName(language)) return std::nullopt;
  const auto text = readFile(root_ / "strings" / file);
  if (!text) return std::nullopt;

  namespace od = simdjson::ondemand;
  const simdjson::padded_string padded(*text);
  od::parser parser;
  od::document document;
  od::object object;
  std::map<std::string, std::string, std::less<>> entries;
  if (parser.iterate(padded).get(document) || document.get_object().get(object)) {
    log(LogLevel::error, "string table " + file + " is not a JSON object");
    return std::nullopt;
  }
  for (auto entry : object) {
    od::field field;
    std::string_view key, value;
    if (std::move(entry).get(field) || field.unescaped_key().get(key)) return std::nullopt;
    std::string name(key);
    if (field.value().get_string().get(value)) {
      log(LogLevel::error, "string table " + file + " has a value that is not text");
      return std::nullopt;
    }
    entries.insert_or_assign(std::move(name), std::string(value));
  }
  return entries;
}

}  // namespace nutrition
