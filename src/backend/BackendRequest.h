#pragma once
// One description of a backend request, turned into HTTP in one place: the address is the
// configured base URL followed by the path and the query (values percent-encoded), with the
// JSON headers and the 60-second time-out every backend call has.

#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "platform/HttpClient.h"

namespace nutrition {

struct BackendRequest {
  std::string method = "GET";
  std::string path;  // never starts with "/": "api/menu"
  std::vector<std::pair<std::string, std::string>> query;
  std::optional<std::string> body;
};

// The HTTP request for `request` against `baseURL`; nothing when the address is no URL.
std::optional<HttpRequest> makeHttpRequest(const BackendRequest& request, std::string_view baseURL);

// Sends `request` against `baseURL` with `http`. When the address is no URL nothing is sent,
// the problem is logged and `callback` never runs.
void sendBackendRequest(HttpClient& http, std::string_view baseURL, const BackendRequest& request,
                        HttpClient::Callback callback);

}  // namespace nutrition
