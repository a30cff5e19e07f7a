#pragma once
// Wraps the platform's HTTP client to keep a list of what was sent and whether any request got
// no answer, so the command line can show the exchange and give up on an unreachable backend.

#include <memory>
#include <mutex>
#include <optional>
#include <string>
#include <vector>

#include "platform/HttpClient.h"

namespace nutrition::cli {

class RecordingHttpClient final : public HttpClient {
 public:
  struct Exchange {
    std::string method;
    std::string url;
    std::string body;  // withheld for the login, which carries the password
    int status = 0;
    std::optional<std::string> transportError;
    bool answered = false;
  };

  explicit RecordingHttpClient(std::shared_ptr<HttpClient> inner) : inner_(std::move(inner)) {}
  // The inner client may still call back while it shuts down: let it go first.
  ~RecordingHttpClient() override { inner_.reset(); }

  void send(HttpRequest request, Callback callback) override;

  std::vector<Exchange> exchanges() const;
  // The first transport error seen, if any.
  std::optional<std::string> transportError() const;

 private:
  std::shared_ptr<HttpClient> inner_;
  mutable std::mutex mutex_;
  std::vector<Exchange> exchanges_;
};

}  // namespace nutrition::cli
