#include "platform/linux/EnvDeviceLocale.h"

#include <cctype>
#include <cstdlib>

namespace nutrition {

std::string languageFromLocaleName(std::string_view name) {
  const auto end = name.find_first_of("_-.@");
  std::string language(name.substr(0, end));
  for (char& c : language)
    c = static_cast<char>(std::tolower(static_cast<unsigned char>(c)));
  if (language == "c" || language == "posix") return {};
  for (const char c : language) {
    if (c < 'a' || c > 'z') return {};
  }
  return language;
}

std::string EnvDeviceLocale::languageCode() const {
  for (const char* variable : {"LC_ALL", "LC_MESSAGES", "LANG"}) {
    const char* value = std::getenv(variable);
    if (value != nullptr && *value != '\0') return languageFromLocaleName(value);
  }
  return {};
}

}  // namespace nutrition
