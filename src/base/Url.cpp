#include "base/Url.h"

namespace nutrition {
namespace {

bool isUnreserved(unsigned char c) {
  return (c >= 'A' && c <= 'Z') || (c >= 'a' && c <= 'z') || (c >= '0' && c <= '9') || c == '-' ||
         c == '.' || c == '_' || c == '~';
}

bool startsWithIgnoringCase(std::string_view text, std::string_view prefix) {
  if (text.size() < prefix.size()) return false;
  for (std::size_t i = 0; i < prefix.size(); ++i) {
    const char c = text[i];
    const char lower = (c >= 'A' && c <= 'Z') ? char(c - 'A' + 'a') : c;
    if (lower != prefix[i]) return false;
  }
  return true;
}

}  // namespace

std::string percentEncode(std::string_view value) {
  static constexpr char kHex[] = "0123456789ABCDEF";
  std::string out;
  out.reserve(value.size());
  for (const char c : value) {
    const auto byte = static_cast<unsigned char>(c);
    if (isUnreserved(byte)) {
      out += c;
    } else {
      out += '%';
      out += kHex[byte >> 4];
      out += kHex[byte & 0xF];
    }
  }
  return out;
}

bool isWellFormedURL(std::string_view url) {
  std::size_t hostStart = 0;
  if (startsWithIgnoringCase(url, "https://")) {
    hostStart = 8;
  } else if (startsWithIgnoringCase(url, "http://")) {
    hostStart = 7;
  } else {
    return false;
  }
  for (const char c : url) {
    const auto byte = static_cast<unsigned char>(c);
    if (byte <= 0x20 || byte >= 0x7F) return false;
  }
  const auto hostEnd = url.find_first_of("/?#", hostStart);
  const auto host = url.substr(hostStart, hostEnd - hostStart);
  return !host.empty() && host.front() != ':' && host.front() != '@';
}

}  // namespace nutrition
