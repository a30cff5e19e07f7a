// `nutrition`: the command-line host of NutritionKit.

#include <cstdio>
#include <string>
#include <vector>

#include "DemoCommand.h"
#include "SandboxCommand.h"

namespace {

void printHelp() {
  std::printf(
      "usage: nutrition [--base-url URL --app-id ID --password P] [--member M]\n"
      "       nutrition <command> [options]\n"
      "\n"
      "Without a command: starts the embedded sandbox backend (or uses --base-url), starts a\n"
      "session for a demo member, fills in its profile and prints it with today's menu.\n"
      "\n"
      "commands:\n"
      "  sandbox [--port N] [--data-dir DIR]   run the sandbox nutrition backend on 127.0.0.1\n"
      "  help                                  show this text\n");
}

}  // namespace

int main(int argc, char** argv) {
  const std::vector<std::string> arguments(argv + 1, argv + argc);
  if (arguments.empty() || (arguments[0].starts_with("--") && arguments[0] != "--help")) {
    return nutrition::cli::runDemo(arguments);
  }
  if (arguments[0] == "help" || arguments[0] == "--help" || arguments[0] == "-h") {
    printHelp();
    return 0;
  }
  const std::vector<std::string> rest(arguments.begin() + 1, arguments.end());
  if (arguments[0] == "sandbox") return nutrition::cli::runSandbox(rest);
  std::fprintf(stderr, "nutrition: unknown command '%s'\n\n", arguments[0].c_str());
  printHelp();
  return 2;
}
