#pragma once
// The sandbox server's connections. One thread polls every open connection and buffers each
// request until it has arrived whole (its head and, when it states a length, its body); only
// then does a worker answer it. A client that trickles or stalls therefore costs a buffer and a
// poll entry, never a worker, and is dropped with 408 when its request has not arrived within
// the request time-out. Requests that cannot be read (a request line or head over its limit, a
// body over its limit, a bad length) are answered with a 4xx here, without a worker.
//
// Connections are kept alive between requests until they have been idle for the idle time-out;
// Nagle's algorithm is off so that an answer never waits for the client's delayed ACK.

#include <atomic>
#include <chrono>
#include <condition_variable>
#include <cstddef>
#include <deque>
#include <functional>
#include <memory>
#include <mutex>
#include <string>
#include <thread>
#include <vector>

namespace httplib {
class Stream;
}

namespace nutrition::sandbox {

class HttpConnections {
 public:
  struct Options {
    std::size_t workers = 16;
    std::size_t maxConnections = 512;  // more are answered 503 and closed
    std::size_t maxRequestsPerConnection = 10'000;
    std::size_t maxRequestLine = 8 * 1024;
    std::size_t maxHead = 64 * 1024;  // request line and headers
    std::size_t maxBody = 1 << 20;
    // From a request's first byte to its last.
    std::chrono::milliseconds requestTimeout{5000};
    // Between requests on a kept-alive connection, and before the first one.
    std::chrono::milliseconds idleTimeout{5000};
    // For writing one answer.
    std::chrono::milliseconds writeTimeout{5000};
  };

  // Answers the one request waiting on `stream`; false when the connection must close.
  // `lastRequest` asks the answer to say that it closes the connection.
  using Serve = std::function<bool(httplib::Stream& stream, bool lastRequest)>;
  // The body of an error answer this class writes itself (a JSON error, as the server's own).
  using ErrorBody = std::function<std::string(int status)>;

  HttpConnections(Options options, Serve serve, ErrorBody errorBody);
  ~HttpConnections();
  HttpConnections(const HttpConnections&) = delete;
  HttpConnections& operator=(const HttpConnections&) = delete;

  // Takes over an accepted socket.
  void adopt(int socket);
  // Closes every connection and lets the threads go; a request being answered has its reads
  // and writes cut short. Safe to call twice.
  void stop();

  // The socket of the request being answered on the calling thread, -1 on any other thread.
  static int currentSocket();

  struct Connection;

 private:
  enum class Verdict { incomplete, whole, invalid };

  void readLoop();
  void workLoop();
  void receive(Connection& connection);
  Verdict examine(Connection& connection, int& status) const;
  void refuse(Connection& connection, int status);
  void wakeReader() const;

  const Options options_;
  const Serve serve_;
  const ErrorBody errorBody_;
  int wakeFd_ = -1;  // wakes the reader; drained by it
  int stopFd_ = -1;  // readable once stopping; never drained
  std::atomic<std::size_t> open_{0};

  std::mutex mutex_;
  std::condition_variable ready_;
  bool stopping_ = false;
  std::vector<std::unique_ptr<Connection>> toRead_;  // adopted or answered, for the reader
  std::deque<std::unique_ptr<Connection>> toServe_;  // holding a whole request

  std::vector<std::unique_ptr<Connection>> reading_;  // the reader's own
  std::thread reader_;
  std::vector<std::thread> workers_;
};

}  // namespace nutrition::sandbox
