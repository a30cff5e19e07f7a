// The libcurl client against small local servers that misbehave on purpose: answers too long
// to hold, compressed or not, and redirects within and away from the request's origin.

#include "platform/linux/CurlHttpClient.h"

#include <gtest/gtest.h>
#include <httplib.h>
#include <sys/resource.h>
#include <unistd.h>
#include <zlib.h>

#include <algorithm>
#include <atomic>
#include <fstream>
#include <future>
#include <mutex>
#include <thread>

#include "base/Log.h"

namespace nutrition {
namespace {

using namespace std::chrono_literals;

// A server bound to an ephemeral port from the start; it serves once started, and remembers
// every request that reached it.
class LocalServer {
 public:
  LocalServer() : port_(server_.bind_to_any_port("127.0.0.1")) {
    server_.set_pre_routing_handler([this](const httplib::Request& request, httplib::Response&) {
      std::lock_guard lock(mutex_);
      log_.push_back(request.method + " " + request.path);
      return httplib::Server::HandlerResponse::Unhandled;
    });
  }
  ~LocalServer() {
    server_.stop();
    if (thread_.joinable()) thread_.join();
  }

  httplib::Server& routes() { return server_; }
  void start() {
    thread_ = std::thread([this] { server_.listen_after_bind(); });
    while (!server_.is_running())
      std::this_thread::yield();
  }
  std::string url(const std::string& path) const {
    return "http://127.0.0.1:" + std::to_string(port_) + path;
  }
  int port() const { return port_; }
  std::vector<std::string> received() const {
    std::lock_guard lock(mutex_);
    return log_;
  }

 private:
  httplib::Server server_;
  const int port_;
  std::thread thread_;
  mutable std::mutex mutex_;
  std::vector<std::string> log_;
};

// `size` zero bytes, gzipped: a few kilobytes on the wire.
std::string gzippedZeros(std::size_t size) {
  z_stream stream{};
  deflateInit2(&stream, 1, Z_DEFLATED, 15 + 16, 9, Z_DEFAULT_STRATEGY);
  const std::string zeros(1 << 20, '\0');
  std::string out;
  char buffer[1 << 16];
  for (std::size_t fed = 0; fed < size; fed += zeros.size()) {
    stream.next_in = reinterpret_cast<Bytef*>(const_cast<char*>(zeros.data()));
    stream.avail_in = uInt(std::min(zeros.size(), size - fed));
    const int flush = fed + zeros.size() >= size ? Z_FINISH : Z_NO_FLUSH;
    do {
      stream.next_out = reinterpret_cast<Bytef*>(buffer);
      stream.avail_out = sizeof buffer;
      deflate(&stream, flush);
      out.append(buffer, sizeof buffer - stream.avail_out);
    } while (stream.avail_out == 0);
  }
  deflateEnd(&stream);
  return out;
}

class CurlHttpClientTest : public ::testing::Test {
 protected:
  void SetUp() override {
    auto& routes = origin_.routes();
    routes.Get("/bomb", [](const httplib::Request&, httplib::Response& response) {
      static const std::string bomb = gzippedZeros(std::size_t{16} << 20);
      response.set_header("Content-Encoding", "gzip");
      response.set_content(bomb, "application/octet-stream");
    });
    routes.Get(R"(/sized/(\d+))", [](const httplib::Request& request, httplib::Response& response) {
      response.set_content(std::string(std::stoul(request.matches[1]), 'x'),
                           "application/octet-stream");
    });
    // A gigabyte, streamed as long as the client reads.
    routes.Get("/endless", [this](const httplib::Request&, httplib::Response& response) {
      response.set_content_provider(std::size_t{1} << 30, "application/octet-stream",
                                    [this](std::size_t, std::size_t, httplib::DataSink& sink) {
                                      static const std::string chunk(1 << 16, 'x');
                                      if (!sink.write(chunk.data(), chunk.size())) return false;
                                      streamed_ += chunk.size();
                                      return true;
                                    });
    });
    const auto redirect = [](std::string location, int status) {
      return [location, status](const httplib::Request&, httplib::Response& response) {
        response.status = status;
        response.set_header("Location", location);
      };
    };
    routes.Post("/moved", redirect("/echo", 307));
    routes.Post("/permanent", redirect("/echo", 308));
    routes.Post("/see-other", redirect("/echo", 303));
    routes.Post("/found", redirect("/echo", 302));
    routes.Patch("/found", redirect("/echo", 302));
    routes.Get("/loop", redirect("/loop", 302));
    routes.Post("/elsewhere", redirect(other_.url("/echo"), 307));
    routes.Get("/other-name",
               redirect("http://localhost:" + std::to_string(origin_.port()) + "/echo", 302));
    const auto echo = [](const httplib::Request& request, httplib::Response& response) {
      response.set_content(request.method + " " + request.body, "text/plain");
    };
    routes.Get("/echo", echo);
    routes.Post("/echo", echo);
    routes.Patch("/echo", echo);
    other_.routes().Get("/echo", echo);
    other_.routes().Post("/echo", echo);
    other_.start();
    origin_.start();
  }

  // Sends through the client and waits for the answer; fails the test after 10 s.
  HttpResponse fetch(HttpRequest request) {
    auto promise = std::make_shared<std::promise<HttpResponse>>();
    auto answer = promise->get_future();
    client_.send(std::move(request),
                 [promise](HttpResponse response) { promise->set_value(std::move(response)); });
    if (answer.wait_for(10s) != std::future_status::ready) {
      ADD_FAILURE() << "no answer within 10 s";
      return HttpResponse{0, {}, "test gave up"};
    }
    return answer.get();
  }

