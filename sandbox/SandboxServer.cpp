#include "sandbox/SandboxServer.h"

#include <httplib.h>
#include <sys/socket.h>

#include <algorithm>
#include <cctype>

#include "sandbox/HttpConnections.h"

namespace nutrition::sandbox {
namespace {

const char* kFaultHeader = "X-Sandbox-Fault";
const char* kSentAcceptEncoding = "X-Sandbox-Sent-Accept-Encoding";

// The library compresses with brotli at its slowest setting whenever a client accepts it,
// which costs a millisecond or more per answer; answers are gzipped instead, as most servers
// do. What the client sent stays in the request log.
void offerGzipOnly(httplib::Request& request) {
  auto found = request.headers.find("Accept-Encoding");
  if (found == request.headers.end()) return;
  request.headers.emplace(kSentAcceptEncoding, found->second);
  if (found->second.find("gzip") == std::string::npos) {
    request.headers.erase(found);
  } else {
    found->second = "gzip";
  }
}

// The library reads each connection on a pool thread of its own, so a few slow clients could
// hold every thread. Here it only accepts: each accepted socket goes to the connections, which
// hand this class whole requests to parse, route and answer.
class Server : public httplib::Server {
 public:
  // The library listens with a backlog of 5, which drops connections when many clients connect
  // at once; listening again on the bound socket raises it.
  void raiseBacklog(int backlog) { ::listen(svr_sock_, backlog); }

  // Answers the request waiting on `stream`; false when the connection must close, which it
  // does after a request that could not be parsed: where the next one starts is unknown.
  bool answer(httplib::Stream& stream, bool lastRequest) {
    bool closed = false, parsed = false;
    const bool written =
        process_request(stream, lastRequest, closed, [&parsed](httplib::Request& request) {
          parsed = true;
          offerGzipOnly(request);
        });
    return written && parsed && !closed;
  }

  std::function<void(int)> adopt;

