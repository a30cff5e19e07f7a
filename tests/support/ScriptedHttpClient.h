#pragma once
// An HTTP client for unit tests: it keeps every request and answers only when the test says,
// calling back on the test's own thread, which stands in for the HTTP thread.

#include <deque>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "platform/HttpClient.h"

namespace nutrition::test {

class ScriptedHttpClient final : public HttpClient {
 public:
  void send(HttpRequest request, Callback callback) override {
    requests_.push_back(request);
    waiting_.emplace_back(std::move(request), std::move(callback));
  }

  // Every request sent so far, answered or not.
  const std::vector<HttpRequest>& requests() const { return requests_; }
  std::size_t waiting() const { return waiting_.size(); }

  // Answers the oldest request still waiting.
  void answer(std::string body, int status = 200) {
    take(0)(HttpResponse{status, std::move(body), {}});
  }
  void failTransport(std::string error = "connection refused") {
    take(0)(HttpResponse{0, {}, std::move(error)});
  }
  // Answers the oldest waiting request whose URL contains `urlPart`; false when none waits.
  bool answerTo(std::string_view urlPart, std::string body, int status = 200) {
    for (std::size_t i = 0; i < waiting_.size(); ++i) {
      if (waiting_[i].first.url.find(urlPart) != std::string::npos) {
        take(i)(HttpResponse{status, std::move(body), {}});
        return true;
      }
    }
    return false;
  }

 private:
  Callback take(std::size_t index) {
    Callback callback = std::move(waiting_[index].second);
    waiting_.erase(waiting_.begin() + std::ptrdiff_t(index));
    return callback;
  }

  std::vector<HttpRequest> requests_;
  std::deque<std::pair<HttpRequest, Callback>> waiting_;
};

}  // namespace nutrition::test
