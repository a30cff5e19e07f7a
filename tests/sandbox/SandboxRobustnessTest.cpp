#include <arpa/inet.h>
#include <gtest/gtest.h>
#include <netinet/in.h>
#include <sys/socket.h>
#include <unistd.h>

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

// Sends raw bytes and returns whatever comes back before the server closes or 2 s pass.
std::string rawExchange(int port, const std::string& bytes) {
  const int fd = ::socket(AF_INET, SOCK_STREAM, 0);
  sockaddr_in address{};
  address.sin_family = AF_INET;
  address.sin_port = htons(static_cast<std::uint16_t>(port));
  address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
  std::string answer;
  if (::connect(fd, reinterpret_cast<sockaddr*>(&address), sizeof address) == 0) {
    timeval timeout{2, 0};
    ::setsockopt(fd, SOL_SOCKET, SO_RCVTIMEO, &timeout, sizeof timeout);
    (void)::write(fd, bytes.data(), bytes.size());
    char buffer[4096];
    ssize_t n = 0;
    while ((n = ::read(fd, buffer, sizeof buffer)) > 0)
      answer.append(buffer, std::size_t(n));
  }
  ::close(fd);
  return answer;
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

  const std::string garbage = rawExchange(server().port(), "NONSENSE\r\n\r\n");
  EXPECT_TRUE(garbage.starts_with("HTTP/1.1 400")) << garbage;
  EXPECT_NE(garbage.find("{\"error\""), std::string::npos);
  rawExchange(server().port(),
              "GET /api/intake HTTP/1.1\r\nHost: x\r\nContent-Length: 99\r\n\r\n{");

  EXPECT_EQ(get("api/intake?Language=es_ES").status, 200);
}

TEST_F(Robustness, AnswersTwoHundredConcurrentRequests) {
  createUser(member("m1_demo"));
  std::vector<HttpReply> replies(200);
  std::vector<std::thread> clients;
  for (std::size_t i = 0; i < replies.size(); ++i) {
    clients.emplace_back([&, i] {
      replies[i] =
          get(i % 2 ? "api/menu?Language=es_ES&UserId=m1_demo" : "api/preference?Language=en_EN");
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
