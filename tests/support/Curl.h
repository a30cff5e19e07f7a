#pragma once
// A blocking libcurl request for tests that talk to the sandbox over real HTTP.

#include <curl/curl.h>

#include <chrono>
#include <string>
#include <vector>

namespace nutrition::test {

struct HttpReply {
  CURLcode error = CURLE_OK;
  long status = 0;
  std::string body;
  std::string contentType;
};

HttpReply httpRequest(const std::string& method, const std::string& url,
                      const std::string& body = {},
                      std::chrono::milliseconds timeout = std::chrono::seconds(10));

inline HttpReply httpGet(const std::string& url) {
  return httpRequest("GET", url);
}

}  // namespace nutrition::test
