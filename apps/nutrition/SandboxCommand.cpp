#include "SandboxCommand.h"

#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <optional>

#include "sandbox/SandboxServer.h"
#include "sandbox/SeedData.h"

namespace nutrition::cli {
namespace {

std::optional<int> parsePort(const std::string& text) {
  char* end = nullptr;
  const long value = std::strtol(text.c_str(), &end, 10);
  if (text.empty() || *end != '\0' || value < 1 || value > 65535) return std::nullopt;
  return static_cast<int>(value);
}

}  // namespace

int runSandbox(const std::vector<std::string>& arguments) {
  sandbox::SandboxServer::Options options;
  for (std::size_t i = 0; i < arguments.size(); ++i) {
    const std::string& argument = arguments[i];
    const bool hasValue = i + 1 < arguments.size();
    if (argument == "--port" && hasValue) {
      const auto port = parsePort(arguments[++i]);
      if (!port) {
        std::fprintf(stderr, "nutrition sandbox: --port takes a number from 1 to 65535\n");
        return 2;
      }
      options.port = *port;
    } else if (argument == "--data-dir" && hasValue) {
      options.dataDirectory = arguments[++i];
    } else {
      std::fprintf(stderr,
                   "nutrition sandbox: unexpected '%s'\n"
                   "usage: nutrition sandbox [--port N] [--data-dir DIR]\n",
                   argument.c_str());
      return 2;
    }
  }

  // Wait for Ctrl-C or a termination request in this thread; block them before the server's
  // threads start so that they inherit the mask.
  sigset_t signals;
  sigemptyset(&signals);
  sigaddset(&signals, SIGINT);
  sigaddset(&signals, SIGTERM);
  pthread_sigmask(SIG_BLOCK, &signals, nullptr);

  sandbox::SandboxServer server(options);
  if (!server.start()) {
    std::fprintf(stderr, "nutrition sandbox: cannot listen on %s port %d\n", options.host.c_str(),
                 options.port);
    return 1;
  }
  const auto& account = sandbox::SeedData::embedded().accounts.front();
  std::printf("NutritionKit sandbox backend\n");
  std::printf("  base URL:   %s\n", server.baseURL().c_str());
  std::printf("  app id:     %s\n", account.clientAlias.c_str());
  std::printf("  password:   %s\n", account.password.c_str());
  std::printf("  state:      %s\n", options.dataDirectory
                                        ? options.dataDirectory->c_str()
                                        : "in memory (use --data-dir DIR to keep it)");
  std::printf("Try: curl '%sapi/intake?Language=en_EN'\nPress Ctrl-C to stop.\n",
              server.baseURL().c_str());
  std::fflush(stdout);

  int received = 0;
  sigwait(&signals, &received);
  std::printf("\nStopping.\n");
  server.stop();
  return 0;
}

}  // namespace nutrition::cli
