#include "backend/BackendRequest.h"

#include "base/Log.h"
#include "base/Url.h"

namespace nutrition {

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

void sendBackendRequest(HttpClient& http, std::string_view baseURL, const BackendRequest& request,
                        HttpClient::Callback callback) {
  auto httpRequest = makeHttpRequest(request, baseURL);
  if (!httpRequest) {
    log(LogLevel::error, "not sending " + request.method + " " + request.path +
                             ": the backend address is not a URL");
    return;
  }
  http.send(std::move(*httpRequest), std::move(callback));
}

}  // namespace nutrition
