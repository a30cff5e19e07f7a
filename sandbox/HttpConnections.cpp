#include "sandbox/HttpConnections.h"

#include <arpa/inet.h>
#include <httplib.h>
#include <netinet/in.h>
#include <netinet/tcp.h>
#include <poll.h>
#include <sys/eventfd.h>
#include <sys/socket.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <cstring>
#include <optional>
#include <string_view>

namespace nutrition::sandbox {

using Steady = std::chrono::steady_clock;

struct HttpConnections::Connection {
  Connection(int socket, std::atomic<std::size_t>& openCount) : fd(socket), open(openCount) {
    ++open;
  }
  ~Connection() {
    ::close(fd);
    --open;
  }
  Connection(const Connection&) = delete;
  Connection& operator=(const Connection&) = delete;

  const int fd;
  std::atomic<std::size_t>& open;
  std::string buffer;        // received and not yet read by a worker
  std::size_t consumed = 0;  // bytes of `buffer` the worker has read
  std::size_t answered = 0;  // requests answered on this connection
  Steady::time_point deadline;
  bool started = false;   // a byte of the next request has arrived
  bool examine = false;   // `buffer` changed since it was last looked at
  bool draining = false;  // refused: discarding what the client still sends, then closing
  bool closed = false;    // to be let go by the reader
  std::string peerAddress, localAddress;
  int peerPort = -1, localPort = -1;
};

namespace {

thread_local int tCurrentSocket = -1;

constexpr std::size_t kReceiveChunk = 64 * 1024;
// How long a refused client may go on sending before the connection closes. Closing at once
// with its bytes unread would reset the connection and could lose the answer on the way.
constexpr auto kLinger = std::chrono::seconds(1);

std::string_view reasonPhrase(int status) {
  switch (status) {
    case 400:
      return "Bad Request";
    case 408:
      return "Request Timeout";
    case 413:
      return "Payload Too Large";
    case 414:
      return "URI Too Long";
    case 431:
      return "Request Header Fields Too Large";
    case 503:
      return "Service Unavailable";
    default:
      return "Error";
  }
}

bool equalsIgnoringCase(std::string_view a, std::string_view b) {
  return std::equal(a.begin(), a.end(), b.begin(), b.end(), [](char x, char y) {
    return std::tolower(static_cast<unsigned char>(x)) ==
           std::tolower(static_cast<unsigned char>(y));
  });
}

std::string_view trim(std::string_view text) {
  const auto first = text.find_first_not_of(" \t");
  if (first == std::string_view::npos) return {};
  return text.substr(first, text.find_last_not_of(" \t") - first + 1);
}

// The decimal value of `text`, or nothing when it is not a plain number that fits.
std::optional<std::size_t> parseLength(std::string_view text) {
  if (text.empty() || text.size() > 18) return std::nullopt;
  std::size_t value = 0;
  for (const char c : text) {
    if (c < '0' || c > '9') return std::nullopt;
    value = value * 10 + std::size_t(c - '0');
  }
  return value;
}

void describe(int fd, bool peer, std::string& address, int& port) {
  sockaddr_storage storage{};
  socklen_t size = sizeof storage;
  auto* raw = reinterpret_cast<sockaddr*>(&storage);
  if ((peer ? ::getpeername(fd, raw, &size) : ::getsockname(fd, raw, &size)) != 0) return;
  char text[INET6_ADDRSTRLEN] = {};
  if (storage.ss_family == AF_INET) {
    const auto& v4 = reinterpret_cast<const sockaddr_in&>(storage);
    ::inet_ntop(AF_INET, &v4.sin_addr, text, sizeof text);
    port = ntohs(v4.sin_port);
  } else if (storage.ss_family == AF_INET6) {
    const auto& v6 = reinterpret_cast<const sockaddr_in6&>(storage);
    ::inet_ntop(AF_INET6, &v6.sin6_addr, text, sizeof text);
    port = ntohs(v6.sin6_port);
  }
  address = text;
}

std::string errorResponse(int status, const std::string& body) {
  return "HTTP/1.1 " + std::to_string(status) + " " + std::string(reasonPhrase(status)) +
         "\r\nContent-Type: application/json\r\nContent-Length: " + std::to_string(body.size()) +
         "\r\nConnection: close\r\n\r\n" + body;
}

int millisecondsUntil(Steady::time_point deadline) {
  const auto left = std::chrono::ceil<std::chrono::milliseconds>(deadline - Steady::now());
  return int(std::clamp<std::int64_t>(left.count(), 0, 60'000));
}

// A worker's view of a connection: reads come from what the reader buffered, then from the
// socket until the request's deadline; writes must finish within the write time-out. Both give
// up at once when the server stops.
class ConnectionStream final : public httplib::Stream {
 public:
  ConnectionStream(HttpConnections::Connection& connection, int stopFd,
                   std::chrono::milliseconds writeTimeout)
      : connection_(connection), stopFd_(stopFd), writeTimeout_(writeTimeout) {}

  bool is_readable() const override {
    return buffered() > 0 || waitFor(POLLIN, connection_.deadline);
  }
  bool is_writable() const override { return waitFor(POLLOUT, writeDeadline()); }

  ssize_t read(char* ptr, size_t size) override {
    if (const std::size_t left = buffered(); left > 0) {
      const std::size_t n = std::min(size, left);
      std::memcpy(ptr, connection_.buffer.data() + connection_.consumed, n);
      connection_.consumed += n;
      return ssize_t(n);
    }
    if (!waitFor(POLLIN, connection_.deadline)) return -1;
    return ::recv(connection_.fd, ptr, size, MSG_DONTWAIT);
  }

  ssize_t write(const char* ptr, size_t size) override {
    std::size_t sent = 0;
    while (sent < size) {
      const ssize_t n =
          ::send(connection_.fd, ptr + sent, size - sent, MSG_DONTWAIT | MSG_NOSIGNAL);
      if (n > 0) {
        sent += std::size_t(n);
      } else if (n < 0 && (errno == EAGAIN || errno == EWOULDBLOCK || errno == EINTR)) {
        if (!waitFor(POLLOUT, writeDeadline())) return -1;
      } else {
        return -1;
      }
    }
    return ssize_t(size);
  }

  void get_remote_ip_and_port(std::string& ip, int& port) const override {
    ip = connection_.peerAddress;
    port = connection_.peerPort;
  }
  void get_local_ip_and_port(std::string& ip, int& port) const override {
    ip = connection_.localAddress;
    port = connection_.localPort;
  }
  int socket() const override { return connection_.fd; }

 private:
  std::size_t buffered() const { return connection_.buffer.size() - connection_.consumed; }

  Steady::time_point writeDeadline() const {
    if (!writeDeadline_) writeDeadline_ = Steady::now() + writeTimeout_;
    return *writeDeadline_;
  }

  // Whether the socket became ready (or failed, so that the next call reports it) in time.
  bool waitFor(short events, Steady::time_point deadline) const {
    pollfd fds[2] = {{connection_.fd, events, 0}, {stopFd_, POLLIN, 0}};
    while (true) {
      const int ready = ::poll(fds, 2, millisecondsUntil(deadline));
      if (ready < 0 && errno == EINTR) continue;
      if (ready <= 0) return false;
      if (fds[1].revents != 0) return false;
      return fds[0].revents != 0;
    }
  }

  HttpConnections::Connection& connection_;
  const int stopFd_;
  const std::chrono::milliseconds writeTimeout_;
  mutable std::optional<Steady::time_point> writeDeadline_;
};

}  // namespace

HttpConnections::HttpConnections(Options options, Serve serve, ErrorBody errorBody)
    : options_(options),
      serve_(std::move(serve)),
      errorBody_(std::move(errorBody)),
      wakeFd_(::eventfd(0, EFD_NONBLOCK | EFD_CLOEXEC)),
      stopFd_(::eventfd(0, EFD_NONBLOCK | EFD_CLOEXEC)) {
  reader_ = std::thread([this] { readLoop(); });
  for (std::size_t i = 0; i < std::max<std::size_t>(1, options_.workers); ++i) {
    workers_.emplace_back([this] { workLoop(); });
  }
}

HttpConnections::~HttpConnections() {
  stop();
  ::close(wakeFd_);
  ::close(stopFd_);
}

int HttpConnections::currentSocket() {
  return tCurrentSocket;
}

void HttpConnections::stop() {
  {
    std::lock_guard lock(mutex_);
    stopping_ = true;
  }
  const std::uint64_t one = 1;
  (void)::write(stopFd_, &one, sizeof one);
  wakeReader();
  ready_.notify_all();
  if (reader_.joinable()) reader_.join();
  for (auto& worker : workers_) {
    if (worker.joinable()) worker.join();
  }
  std::lock_guard lock(mutex_);
  toRead_.clear();
  toServe_.clear();
}

void HttpConnections::wakeReader() const {
  const std::uint64_t one = 1;
  (void)::write(wakeFd_, &one, sizeof one);
}

void HttpConnections::adopt(int socket) {
  auto connection = std::make_unique<Connection>(socket, open_);
  if (open_ > options_.maxConnections) {
    const std::string answer = errorResponse(503, errorBody_(503));
    (void)::send(socket, answer.data(), answer.size(), MSG_DONTWAIT | MSG_NOSIGNAL);
    return;
  }
  const int on = 1;
  ::setsockopt(socket, IPPROTO_TCP, TCP_NODELAY, &on, sizeof on);
  describe(socket, true, connection->peerAddress, connection->peerPort);
  describe(socket, false, connection->localAddress, connection->localPort);
  connection->deadline = Steady::now() + options_.idleTimeout;
  {
    std::lock_guard lock(mutex_);
    if (stopping_) return;
    toRead_.push_back(std::move(connection));
  }
  wakeReader();
}

void HttpConnections::workLoop() {
  while (true) {
    std::unique_ptr<Connection> connection;
    {
      std::unique_lock lock(mutex_);
      ready_.wait(lock, [&] { return stopping_ || !toServe_.empty(); });
      if (stopping_) return;
      connection = std::move(toServe_.front());
      toServe_.pop_front();
    }
    const bool last = ++connection->answered >= options_.maxRequestsPerConnection;
    bool keep = false;
    {
      ConnectionStream stream(*connection, stopFd_, options_.writeTimeout);
      tCurrentSocket = connection->fd;
      keep = serve_(stream, last) && !last;
      tCurrentSocket = -1;
    }
    if (!keep) continue;  // closes it

    // Back to the reader; what is left in the buffer is the start of the next request.
    connection->buffer.erase(0, connection->consumed);
    connection->consumed = 0;
    connection->started = !connection->buffer.empty();
    connection->examine = connection->started;
    connection->deadline =
        Steady::now() + (connection->started ? options_.requestTimeout : options_.idleTimeout);
    {
      std::lock_guard lock(mutex_);
      if (stopping_) return;
      toRead_.push_back(std::move(connection));
    }
    wakeReader();
  }
}

void HttpConnections::readLoop() {
  std::vector<pollfd> fds;
  while (true) {
    {
      std::lock_guard lock(mutex_);
      if (stopping_) break;
      for (auto& connection : toRead_)
        reading_.push_back(std::move(connection));
      toRead_.clear();
    }

    const auto now = Steady::now();
    std::vector<std::unique_ptr<Connection>> whole;
    for (auto& connection : reading_) {
      int status = 0;
      if (connection->examine && !connection->draining) {
        connection->examine = false;
        const Verdict verdict = examine(*connection, status);
        if (verdict == Verdict::whole) {
          whole.push_back(std::move(connection));
          continue;
        }
        if (verdict == Verdict::invalid) refuse(*connection, status);
      }
      if (connection->deadline <= now) {
        if (connection->draining || !connection->started) {
          connection->closed = true;
        } else {
          refuse(*connection, 408);
        }
      }
      if (connection->closed) connection.reset();
    }
    std::erase(reading_, nullptr);
    if (!whole.empty()) {
      {
        std::lock_guard lock(mutex_);
        for (auto& connection : whole)
          toServe_.push_back(std::move(connection));
      }
      // One worker per request: waking them all would have them fight over it.
      for (std::size_t i = 0; i < whole.size(); ++i)
        ready_.notify_one();
    }

    fds.assign(1, pollfd{wakeFd_, POLLIN, 0});
    auto wakeAt = Steady::time_point::max();
    for (const auto& connection : reading_) {
      fds.push_back(pollfd{connection->fd, POLLIN, 0});
      wakeAt = std::min(wakeAt, connection->deadline);
    }
    const int timeout = wakeAt == Steady::time_point::max() ? -1 : millisecondsUntil(wakeAt);
    if (::poll(fds.data(), fds.size(), timeout) <= 0) continue;
    if (fds[0].revents != 0) {
      std::uint64_t count = 0;
      (void)::read(wakeFd_, &count, sizeof count);
    }
    for (std::size_t i = 1; i < fds.size(); ++i) {
      if (fds[i].revents != 0) receive(*reading_[i - 1]);
    }
  }
  reading_.clear();
}

void HttpConnections::receive(Connection& connection) {
  // One read per wake-up: the buffer never grows past a whole request by more than a chunk.
  const std::size_t before = connection.buffer.size();
  connection.buffer.resize(before + kReceiveChunk);
  const ssize_t n =
      ::recv(connection.fd, connection.buffer.data() + before, kReceiveChunk, MSG_DONTWAIT);
  connection.buffer.resize(before + std::size_t(std::max<ssize_t>(n, 0)));
  if (n == 0 || (n < 0 && errno != EAGAIN && errno != EWOULDBLOCK && errno != EINTR)) {
    connection.closed = true;
    return;
  }
  if (n < 0) return;
  if (connection.draining) {
    connection.buffer.clear();
    return;
  }
  if (!connection.started) {
    connection.started = true;
    connection.deadline = Steady::now() + options_.requestTimeout;
  }
  connection.examine = true;
}

HttpConnections::Verdict HttpConnections::examine(Connection& connection, int& status) const {
  constexpr auto npos = std::string_view::npos;
  const std::string_view data(connection.buffer);
  const auto lineEnd = data.find("\r\n");
  if ((lineEnd == npos ? data.size() : lineEnd) > options_.maxRequestLine) {
    status = 414;
    return Verdict::invalid;
  }
  const auto headEnd = data.find("\r\n\r\n");
  if (headEnd == npos || headEnd + 4 > options_.maxHead) {
    if (data.size() <= options_.maxHead) return Verdict::incomplete;
    status = 431;
    return Verdict::invalid;
  }

  std::optional<std::size_t> length;
  bool expectsContinue = false;
  for (auto at = lineEnd + 2; at < headEnd + 2;) {
    const auto end = data.find("\r\n", at);
    const std::string_view line = data.substr(at, end - at);
    at = end + 2;
    const auto colon = line.find(':');
    if (colon == npos) continue;
    const std::string_view name = trim(line.substr(0, colon));
    const std::string_view value = trim(line.substr(colon + 1));
    if (equalsIgnoringCase(name, "Expect"))
      expectsContinue = equalsIgnoringCase(value, "100-continue");
    if (!equalsIgnoringCase(name, "Content-Length")) continue;
    const auto stated = parseLength(value);
    if (!stated || (length && *length != *stated)) {
      status = 400;
      return Verdict::invalid;
    }
    length = stated;
  }
  if (length && *length > options_.maxBody) {
    status = 413;
    return Verdict::invalid;
  }
  // A body without a stated length (chunked), or one the client sends only once told to
  // continue, is read by the worker, within the same deadline.
  const bool bodyHere = data.size() >= headEnd + 4 + length.value_or(0);
  return bodyHere || expectsContinue ? Verdict::whole : Verdict::incomplete;
}

void HttpConnections::refuse(Connection& connection, int status) {
  const std::string answer = errorResponse(status, errorBody_(status));
  (void)::send(connection.fd, answer.data(), answer.size(), MSG_DONTWAIT | MSG_NOSIGNAL);
  ::shutdown(connection.fd, SHUT_WR);
  connection.draining = true;
  connection.buffer.clear();
  connection.buffer.shrink_to_fit();
  connection.deadline = Steady::now() + kLinger;
}

}  // namespace nutrition::sandbox
