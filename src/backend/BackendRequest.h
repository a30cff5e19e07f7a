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

// RFC 3986: unreserved characters pass, every other byte becomes %XX.
std::string percentEncode(std::string_view value);

// An absolute http or https address with a host and nothing a URL cannot hold (spaces,
// control characters, non-ASCII).
bool isWellFormedURL(std::string_view url);

// The HTTP request for `request` against `baseURL`; nothing when the address is no URL.
std::optional<HttpRequest> makeHttpRequest(const BackendRequest& request, std::string_view baseURL);

// Sends through the installed platform's client against the configured base URL, read afresh
// for every request. When the address is no URL nothing is sent and `callback` never runs.
void sendBackendRequest(const BackendRequest& request, HttpClient::Callback callback);

}  // namespace nutrition
