#pragma once
// The HTTP transport under the backend clients. One call sends one request; the callback runs
// once, on the client's own thread, with either an answer (any status, any body) or a
// transport error (no answer at all). Mapping answers to the module's rules is the core's
// job, not the client's.
//
// What every implementation guarantees, whatever the peer sends:
// - Size. An answer's body is capped at `maxResponseBytes` after decompression. A longer one is
//   a transport error and nothing else: no status, no partial body; the body is never held in
//   memory past the cap. Running out of memory while receiving is a transport error too, never
//   an exception or the end of the process.
// - Redirects. A 301, 302, 303, 307 or 308 answer is followed, at most kMaxRedirects times in a
//   row, only when its Location has the request's scheme, host and port. Following keeps the
//   method and body for 307 and 308, and turns into a GET without body for 303 and for a POST
//   answered 301 or 302. A redirect to any other origin is not followed: the callback gets the
//   redirect answer itself (its 3xx status and body), so nothing the request carried, its body
//   least of all, ever reaches another origin. Past kMaxRedirects the last redirect answer is
//   delivered the same way.
// - Schemes. Only http and https are spoken.

#include <chrono>
#include <cstddef>
#include <functional>
#include <optional>
#include <string>
#include <utility>
#include <vector>

namespace nutrition {

// The default cap: generous for any JSON the backend sends.
inline constexpr std::size_t kMaxJsonResponseBytes = std::size_t{8} << 20;
// For requests that fetch images.
inline constexpr std::size_t kMaxImageResponseBytes = std::size_t{32} << 20;
inline constexpr int kMaxRedirects = 5;

struct HttpRequest {
  std::string method = "GET";
  std::string url;
  std::vector<std::pair<std::string, std::string>> headers;
  std::optional<std::string> body;
  std::chrono::milliseconds timeout{60'000};
  // The longest body accepted, counted after decompression.
  std::size_t maxResponseBytes = kMaxJsonResponseBytes;
};

struct HttpResponse {
  int status = 0;
  std::string body;
  // Set when no answer arrived (refused, reset, timed out, cancelled, over its size cap, out
  // of memory); status and body are then meaningless.
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
