#include "MemberCommands.h"

#include <cmath>
#include <cstdio>
#include <memory>
#include <optional>

#include "CliSession.h"
#include "MenuText.h"
#include "backend/DataServiceNutrition.h"
#include "fasting/AyunoUtils.h"
#include "logic/NutritionUtils.h"
#include "screens/profile/QuestionnaireRules.h"
#include "session/NutritionAuth.h"
#include "text/Localization.h"

namespace nutrition::cli {
namespace {

using namespace std::chrono_literals;

// Opens a session for the member, creating its profile when the backend does not know it.
std::unique_ptr<CliSession> openMember(const std::vector<std::string>& arguments,
                                       const char* usage) {
  auto options = parseCliOptions(arguments);
  if (!options) {
    std::fprintf(stderr, "usage: nutrition %s %s\n", usage, kMemberOptionsUsage);
    return nullptr;
  }
  auto cli = std::make_unique<CliSession>(*options, /*keepSandboxState=*/true);
  if (!cli->open() || !cli->ensureProfile()) return nullptr;
  return cli;
}

int showMenu(const std::vector<std::string>& arguments, bool wholeWeek) {
  auto cli = openMember(arguments, wholeWeek ? "week" : "today");
  if (!cli) return 1;
  const auto menu = cli->builtMenu(/*verbose=*/false);
  if (!menu) return 1;
  if (wholeWeek) {
    printWeek(*menu);
  } else {
    printToday(*menu, cli->platform());
  }
  return 0;
}

const char* schemeLabel(const std::optional<std::int64_t>& scheme) {
  if (scheme == 1) return "12/12";
  if (scheme == 2) return "14/10";
  return "16/8";
}

void printFastingStatus(const Platform& platform) {
  const auto& ayuno = AyunoUtils::shared();
  const auto& user = NutritionAuth::sharedInstance().currentUser;
  const auto scheme = user ? user->intermittentFastingID : std::nullopt;
  std::printf("Scheme: %s\n", scheme && *scheme != 0 ? schemeLabel(scheme) : "none");
  if (ayuno.isFinished()) {
    std::printf("No fast running. Start one with: nutrition fasting start\n");
  } else {
    const double percentage = ayuno.getCurrentPercentage();
    const double shown = percentage == 0.999 ? 100.0 : percentage * 100.0;
    const AyunoPhase phase = ayuno.getCurrentPhase();
    std::printf("%s\n", localized("¡Estás ayunando ahora!").c_str());
    std::printf("  %s: %s (%d%%)\n", localized("Tiempo transcurrido").c_str(),
                ayuno.getCurrentTimeString().c_str(),
                std::isfinite(shown) ? static_cast<int>(shown) : 0);
    std::printf("  %s: %s, %s\n", localized("Fase actual del ayuno").c_str(),
                phase.name.value_or("-").c_str(), phase.timeInfo.value_or("").c_str());
    std::printf("  %s: %s\n", localized("Empieza").c_str(), ayuno.getStartTime().c_str());
    std::printf("  %s: %s\n", localized("Termina").c_str(), ayuno.getFinishTime().c_str());
  }
  const auto pending = platform.notifications->pending();
  if (pending.empty()) std::printf("No notification pending.\n");
  for (const auto& request : pending) {
    const auto& t = request.trigger;
    std::printf("Notification \"%s\" pending for %04d-%02u-%02u %02d:%02d:%02d: %s\n",
                request.identifier.c_str(), t.year, t.month, t.day, t.hour, t.minute, t.second,
                request.body.c_str());
  }
}

// Gives the member a fasting scheme on the backend when it has none.
bool ensureScheme(CliSession& cli, std::int64_t wanted) {
  auto& user = NutritionAuth::sharedInstance().currentUser;
  if (user->intermittentFastingID && *user->intermittentFastingID != 0) return true;
  user->intermittentFastingID = wanted;
  user->regenerateMenu = false;  // a fasting plan does not need a new menu
  bool answered = false;
  DataServiceNutrition::sharedInstance().updateUser(*user, false,
                                                    [&](auto, auto) { answered = true; });
  if (!cli.runUntil([&] { return answered; }, 70s)) {
    cli.fail("the backend did not take the fasting scheme");
    return false;
  }
  return NutritionAuth::sharedInstance().currentUser->intermittentFastingID == wanted;
}

void printAnswers(const std::vector<QuestionaryAnswer>& answers, bool translate) {
  for (const auto& answer : answers) {
    const std::string title = answer.title.value_or("-");
    std::printf("        [%lld] %s\n", static_cast<long long>(answer.score.value_or(0)),
                (translate ? localized(title) : title).c_str());
  }
}

}  // namespace

int runToday(const std::vector<std::string>& arguments) {
  return showMenu(arguments, false);
}

int runWeek(const std::vector<std::string>& arguments) {
  return showMenu(arguments, true);
}

int runFasting(const std::vector<std::string>& arguments) {
  const char* usage = "fasting start [--scheme 1|2|3] | status | end";
  if (arguments.empty()) {
    std::fprintf(stderr, "usage: nutrition %s %s\n", usage, kMemberOptionsUsage);
    return 2;
  }
  const std::string action = arguments[0];
  std::vector<std::string> rest(arguments.begin() + 1, arguments.end());
  std::int64_t scheme = 3;
  if (action == "start" && rest.size() >= 2 && rest[0] == "--scheme") {
    if (rest[1] != "1" && rest[1] != "2" && rest[1] != "3") {
      std::fprintf(stderr, "nutrition: --scheme takes 1 (12/12), 2 (14/10) or 3 (16/8)\n");
      return 2;
    }
    scheme = std::stoll(rest[1]);
    rest.erase(rest.begin(), rest.begin() + 2);
  }
  if (action != "start" && action != "status" && action != "end") {
    std::fprintf(stderr, "nutrition: unknown fasting action '%s'\nusage: nutrition %s\n",
                 action.c_str(), usage);
    return 2;
  }
  auto cli = openMember(rest, usage);
  if (!cli) return 1;
  auto& ayuno = AyunoUtils::shared();
  if (action == "start") {
    if (!ensureScheme(*cli, scheme)) return 1;
    std::printf(ayuno.startIfFinished() ? "Fast started.\n" : "A fast is already running.\n");
  } else if (action == "end") {
    std::printf(ayuno.isFinished() ? "No fast was running.\n" : "Fast ended.\n");
    ayuno.finish();
  }
  printFastingStatus(cli->platform());
  return 0;
}

int runQuestionnaire(const std::vector<std::string>& arguments) {
  auto cli = openMember(arguments, "questionnaire");
  if (!cli) return 1;
  const auto pages = NutritionUtils::getProfileQuestionary();
  if (!pages) return cli->fail("the questionnaire resources are missing");
  for (std::size_t p = 0; p < pages->size(); ++p) {
    std::printf("Page %zu\n", p + 1);
    const auto& panels = pages->at(p).panels.value_or(std::vector<HealthProfilePanel>{});
    for (std::size_t n = 0; n < panels.size(); ++n) {
      std::printf("  Panel %zu\n", n + 1);
      for (const auto& question : panels[n].questions) {
        if (!isQuestionShown(question)) continue;
        std::printf("    %s  (%s, %s%s)\n", localized(question.title.value_or("")).c_str(),
                    question.identifier.value_or("-").c_str(),
                    question.type ? std::string(rawValue(*question.type)).c_str() : "-",
                    question.isMultipleSelection == true ? ", several answers" : "");
        if (question.placeholder) {
          std::printf("      %s\n", localized(*question.placeholder).c_str());
        }
        if (question.closedAnswers) {
          for (const auto& label : *question.closedAnswers) {
            std::printf("        - %s\n", localized(label).c_str());
          }
        }
        bool needsCatalogue = !question.answers;
        if (question.answers) {
          printAnswers(*question.answers, true);
          for (const auto& answer : *question.answers)
            needsCatalogue |= answer.hasAnswers == true;
        }
        if (needsCatalogue && question.type != AnswerType::closed &&
            question.type != AnswerType::number && question.type != AnswerType::date) {
          bool answered = false;
          std::optional<std::vector<QuestionaryAnswer>> offered;
          NutritionUtils::sharedInstance().getAnswersFor(question.identifier.value_or(""),
                                                         [&](auto answers) {
                                                           offered = std::move(answers);
                                                           answered = true;
                                                         });
          if (!cli->runUntil([&] { return answered; }, 70s))
            return cli->fail("no catalogue came back");
          if (offered) printAnswers(*offered, false);
        }
      }
    }
  }
  return 0;
}

}  // namespace nutrition::cli
