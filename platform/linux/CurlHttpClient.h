#pragma once
// The HTTP client on Linux: libcurl's multi interface on one worker thread. Requests run
// concurrently, connections to the same host are reused, callbacks run on the worker thread,
// and destroying the client ends the requests still in flight with a "cancelled" transport
// error.

#include <deque>
#include <memory>
#include <mutex>
#include <thread>

#include "platform/HttpClient.h"

namespace nutrition {

class CurlHttpClient final : public HttpClient {
 public:
  CurlHttpClient();
  ~CurlHttpClient() override;
  CurlHttpClient(const CurlHttpClient&) = delete;
  CurlHttpClient& operator=(const CurlHttpClient&) = delete;

  void send(HttpRequest request, Callback callback) override;

 private:
  struct Transfer;
  void run();
  void start(std::unique_ptr<Transfer> transfer);
  void finish(Transfer* transfer, int code);

  void* multi_ = nullptr;  // CURLM*
  std::mutex mutex_;
  std::deque<std::unique_ptr<Transfer>> pending_;
  std::deque<std::unique_ptr<Transfer>> active_;
  bool stopping_ = false;
  std::thread worker_;
};

}  // namespace nutrition
