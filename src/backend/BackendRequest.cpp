#include "backend/BackendRequest.h"

#include "base/Log.h"
#include "config/NutritionSDKUtils.h"
#include "platform/Platform.h"

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

std::optional<HttpRequest> makeHttpRequest(const BackendRequest& request,
                                           std::string_view baseURL) {
  std::string url = std::string(baseURL) + request.path;
  char separator = '?';
  for (const auto& [key, value] : request.query) {
    url += separator;
    url += key;
    url += '=';
    url += percentEncode(value);
    separator = '&';
  }
  if (!isWellFormedURL(url)) return std::nullopt;
  HttpRequest http;
  http.method = request.method;
  http.url = std::move(url);
  http.headers = {{"Content-Type", "application/json"}, {"Accept", "application/json"}};
  http.body = request.body;
  http.timeout = std::chrono::seconds(60);
  return http;
}

void sendBackendRequest(const BackendRequest& request, HttpClient::Callback callback) {
  auto http = makeHttpRequest(request, NutritionSDKUtils::sharedInstance().mainURL);
  if (!http) {
    log(LogLevel::error, "not sending " + request.method + " " + request.path +
                             ": the backend address is not a URL");
    return;
  }
  Platform::current()->http->send(std::move(*http), std::move(callback));
}

}  // namespace nutrition
