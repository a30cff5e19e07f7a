#pragma once
// The two placeholders the string tables use: "%d" for a whole number and "%@" for a text.
//
//   formatted("%d platos", 3);                 // "3 platos"
//   formatted("Dificultad: %@", "Alta");       // "Dificultad: Alta"

#include <cstdint>
#include <string>
#include <string_view>

namespace nutrition {

// `pattern` with its first occurrence of `placeholder` replaced by `value`; unchanged when it
// has none.
inline std::string replacingFirst(std::string_view pattern, std::string_view placeholder,
                                  std::string_view value) {
  std::string text(pattern);
  if (const auto at = text.find(placeholder); at != std::string::npos)
    text.replace(at, placeholder.size(), value);
  return text;
}

inline std::string formatted(std::string_view pattern, std::int64_t number) {
  return replacingFirst(pattern, "%d", std::to_string(number));
}

inline std::string formatted(std::string_view pattern, std::string_view text) {
  return replacingFirst(pattern, "%@", text);
}

}  // namespace nutrition
