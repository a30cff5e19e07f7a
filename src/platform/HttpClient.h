#pragma once
// The HTTP transport under the backend clients. One call sends one request; the callback runs
// once, on the client's own thread, with either an answer (any status, any body) or a
// transport error (no answer at all). Mapping answers to the module's rules is the core's
// job, not the client's.

#include <chrono>
#include <functional>
#include <optional>
#include <string>
#include <utility>
#include <vector>

namespace nutrition {

struct HttpRequest {
  std::string method = "GET";
  std::string url;
  std::vector<std::pair<std::string, std::string>> headers;
  std::optional<std::string> body;
  std::chrono::milliseconds timeout{60'000};
};

struct HttpResponse {
  int status = 0;
  std::string body;
  // Set when no answer arrived (refused, reset, timed out, cancelled); status and body are
  // then meaningless.
  std::optional<std::string> transportError;
};

class HttpClient {
 public:
  using Callback = std::function<void(HttpResponse)>;

  virtual ~HttpClient() = default;
  virtual void send(HttpRequest request, Callback callback) = 0;
};

// Answers every request with a transport error at once: the portable default until a
// platform installs a real client.
class OfflineHttpClient final : public HttpClient {
 public:
  void send(HttpRequest, Callback callback) override {
    callback(HttpResponse{0, {}, "no HTTP client is installed"});
  }
};

}  // namespace nutrition
