#pragma once
// The sandbox nutrition backend over HTTP: a real server on 127.0.0.1 that speaks the
// backend's protocol, for end-to-end tests, the command-line host and simulators.
//
//   SandboxServer server({.processingTime = std::chrono::milliseconds{0}});
//   server.start();                  // an ephemeral port unless one is asked for
//   server.baseURL();                // "http://127.0.0.1:40123/"
//   server.setFault("/api/menu", {.status = 500, .body = Fault::Body::html});
//   server.requests();               // what clients sent, in order
//
// Every answer that is not the backend's own JSON (an unknown path, a malformed request, a
// body or head over its limit, a request that does not arrive in time) is a 4xx with a JSON
// error body. Slow, stalled or hostile clients do not hold up anyone else: requests are read
// whole on one thread before a worker answers them (sandbox/HttpConnections.h). Connections
// are kept alive between requests, for up to 10,000 requests each.

#include <chrono>
#include <condition_variable>
#include <filesystem>
#include <functional>
#include <map>
#include <memory>
#include <mutex>
#include <optional>
#include <string>
#include <thread>
#include <utility>
#include <vector>

#include "sandbox/SandboxBackend.h"

namespace httplib {
class Server;
struct Request;
struct Response;
}  // namespace httplib

namespace nutrition::sandbox {

class HttpConnections;

struct RecordedRequest {
  std::string method;
  std::string path;   // without the query, e.g. "/api/user"
  std::string query;  // as sent, still percent-encoded, e.g. "Language=es_ES&UserId=m1_demo"
  std::vector<std::pair<std::string, std::string>> headers;
  std::string body;
  int remotePort = 0;  // the client's port: the same for requests on one reused connection

  // The first value of a header, compared case-insensitively; empty when absent.
  std::string header(std::string_view name) const;
};

// What to do to the requests of one path instead of (or on top of) answering normally.
struct Fault {
  enum class Body {
    unchanged,
    malformed,  // a body that is not JSON at all
    truncated,  // the first half of the real body
    empty,
    html,  // an HTML error page
  };

  std::chrono::milliseconds latency{0};
  std::optional<int> status;
  Body body = Body::unchanged;
  std::optional<std::string> replacementBody;  // answered instead of the real body
  bool closeConnection = false;                // drop the connection without answering
  bool noAnswer = false;  // hold the request until the server stops or the fault is cleared
};

class SandboxServer {
 public:
  struct Options {
    std::string host = "127.0.0.1";
    int port = 0;  // 0: any free port
    std::optional<std::filesystem::path> dataDirectory;
    std::chrono::milliseconds processingTime{3000};
    std::size_t maxBodySize = 1 << 20;
    int threads = 16;  // workers answering requests; waiting for a request takes none
    // A request must arrive whole within this time of its first byte; 408 otherwise.
    std::chrono::milliseconds requestTimeout{5000};
    // A kept-alive connection with no request for this long is closed.
    std::chrono::milliseconds idleTimeout{5000};
    // The backend's clock in seconds since 1970; the system clock when empty.
    std::function<double()> now;
  };

  SandboxServer() : SandboxServer(Options{}) {}
  explicit SandboxServer(Options options);
  ~SandboxServer();
  SandboxServer(const SandboxServer&) = delete;
  SandboxServer& operator=(const SandboxServer&) = delete;

  // Binds and starts serving on a thread of its own; false when the address cannot be bound.
  bool start();
  // Stops serving; requests held by a fault are let go. Safe to call twice.
  void stop();

  int port() const { return port_; }
  // "http://127.0.0.1:PORT/", ending in "/".
  std::string baseURL() const;

  std::vector<RecordedRequest> requests() const;
  void clearRequests();

  // Faults apply to requests whose path (e.g. "/api/menu") matches exactly.
  void setFault(const std::string& path, Fault fault);
  void clearFaults();

  SandboxBackend& backend() { return backend_; }

 private:
  void handle(const httplib::Request& request, httplib::Response& response);
  Answer route(const httplib::Request& request);
  std::optional<Fault> faultFor(const std::string& path) const;
  // Waits up to `duration`; false when the server is stopping or the fault was cleared.
  bool hold(const std::string& path, std::chrono::milliseconds duration, bool untilCleared);

  Options options_;
  SandboxBackend backend_;
  std::unique_ptr<httplib::Server> server_;
  std::unique_ptr<HttpConnections> connections_;
  std::thread thread_;
  int port_ = 0;
  bool stopping_ = false;

  mutable std::mutex mutex_;
  std::condition_variable wake_;
  std::vector<RecordedRequest> log_;
  std::map<std::string, Fault> faults_;
};

}  // namespace nutrition::sandbox