 private:
  bool process_and_close_socket(int socket) override {
    adopt(socket);
    return true;
  }
};

// Runs each task at once on the accepting thread: all it does is hand a socket over.
class AcceptingThread final : public httplib::TaskQueue {
 public:
  void enqueue(std::function<void()> task) override { task(); }
  void shutdown() override {}
};

bool equalsIgnoringCase(std::string_view a, std::string_view b) {
  return std::equal(a.begin(), a.end(), b.begin(), b.end(), [](char x, char y) {
    return std::tolower(static_cast<unsigned char>(x)) ==
           std::tolower(static_cast<unsigned char>(y));
  });
}

std::string reasonFor(int status) {
  switch (status) {
    case 400:
      return "bad request";
    case 404:
      return "no such endpoint";
    case 405:
      return "method not allowed on this endpoint";
    case 408:
      return "the request did not arrive in time";
    case 413:
      return "request body too large";
    case 414:
      return "request line too long";
    case 431:
      return "request headers too large";
    case 503:
      return "too many connections";
    default:
      return "request failed";
  }
}

// Shuts down the connection of the request being answered, so the client sees it closed
// without an answer.
void dropConnection() {
  if (const int socket = HttpConnections::currentSocket(); socket >= 0) {
    ::shutdown(socket, SHUT_RDWR);
  }
}

HttpConnections::Options connectionOptions(const SandboxServer::Options& options) {
  return {.workers = std::size_t(std::max(2, options.threads)),
          .maxBody = options.maxBodySize,
          .requestTimeout = options.requestTimeout,
          .idleTimeout = options.idleTimeout};
}

void applyBodyFault(Fault::Body fault, Answer& answer) {
  switch (fault) {
    case Fault::Body::unchanged:
      break;
    case Fault::Body::malformed:
      answer.body = "{\"_id\": \"menu\", \"Days\": [ oops";
      break;
    case Fault::Body::truncated:
      answer.body.resize(answer.body.size() / 2);
      break;
    case Fault::Body::empty:
      answer.body.clear();
      break;
    case Fault::Body::html:
      answer.body =
          "<html><head><title>Internal Server Error</title></head>"
          "<body><h1>Internal Server Error</h1></body></html>";
      answer.contentType = "text/html";
      break;
  }
}

}  // namespace

std::string RecordedRequest::header(std::string_view name) const {
  for (const auto& [key, value] : headers) {
    if (equalsIgnoringCase(key, name)) return value;
  }
  return {};
}

SandboxServer::SandboxServer(Options options)
    : options_(std::move(options)),
      backend_(
          SandboxBackend::Options{options_.dataDirectory, options_.processingTime, options_.now}),
      server_(std::make_unique<Server>()) {
  server_->new_task_queue = [] { return new AcceptingThread; };
  server_->set_payload_max_length(options_.maxBodySize);
  // What the answers' Keep-Alive header announces; the connections enforce it.
  server_->set_keep_alive_max_count(connectionOptions(options_).maxRequestsPerConnection);
  server_->set_keep_alive_timeout(
      std::max<time_t>(1, std::chrono::ceil<std::chrono::seconds>(options_.idleTimeout).count()));
  server_->set_error_handler(httplib::Server::HandlerWithResponse(
      [](const httplib::Request&, httplib::Response& response) {
        if (!response.body.empty() || response.has_header(kFaultHeader)) {
          return httplib::Server::HandlerResponse::Unhandled;
        }
        const Answer error = errorAnswer(response.status, reasonFor(response.status));
        response.set_content(error.body, error.contentType);
        return httplib::Server::HandlerResponse::Handled;
      }));
  const auto handler = [this](const httplib::Request& request, httplib::Response& response) {
    handle(request, response);
  };
  server_->Get(".*", handler);
  server_->Post(".*", handler);
  server_->Patch(".*", handler);
  server_->Delete(".*", handler);
  server_->Put(".*", handler);
  server_->Options(".*", handler);
}

SandboxServer::~SandboxServer() {
  stop();
}

bool SandboxServer::start() {
  if (thread_.joinable()) return true;
  if (options_.port == 0) {
    port_ = server_->bind_to_any_port(options_.host);
    if (port_ <= 0) return false;
  } else {
    if (!server_->bind_to_port(options_.host, options_.port)) return false;
    port_ = options_.port;
  }
  auto& server = static_cast<Server&>(*server_);
  server.raiseBacklog(SOMAXCONN);
  connections_ = std::make_unique<HttpConnections>(
      connectionOptions(options_),
      [&server](httplib::Stream& stream, bool last) { return server.answer(stream, last); },
      [](int status) { return errorAnswer(status, reasonFor(status)).body; });
  server.adopt = [connections = connections_.get()](int socket) { connections->adopt(socket); };
  backend_.setBaseURL(baseURL());
  thread_ = std::thread([this] { server_->listen_after_bind(); });
  for (int i = 0; i < 5000 && !server_->is_running(); ++i) {
    std::this_thread::sleep_for(std::chrono::milliseconds(1));
  }
  return server_->is_running();
}

void SandboxServer::stop() {
  {
    std::lock_guard lock(mutex_);
    stopping_ = true;
  }
  wake_.notify_all();
  server_->stop();
  if (thread_.joinable()) thread_.join();
  if (connections_) connections_->stop();
}

std::string SandboxServer::baseURL() const {
  return "http://" + options_.host + ":" + std::to_string(port_) + "/";
}

std::vector<RecordedRequest> SandboxServer::requests() const {
  std::lock_guard lock(mutex_);
  return log_;
}

void SandboxServer::clearRequests() {
  std::lock_guard lock(mutex_);
  log_.clear();
}

void SandboxServer::setFault(const std::string& path, Fault fault) {
  {
    std::lock_guard lock(mutex_);
    faults_[path] = fault;
  }
  wake_.notify_all();
}

void SandboxServer::clearFaults() {
  {
    std::lock_guard lock(mutex_);
    faults_.clear();
  }
  wake_.notify_all();
}

std::optional<Fault> SandboxServer::faultFor(const std::string& path) const {
  std::lock_guard lock(mutex_);
  const auto found = faults_.find(path);
  if (found == faults_.end()) return std::nullopt;
  return found->second;
}

bool SandboxServer::hold(const std::string& path, std::chrono::milliseconds duration,
                         bool untilCleared) {
  std::unique_lock lock(mutex_);
  return !wake_.wait_for(lock, duration,
                         [&] { return stopping_ || (untilCleared && !faults_.contains(path)); });
}

void SandboxServer::handle(const httplib::Request& request, httplib::Response& response) {
  RecordedRequest recorded;
  recorded.method = request.method;
  recorded.path = request.path;
  if (const auto mark = request.target.find('?'); mark != std::string::npos) {
    recorded.query = request.target.substr(mark + 1);
  }
  for (const auto& [name, value] : request.headers) {
    if (equalsIgnoringCase(name, "Accept-Encoding")) continue;
    recorded.headers.emplace_back(
        equalsIgnoringCase(name, kSentAcceptEncoding) ? "Accept-Encoding" : name, value);
  }
  recorded.body = request.body;
  recorded.remotePort = request.remote_port;
  {
    std::lock_guard lock(mutex_);
    log_.push_back(std::move(recorded));
  }

  const auto fault = faultFor(request.path);
  if (fault && fault->latency.count() > 0 && !hold(request.path, fault->latency, false)) return;
  if (fault && fault->noAnswer) {
    hold(request.path, std::chrono::minutes(10), true);
    dropConnection();
    return;
  }
  if (fault && fault->closeConnection) {
    dropConnection();
    return;
  }

  Answer answer = route(request);
  if (fault) {
    if (fault->status) answer.status = *fault->status;
    applyBodyFault(fault->body, answer);
    if (fault->replacementBody) answer.body = *fault->replacementBody;
    response.set_header(kFaultHeader, "1");
  }
  response.status = answer.status;
  response.set_content(answer.body, answer.contentType);
}

Answer SandboxServer::route(const httplib::Request& request) {
  auto& backend = backend_;
  const std::string& path = request.path;
  const std::string& method = request.method;
  const std::string language = request.get_param_value("Language");
  const std::string userId = request.get_param_value("UserId");
  const auto is = [&](const char* m) { return method == m; };

  static const std::map<std::string, Catalogue> kCatalogues{
      {"/api/intake", Catalogue::intakes},
      {"/api/excluded-aliment", Catalogue::excludedAliments},
      {"/api/intermittent-fasting", Catalogue::fastings},
      {"/api/desired-balance", Catalogue::balances},
      {"/api/preference", Catalogue::preferences},
      {"/api/distribution-by-intake", Catalogue::distributions},
      {"/api/physical-intensity", Catalogue::physicalIntensities},
      {"/api/dish-order", Catalogue::dishOrders},
  };

  if (path == "/api/auth/login") {
    return is("POST") ? backend.login(request.body) : errorAnswer(405, reasonFor(405));
  }
  if (path == "/api/user") {
    if (is("GET")) return backend.getUser(language, userId);
    if (is("POST")) return backend.createUser(language, request.body);
    if (is("PATCH")) return backend.updateUser(language, request.body);
    return errorAnswer(405, reasonFor(405));
  }
  if (path == "/api/menu") {
    return is("GET") ? backend.getMenu(language, userId) : errorAnswer(405, reasonFor(405));
  }
  if (path == "/api/menu/dish/replace") {
    return is("PATCH") ? backend.replaceDish(request.body) : errorAnswer(405, reasonFor(405));
  }
  if (path == "/api/favorite-dish") {
    return is("GET") ? backend.getFavorites(language, userId) : errorAnswer(405, reasonFor(405));
  }
  if (path == "/api/favorite-dish/add") {
    return is("POST") ? backend.addFavorite(language, request.body)
                      : errorAnswer(405, reasonFor(405));
  }
  if (path == "/api/favorite-dish/delete") {
    return is("DELETE") ? backend.removeFavorite(language, request.body)
                        : errorAnswer(405, reasonFor(405));
  }
  if (const auto catalogue = kCatalogues.find(path); catalogue != kCatalogues.end()) {
    return is("GET") ? backend.getCatalogue(catalogue->second, language)
                     : errorAnswer(405, reasonFor(405));
  }
  constexpr std::string_view kImages = "/images/";
  if (path.starts_with(kImages) && is("GET")) return backend.getImage(path.substr(kImages.size()));
  return errorAnswer(404, reasonFor(404));
}

}  // namespace nutrition::sandbox
