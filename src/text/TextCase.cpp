#include "text/TextCase.h"

namespace nutrition {

namespace {

// Upper-cases the character at `at` in place; returns its length in bytes.
std::size_t upperCaseAt(std::string& text, std::size_t at) {
  const auto byte = static_cast<unsigned char>(text[at]);
  if (byte >= 'a' && byte <= 'z') {
    text[at] = static_cast<char>(byte - 0x20);
    return 1;
  }
  // à to þ are C3 A0 to C3 BE, their capitals 0x20 lower; C3 B7 is the division sign.
  if (byte == 0xC3 && at + 1 < text.size()) {
    const auto next = static_cast<unsigned char>(text[at + 1]);
    if (next >= 0xA0 && next <= 0xBE && next != 0xB7) text[at + 1] = static_cast<char>(next - 0x20);
    return 2;
  }
  return 1;
}

}  // namespace

std::string upperCased(std::string_view text) {
  std::string result(text);
  for (std::size_t at = 0; at < result.size();)
    at += upperCaseAt(result, at);
  return result;
}

std::string capitalizingFirstLetter(std::string_view text) {
  std::string result(text);
  if (!result.empty()) upperCaseAt(result, 0);
  return result;
}

}  // namespace nutrition
