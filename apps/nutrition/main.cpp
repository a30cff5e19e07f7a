// `nutrition`: the command-line host of NutritionKit.

#include <cstdio>
#include <string>
#include <vector>

#include "DemoCommand.h"
#include "MemberCommands.h"
#include "PreviewCommand.h"
#include "QuestionnaireCommands.h"
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
      "commands (each takes the member options above):\n"
      "  today                          today's menu\n"
      "  week                           the week's menu, day 1 = Monday to day 7\n"
      "  fasting [--watch N]            the fasting screen (opening it starts a fast); with\n"
      "                                 --watch, redrawn by its own timer for N seconds\n"
      "  fasting phase                  the pop-up of the current fasting phase\n"
      "  fasting start [--scheme 1|2|3] start a fast (12/12, 14/10 or 16/8; 16/8 by default)\n"
      "  fasting status                 elapsed time, percentage, phase, start and end, the\n"
      "                                 pending end-of-fast notification\n"
      "  fasting end                    end the fast\n"
      "  questionnaire                  the health questionnaire and the answers it offers\n"
      "  menu [--day N]                 the weekly menu home; --day 2 to 7 taps a later day of\n"
      "                                 its strip (1 = today)\n"
      "  menu intake I                  intake I of the day (1 = the first card) with its\n"
      "                                 recipe pages\n"
      "  menu alternative I D           asks for an alternative to dish D of intake I\n"
      "  menu favorite I D              adds dish D of intake I to the favourites, or removes it\n"
      "  questionnaire --answers FILE   answer it from a file, page by page, and send the profile\n"
      "\n"
      "  preview [--port N] [host settings]    the module's live screens in a browser, served on\n"
      "                                        127.0.0.1 (an ephemeral port unless --port);\n"
      "                                        settings: --main-color RRGGBB, --nav-color RRGGBB,\n"
      "                                        --nav-tint RRGGBB, --nav-title TEXT,\n"
      "                                        --large-titles, --language es|en|pt|de|ca|it|fr,\n"
      "                                        --short-profile, --excluded-aliments on|off,\n"
      "                                        --fasting on|off, --diet standard|diabetes\n"
      "  sandbox [--port N] [--data-dir DIR]   run the sandbox nutrition backend on 127.0.0.1\n"
      "  help                                  show this text\n"
      "\n"
      "Texts follow the device language (LC_ALL, LC_MESSAGES, LANG). The member, its fast and\n"
      "the embedded backend's state live under $XDG_DATA_HOME/nutritionkit.\n");
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
  if (arguments[0] == "preview") return nutrition::cli::runPreview(rest);
  if (arguments[0] == "today") return nutrition::cli::runToday(rest);
  if (arguments[0] == "week") return nutrition::cli::runWeek(rest);
  if (arguments[0] == "fasting") return nutrition::cli::runFasting(rest);
  if (arguments[0] == "questionnaire") return nutrition::cli::runQuestionnaire(rest);
  if (arguments[0] == "menu") return nutrition::cli::runMenu(rest);
  std::fprintf(stderr, "nutrition: unknown command '%s'\n\n", arguments[0].c_str());
  printHelp();
  return 2;
}
