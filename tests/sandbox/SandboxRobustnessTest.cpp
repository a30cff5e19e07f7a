#include <arpa/inet.h>
#include <gtest/gtest.h>
#include <netinet/in.h>
#include <sys/socket.h>
#include <unistd.h>

#include <atomic>
#include <filesystem>
#include <fstream>
#include <thread>

#include "model/NutritionFavoriteDish.h"
#include "model/NutritionMenu.h"
#include "sandbox/SandboxFixture.h"

namespace nutrition::test {
namespace {

using namespace std::chrono_literals;
using sandbox::Fault;
using Robustness = SandboxTest;

int connectTo(int port) {
  const int fd = ::socket(AF_INET, SOCK_STREAM, 0);
  sockaddr_in address{};
  address.sin_family = AF_INET;
  address.sin_port = htons(static_cast<std::uint16_t>(port));
  address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
  if (::connect(fd, reinterpret_cast<sockaddr*>(&address), sizeof address) != 0) {
    ::close(fd);
    return -1;
  }
  return fd;
}

// Sends raw bytes and returns whatever comes back before the server closes or 3 s pass.
std::string rawExchange(int port, const std::string& bytes) {
  const int fd = connectTo(port);
  if (fd < 0) return "(no connection)";
  timeval timeout{3, 0};
  ::setsockopt(fd, SOL_SOCKET, SO_RCVTIMEO, &timeout, sizeof timeout);
  (void)::send(fd, bytes.data(), bytes.size(), MSG_NOSIGNAL);
  std::string answer;
  char buffer[4096];
  ssize_t n = 0;
  while ((n = ::recv(fd, buffer, sizeof buffer, 0)) > 0)
    answer.append(buffer, std::size_t(n));
  ::close(fd);
  return answer;
}

std::size_t occurrences(std::string_view text, std::string_view part) {
  std::size_t count = 0;
  for (auto at = text.find(part); at != std::string_view::npos; at = text.find(part, at + 1))
    ++count;
  return count;
}

TEST_F(Robustness, FaultsDoWhatTheySay) {
  const std::string intake = "api/intake?Language=es_ES";
  const std::string normal = get(intake).body;

  server().setFault("/api/intake", {.status = 500, .body = Fault::Body::html});
  HttpReply reply = get(intake);
  EXPECT_EQ(reply.status, 500);
  EXPECT_EQ(reply.contentType, "text/html");
  EXPECT_TRUE(reply.body.starts_with("<html>"));

  server().setFault("/api/intake", {.body = Fault::Body::truncated});
  reply = get(intake);
  EXPECT_EQ(reply.status, 200);
  EXPECT_EQ(reply.body, normal.substr(0, normal.size() / 2));
  EXPECT_FALSE(decodeJsonArray<NutritionIntake>(reply.body).ok());

  server().setFault("/api/intake", {.body = Fault::Body::malformed});
  EXPECT_FALSE(decodeJsonArray<NutritionIntake>(get(intake).body).ok());

  server().setFault("/api/intake", {.status = 503, .body = Fault::Body::empty});
  reply = get(intake);
  EXPECT_EQ(reply.status, 503);
  EXPECT_EQ(reply.body, "");

  server().setFault("/api/intake", {.closeConnection = true});
  EXPECT_EQ(get(intake).error, CURLE_GOT_NOTHING);

  // Latency and a held request both outlast a client that gives up early.
  server().setFault("/api/intake", {.latency = 3s});
  EXPECT_EQ(httpRequest("GET", url(intake), {}, 200ms).error, CURLE_OPERATION_TIMEDOUT);
  server().setFault("/api/intake", {.noAnswer = true});
  EXPECT_EQ(httpRequest("GET", url(intake), {}, 200ms).error, CURLE_OPERATION_TIMEDOUT);

  // Other paths are untouched, and clearing the faults restores the normal answer.
  EXPECT_EQ(get("api/dish-order?Language=es_ES").status, 200);
  server().clearFaults();
  EXPECT_EQ(get(intake).body, normal);
}

TEST_F(Robustness, MalformedRequestsGetJsonErrorsAndServingGoesOn) {
  EXPECT_EQ(get("api/nothing").status, 404);
  EXPECT_EQ(get("api/nothing").body, R"({"error":"no such endpoint","status":404})");
  EXPECT_EQ(send("DELETE", "api/menu", "").status, 405);
  EXPECT_EQ(send("PATCH", "api/user?Language=es_ES", "{\"UserId\": ").status, 400);
  EXPECT_EQ(send("POST", "api/favorite-dish/add", "[]").status, 400);

  const HttpReply large = send("POST", "api/user", std::string(2 << 20, ' '));
  EXPECT_EQ(large.status, 413);
  EXPECT_NE(large.body.find("\"status\":413"), std::string::npos);

  EXPECT_EQ(get("api/intake?Language=es_ES").status, 200);
}

TEST_F(Robustness, HostileRequestsGetTheirStatusWhileOthersAreServed) {
  startServer({.processingTime = 0ms, .requestTimeout = 300ms});
  const std::string filler = "X-Filler: " + std::string(1000, 'b') + "\r\n";
  std::string hugeHead = "GET /api/intake HTTP/1.1\r\n";
  for (int i = 0; i < 70; ++i)
    hugeHead += filler;
  struct Case {
    const char* name;
    std::string bytes;
    int status;
  };
  const std::vector<Case> cases = {
      {"not HTTP", "NONSENSE\r\n\r\n", 400},
      {"request line too long", "GET /" + std::string(9000, 'a'), 414},
      {"head too large", hugeHead, 431},
      {"body too large",
       "POST /api/user HTTP/1.1\r\nContent-Length: 2000000\r\n\r\n" + std::string(1 << 16, ' '),
       413},
      {"length not a number", "POST /api/user HTTP/1.1\r\nContent-Length: 12abc\r\n\r\n", 400},
      {"two lengths", "POST /api/user HTTP/1.1\r\nContent-Length: 2\r\ncontent-length: 3\r\n\r\n{}",
       400},
      {"head never finished", "GET /api/intake HTTP/1.1\r\nHost: x\r\n", 408},
      {"body never finished", "POST /api/user HTTP/1.1\r\nContent-Length: 100\r\n\r\n{", 408},
      {"TLS handshake", std::string("\x16\x03\x01\x02\x00\x01\x00\x01\xfc\x03\x03", 11), 408},
  };
  std::vector<std::string> answers(cases.size());
  std::vector<std::thread> clients;
  for (std::size_t i = 0; i < cases.size(); ++i) {
    clients.emplace_back([&, i] { answers[i] = rawExchange(server().port(), cases[i].bytes); });
  }
  // Meanwhile a well-behaved client is answered as usual.
  const HttpReply meanwhile = httpRequest("GET", url("api/intake?Language=es_ES"), {}, 2s);
  for (auto& client : clients)
    client.join();

  EXPECT_EQ(meanwhile.error, CURLE_OK);
  EXPECT_EQ(meanwhile.status, 200);
  for (std::size_t i = 0; i < cases.size(); ++i) {
    SCOPED_TRACE(cases[i].name);
    const std::string status = std::to_string(cases[i].status);
    EXPECT_TRUE(answers[i].starts_with("HTTP/1.1 " + status + " ")) << answers[i];
    EXPECT_NE(answers[i].find("\"status\":" + status + "}"), std::string::npos) << answers[i];
  }
  EXPECT_EQ(get("api/intake?Language=es_ES").status, 200);
}

TEST_F(Robustness, HostileBodiesAreRefusedWithFourHundredsAndNothingIsStored) {
  const std::string deep = "{\"UserId\": \"deep\", \"Preferences\": " + std::string(100'000, '[') +
                           std::string(100'000, ']') + "}";
  struct Case {
    const char* name;
    std::string method;
    std::string path;
    std::string body;
  };
  const std::vector<Case> cases = {
      {"invalid UTF-8 in a string", "POST", "api/user?Language=es_ES",
       "{\"UserId\": \"bad\xff\xfe_demo\", \"Height\": 180}"},
      {"a lone surrogate escape", "POST", "api/user?Language=es_ES",
       R"({"UserId": "x\ud800_demo"})"},
      {"100,000 levels of nesting", "POST", "api/user?Language=es_ES", deep},
      {"an integer beyond 64 bits", "POST", "api/user?Language=es_ES",
       R"({"UserId": "big_demo", "Height": 99999999999999999999999})"},
      {"an integer field holding 1e400", "POST", "api/user?Language=es_ES",
       R"({"UserId": "huge_demo", "DietId": 1e400})"},
      {"a fraction in an integer field", "POST", "api/favorite-dish/add",
       R"({"UserId": "f_demo", "Dish": {"DishId": 1.5}})"},
      {"a negative dish order", "PATCH", "api/menu/dish/replace",
       R"({"UserId": "m_demo", "DayNum": 1, "IntakeId": -9223372036854775808, "DishOrderId": -1})"},
  };
  for (const Case& c : cases) {
    SCOPED_TRACE(c.name);
    const HttpReply reply = send(c.method, c.path, c.body);
    EXPECT_GE(reply.status, 400);
    EXPECT_LT(reply.status, 500);
    EXPECT_NE(reply.body.find("\"status\":" + std::to_string(reply.status)), std::string::npos);
  }
  // No member came of them, and everyone else is served as usual.
  for (const char* id : {"big_demo", "huge_demo"})
    EXPECT_EQ(get(std::string("api/user?Language=es_ES&UserId=") + id).body, "[]");
  EXPECT_EQ(get("api/intake?Language=es_ES").status, 200);
}

TEST_F(Robustness, TricklingClientsDoNotHoldUpOthers) {
  // More clients than the server has workers, each sending a header one byte at a time and
  // never finishing it.
  constexpr int kTricklers = 40;
  std::atomic<bool> done{false};
  std::atomic<int> trickling{0};
  std::vector<std::thread> tricklers;
  for (int i = 0; i < kTricklers; ++i) {
    tricklers.emplace_back([&] {
      const int fd = connectTo(server().port());
      const std::string head = "GET /api/intake HTTP/1.1\r\nX-Slow: ";
      for (std::size_t sent = 0; fd >= 0 && !done; ++sent) {
        const char byte = sent < head.size() ? head[sent] : 'a';
        if (::send(fd, &byte, 1, MSG_NOSIGNAL) != 1) break;
        if (sent == 1) ++trickling;
        std::this_thread::sleep_for(10ms);
      }
      if (fd >= 0) ::close(fd);
    });
  }
  const auto deadline = std::chrono::steady_clock::now() + 10s;
  while (trickling < kTricklers && std::chrono::steady_clock::now() < deadline) {
    std::this_thread::sleep_for(1ms);
  }
  EXPECT_EQ(trickling, kTricklers);

  for (const char* path : {"api/intake?Language=es_ES", "api/preference?Language=en_EN"}) {
    SCOPED_TRACE(path);
    const HttpReply reply = httpRequest("GET", url(path), {}, 2s);
    EXPECT_EQ(reply.error, CURLE_OK);
    EXPECT_EQ(reply.status, 200);
  }
  done = true;
  for (auto& trickler : tricklers)
    trickler.join();
}

TEST_F(Robustness, OneConnectionCarriesManyRequests) {
  CURL* curl = curl_easy_init();
  const std::string address = url("api/intake?Language=es_ES");
  curl_easy_setopt(curl, CURLOPT_URL, address.c_str());
  curl_easy_setopt(
      curl, CURLOPT_WRITEFUNCTION,
      +[](char*, size_t size, size_t count, void*) { return size * count; });
  for (int i = 0; i < 12; ++i) {
    EXPECT_EQ(curl_easy_perform(curl), CURLE_OK);
    long status = 0;
    curl_easy_getinfo(curl, CURLINFO_RESPONSE_CODE, &status);
    EXPECT_EQ(status, 200);
  }
  curl_easy_cleanup(curl);
  const auto requests = server().requests();
  ASSERT_EQ(requests.size(), 12u);
  for (const auto& request : requests)
    EXPECT_EQ(request.remotePort, requests[0].remotePort);

  // Requests sent back to back in one write are answered in order.
  const std::string request = "GET /api/intake?Language=en_EN HTTP/1.1\r\nHost: x\r\n";
  const std::string answers =
      rawExchange(server().port(), request + "\r\n" + request + "Connection: close\r\n\r\n");
  EXPECT_EQ(occurrences(answers, "HTTP/1.1 200 OK"), 2u) << answers;
  EXPECT_EQ(occurrences(answers, "Breakfast"), 2u) << answers;
}

TEST_F(Robustness, AClientWaitingToSendItsBodyIsToldToContinue) {
  const int fd = connectTo(server().port());
  ASSERT_GE(fd, 0);
  timeval timeout{3, 0};
  ::setsockopt(fd, SOL_SOCKET, SO_RCVTIMEO, &timeout, sizeof timeout);
  const std::string head =
      "POST /api/auth/login HTTP/1.1\r\nHost: x\r\nConnection: close\r\nExpect: "
      "100-continue\r\nContent-Length: 2\r\n\r\n";
  ASSERT_EQ(::send(fd, head.data(), head.size(), MSG_NOSIGNAL), ssize_t(head.size()));
  char buffer[4096];
  const ssize_t n = ::recv(fd, buffer, sizeof buffer, 0);
  EXPECT_EQ(std::string(buffer, std::size_t(std::max<ssize_t>(n, 0))),
            "HTTP/1.1 100 Continue\r\n\r\n");
  ASSERT_EQ(::send(fd, "{}", 2, MSG_NOSIGNAL), 2);
  std::string answer;
  for (ssize_t got = 0; (got = ::recv(fd, buffer, sizeof buffer, 0)) > 0;)
    answer.append(buffer, std::size_t(got));
  ::close(fd);
  EXPECT_TRUE(answer.starts_with("HTTP/1.1 200 OK")) << answer;
  ASSERT_EQ(server().requests().size(), 1u);
  EXPECT_EQ(server().requests()[0].body, "{}");
}

TEST_F(Robustness, AnswersTwoHundredConcurrentRequests) {
  const std::string id = userId("m1");
  createUser(member(id));
  std::vector<HttpReply> replies(200);
  std::vector<std::thread> clients;
  for (std::size_t i = 0; i < replies.size(); ++i) {
    clients.emplace_back([&, i] {
      replies[i] =
          get(i % 2 ? "api/menu?Language=es_ES&UserId=" + id : "api/preference?Language=en_EN");
    });
  }
  for (auto& client : clients)
    client.join();
  for (const auto& reply : replies) {
    ASSERT_EQ(reply.error, CURLE_OK);
    EXPECT_EQ(reply.status, 200);
    EXPECT_EQ(reply.body, replies[reply.body.starts_with("[{\"_id\"") ? 1 : 0].body);
  }
  EXPECT_EQ(server().requests().size(), 201u);
}

TEST_F(Robustness, StateSurvivesARestartInTheDataDirectory) {
  const auto directory =
      std::filesystem::temp_directory_path() / ("nutrition-sandbox-" + std::to_string(::getpid()));
  std::filesystem::remove_all(directory);
  startServer({.dataDirectory = directory, .processingTime = 0ms});
  createUser(member("m1_demo"));
  NutritionDish dish;
  dish.dishID = 7;
  ASSERT_EQ(
      send("POST", "api/favorite-dish/add", *encodeJson(NutritionFavoriteDishPost{"m1_demo", dish}))
          .status,
      200);
  ASSERT_EQ(send("PATCH", "api/menu/dish/replace",
                 R"({"UserId":"m1_demo","DayNum":1,"IntakeId":5,"DishOrderId":1})")
                .status,
            200);
  std::string menu = get("api/menu?Language=es_ES&UserId=m1_demo").body;
  const std::string user = get("api/user?Language=es_ES&UserId=m1_demo").body;
  const std::string oldBase = server().baseURL();

  startServer({.dataDirectory = directory, .processingTime = 0ms});
  // Image addresses follow the new server's port; everything else is as it was.
  for (auto at = menu.find(oldBase); at != std::string::npos; at = menu.find(oldBase, at)) {
    menu.replace(at, oldBase.size(), server().baseURL());
  }
  EXPECT_EQ(get("api/menu?Language=es_ES&UserId=m1_demo").body, menu);
  EXPECT_EQ(get("api/user?Language=es_ES&UserId=m1_demo").body, user);
  EXPECT_EQ(getArray<NutritionDish>("api/favorite-dish?UserId=m1_demo&Language=es_ES").size(), 1u);

  // A damaged state file is set aside, not trusted and not lost.
  std::ofstream(directory / "sandbox-state.json") << "{\"users\": [";
  startServer({.dataDirectory = directory, .processingTime = 0ms});
  EXPECT_EQ(get("api/user?Language=es_ES&UserId=m1_demo").body, "[]");
  EXPECT_TRUE(std::filesystem::exists(directory / "sandbox-state.json.corrupt"));
  std::filesystem::remove_all(directory);
}

}  // namespace
}  // namespace nutrition::test
