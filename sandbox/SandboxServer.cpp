#include "sandbox/SandboxServer.h"

#include <arpa/inet.h>
#include <httplib.h>
#include <netinet/in.h>
#include <sys/resource.h>
#include <sys/socket.h>

#include <algorithm>
#include <cctype>

namespace nutrition::sandbox {
namespace {

const char* kFaultHeader = "X-Sandbox-Fault";

// The library listens with a backlog of 5, which drops connections when many clients connect
// at once; listening again on the bound socket raises it.
class Server : public httplib::Server {
 public:
  void raiseBacklog(int backlog) { ::listen(svr_sock_, backlog); }
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
    case 413:
      return "request body too large";
    case 414:
      return "request line too long";
    default:
      return "request failed";
  }
}

int portOf(const sockaddr_storage& address) {
  if (address.ss_family == AF_INET)
    return ntohs(reinterpret_cast<const sockaddr_in&>(address).sin_port);
  if (address.ss_family == AF_INET6) {
    return ntohs(reinterpret_cast<const sockaddr_in6&>(address).sin6_port);
  }
  return -1;
}

// Shuts down the server side of the connection a request arrived on, so the client sees it
// closed without an answer. The socket is found by its two ports; only this process's own
// descriptors are looked at.
void dropConnection(const httplib::Request& request) {
  rlimit limit{};
  const int maxFd = ::getrlimit(RLIMIT_NOFILE, &limit) == 0 && limit.rlim_cur < 65536
                        ? static_cast<int>(limit.rlim_cur)
                        : 65536;
  for (int fd = 0; fd < maxFd; ++fd) {
    sockaddr_storage local{}, peer{};
    socklen_t localSize = sizeof local, peerSize = sizeof peer;
    if (::getsockname(fd, reinterpret_cast<sockaddr*>(&local), &localSize) != 0) continue;
    if (portOf(local) != request.local_port) continue;
    if (::getpeername(fd, reinterpret_cast<sockaddr*>(&peer), &peerSize) != 0) continue;
    if (portOf(peer) != request.remote_port) continue;
    ::shutdown(fd, SHUT_RDWR);
    return;
  }
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
  const int threads = std::max(2, options_.threads);
  server_->new_task_queue = [threads] { return new httplib::ThreadPool(std::size_t(threads)); };
  server_->set_payload_max_length(options_.maxBodySize);
  // Idle keep-alive connections hold a worker; a short wait lets stop() finish promptly.
  server_->set_keep_alive_timeout(1);
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
  static_cast<Server&>(*server_).raiseBacklog(SOMAXCONN);
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
  recorded.headers.assign(request.headers.begin(), request.headers.end());
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
    dropConnection(request);
    return;
  }
  if (fault && fault->closeConnection) {
    dropConnection(request);
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