  HttpResponse get(const std::string& path, std::size_t cap = kMaxJsonResponseBytes) {
    return fetch({.url = origin_.url(path), .maxResponseBytes = cap});
  }

  std::atomic<std::size_t> streamed_{0};
  LocalServer other_;
  LocalServer origin_;
  CurlHttpClient client_;
};

TEST_F(CurlHttpClientTest, AnswersOverTheirCapAreTransportErrorsOnly) {
  struct Case {
    const char* name;
    std::string path;
    std::size_t cap;
    bool accepted;
  };
  for (const Case& c : {
           Case{"gzip bomb: 16 MiB from a few KiB", "/bomb", kMaxJsonResponseBytes, false},
           Case{"a gigabyte, plain", "/endless", kMaxJsonResponseBytes, false},
           Case{"an image cap holds 16 MiB", "/bomb", kMaxImageResponseBytes, true},
           Case{"exactly the cap", "/sized/1000", 1000, true},
           Case{"one byte over", "/sized/1001", 1000, false},
       }) {
    SCOPED_TRACE(c.name);
    const HttpResponse response = get(c.path, c.cap);
    if (c.accepted) {
      EXPECT_FALSE(response.transportError) << *response.transportError;
      EXPECT_EQ(response.status, 200);
      EXPECT_EQ(response.body.size(), c.path == "/bomb" ? std::size_t{16} << 20 : c.cap);
    } else {
      ASSERT_TRUE(response.transportError);
      EXPECT_NE(response.transportError->find(std::to_string(c.cap)), std::string::npos);
      EXPECT_EQ(response.status, 0);
      EXPECT_EQ(response.body, "");
    }
  }
  // The endless answer was cut short, not read to its end.
  EXPECT_LT(streamed_.load(), std::size_t{256} << 20);
}

TEST_F(CurlHttpClientTest, RedirectsAreFollowedWithinTheOriginOnly) {
  struct Case {
    const char* name;
    std::string method;
    std::string path;
    int status;
    std::string body;
  };
  for (const Case& c : {
           Case{"307 keeps method and body", "POST", "/moved", 200, "POST secret"},
           Case{"308 keeps method and body", "POST", "/permanent", 200, "POST secret"},
           Case{"303 turns into a GET", "POST", "/see-other", 200, "GET "},
           Case{"302 turns a POST into a GET", "POST", "/found", 200, "GET "},
           Case{"302 keeps other methods", "PATCH", "/found", 200, "PATCH secret"},
           Case{"another port is another origin", "POST", "/elsewhere", 307, ""},
           Case{"another host name is another origin", "GET", "/other-name", 302, ""},
       }) {
    SCOPED_TRACE(c.name);
    const HttpResponse response =
        fetch({.method = c.method,
               .url = origin_.url(c.path),
               .body = c.method == "GET" ? std::nullopt : std::optional("secret")});
    EXPECT_FALSE(response.transportError);
    EXPECT_EQ(response.status, c.status);
    EXPECT_EQ(response.body, c.body);
  }
  EXPECT_TRUE(other_.received().empty());

  // A loop ends after kMaxRedirects follows with the last redirect answer.
  const HttpResponse looped = get("/loop");
  EXPECT_EQ(looped.status, 302);
  const auto received = origin_.received();
  EXPECT_EQ(std::count(received.begin(), received.end(), "GET /loop"), kMaxRedirects + 1);
}

TEST_F(CurlHttpClientTest, ACompletionThatThrowsLeavesTheClientServing) {
  const LogSink previous = setLogSink([](LogLevel, std::string_view) {});
  std::promise<void> thrown;
  client_.send({.url = origin_.url("/echo")}, [&](HttpResponse) {
    thrown.set_value();
    throw std::runtime_error("completion failed");
  });
  ASSERT_EQ(thrown.get_future().wait_for(10s), std::future_status::ready);
  EXPECT_EQ(get("/echo").body, "GET ");
  setLogSink(previous);
}

#if !defined(__SANITIZE_ADDRESS__) && !defined(__SANITIZE_THREAD__)
// The sanitizers reserve more address space than the limit below allows.
TEST_F(CurlHttpClientTest, RunningOutOfMemoryWhileReceivingIsATransportError) {
  GTEST_FLAG_SET(death_test_style, "threadsafe");
  const auto receiveUnderALimit = [this] {
    // Room for what the process holds now and a little more, not for the answer.
    std::size_t pages = 0;
    std::ifstream("/proc/self/statm") >> pages;
    const rlim_t limit = pages * rlim_t(::sysconf(_SC_PAGESIZE)) + (rlim_t{256} << 20);
    const rlimit memory{limit, limit};
    ::setrlimit(RLIMIT_AS, &memory);
    const HttpResponse response = get("/endless", std::size_t{1} << 30);
    const bool outOfMemory = response.transportError &&
                             response.transportError->find("out of memory") != std::string::npos;
    ::_exit(outOfMemory ? 0 : 1);
  };
  EXPECT_EXIT(receiveUnderALimit(), ::testing::ExitedWithCode(0), "");
}
#endif

}  // namespace
}  // namespace nutrition
