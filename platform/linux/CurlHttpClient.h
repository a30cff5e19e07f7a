#pragma once
// The HTTP client on Linux: libcurl's multi interface on one worker thread. Requests run
// concurrently, connections to the same host are reused, callbacks run on the worker thread,
// and destroying the client ends the requests still in flight with a "cancelled" transport
// error. Size caps and redirects follow HttpClient's contract: redirects are followed here,
// not by libcurl, so that each one is checked against the request's origin first.

#include <cstddef>
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
  // libcurl's write callback: keeps the body within its cap; never throws.
  static std::size_t receive(char* data, std::size_t size, std::size_t count,
                             void* transfer) noexcept;

  void* multi_ = nullptr;  // CURLM*
  std::mutex mutex_;
  std::deque<std::unique_ptr<Transfer>> pending_;
  std::deque<std::unique_ptr<Transfer>> active_;
  bool stopping_ = false;
  std::thread worker_;
};

}  // namespace nutrition
