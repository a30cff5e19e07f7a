#pragma once
// An HTTP client for unit tests: it keeps every request and answers only when the test says,
// calling back on the test's own thread, which stands in for the HTTP thread.

#include <deque>
#include <string>
#include <vector>

#include "platform/HttpClient.h"

namespace nutrition::test {

class ScriptedHttpClient final : public HttpClient {
 public:
  void send(HttpRequest request, Callback callback) override {
    requests_.push_back(request);
    waiting_.push_back(std::move(callback));
  }

  // Every request sent so far, answered or not.
  const std::vector<HttpRequest>& requests() const { return requests_; }
  std::size_t waiting() const { return waiting_.size(); }

  // Answers the oldest request still waiting.
  void answer(std::string body, int status = 200) {
    next()(HttpResponse{status, std::move(body), {}});
  }
  void failTransport(std::string error = "connection refused") {
    next()(HttpResponse{0, {}, std::move(error)});
  }

 private:
  Callback next() {
    Callback callback = std::move(waiting_.front());
    waiting_.pop_front();
    return callback;
  }

  std::vector<HttpRequest> requests_;
  std::deque<Callback> waiting_;
};

}  // namespace nutrition::test
