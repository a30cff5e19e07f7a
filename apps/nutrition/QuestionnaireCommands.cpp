// The answers file is a JSON list of answers in the order they are given:
//
//   [{"identifier": "height", "answer": "172"},
//    {"identifier": "preferences", "answers": ["Vegano", "Sin gluten"]},
//    {"identifier": "intollerance", "answers": ["Sí", "Lactosa"]}]
//
// An answer is what the member would tap or type: a button's, row's or wheel row's title as
// shown (or its score), the typed text of a number, a date as dd/MM/yyyy.

#include "QuestionnaireCommands.h"

#include <chrono>
#include <cstdio>
#include <fstream>
#include <map>
#include <optional>
#include <sstream>
#include <tuple>

#include "CliSession.h"
#include "MemberCommands.h"
#include "facade/Core.h"
#include "json/JsonReader.h"
#include "screens/profile/ProfilePageViewController.h"
#include "screens/profile/QuestionTaps.h"
#include "ui/HealthAlertViewController.h"
#include "views/AlertController.h"
#include "views/TextRenderer.h"
#include "views/Window.h"

namespace nutrition::cli {
namespace {

using namespace std::chrono_literals;

struct FileAnswer {
  std::string identifier;
  std::optional<std::string> answer;
  std::optional<std::vector<std::string>> answers;

  static constexpr auto jsonFields() {
    return std::tuple{json::required("identifier", &FileAnswer::identifier),
                      json::field("answer", &FileAnswer::answer),
                      json::field("answers", &FileAnswer::answers)};
  }
};

using Answers = std::map<std::string, std::vector<std::string>>;

// Takes --answers FILE off `arguments`; false (message printed) when the file is unusable.
bool takeAnswers(std::vector<std::string>& arguments, std::optional<Answers>& answers) {
  for (std::size_t i = 0; i < arguments.size(); ++i) {
    if (arguments[i] != "--answers") continue;
    if (i + 1 >= arguments.size()) {
      std::fprintf(stderr, "nutrition: --answers takes a file\n");
      return false;
    }
    std::ifstream file(arguments[i + 1]);
    if (!file) {
      std::fprintf(stderr, "nutrition: cannot read %s\n", arguments[i + 1].c_str());
      return false;
    }
    std::stringstream text;
    text << file.rdbuf();
    auto decoded = json::decodeDocument<std::vector<FileAnswer>>(text.str());
    if (!decoded.ok()) {
      std::fprintf(stderr, "nutrition: %s is not a list of answers: %s\n", arguments[i + 1].c_str(),
                   decoded.error().message.c_str());
      return false;
    }
    answers.emplace();
    for (const auto& entry : decoded.value()) {
      auto& choices = (*answers)[entry.identifier];
      choices.clear();
      if (entry.answer) choices.push_back(*entry.answer);
      if (entry.answers)
        choices.insert(choices.end(), entry.answers->begin(), entry.answers->end());
    }
    arguments.erase(arguments.begin() + static_cast<std::ptrdiff_t>(i),
                    arguments.begin() + static_cast<std::ptrdiff_t>(i) + 2);
    return true;
  }
  return true;
}

// Every catalogue the page asks for has arrived.
bool loaded(NutritionProfileViewController& page) {
  for (auto* panel : page.panelViews()) {
    for (auto* view : panel->questionViews()) {
      const HealthQuestion& question = *view->question;
      if (question.type == AnswerType::picker && !view->pickerView) return false;
      if (question.type == AnswerType::list && !question.answers &&
          view->answersVerticalStackView->arrangedSubviews().empty()) {
        return false;
      }
    }
  }
  return true;
}

void printOffered(NutritionProfileViewController& page) {
  std::printf("Answers offered:\n");
  const auto line = [](const std::optional<QuestionaryAnswer>& answer, const std::string& shown) {
    std::printf("        [%lld] %s\n",
                static_cast<long long>(answer ? answer->score.value_or(0) : 0), shown.c_str());
  };
  for (auto* panel : page.panelViews()) {
    for (auto* view : panel->questionViews()) {
      std::printf("  %s (%s)\n", view->questiontTitle->text().c_str(),
                  view->question->identifier.value_or("-").c_str());
      for (const auto& control : view->answersStackView->arrangedSubviews()) {
        if (auto* button = dynamic_cast<HealthRoundButton*>(control.get())) {
          line(button->answer, button->currentTitle().value_or(""));
        }
      }
      for (const auto& control : view->answersVerticalStackView->arrangedSubviews()) {
        if (auto* row = dynamic_cast<QuestionaryAnswerView*>(control.get())) {
          line(row->answer, row->textLabel->text());
        }
      }
      if (view->pickerView) {
        for (const auto& answer :
             view->question->answers.value_or(std::vector<QuestionaryAnswer>{}))
          line(answer, answer.title.value_or(""));
      }
    }
  }
}

// False (the problem printed) when the answer could not be given.
bool reportProblem(const std::string& id, const TapResult& result) {
  if (!result.ok) std::fprintf(stderr, "nutrition: %s: %s\n", id.c_str(), result.problem.c_str());
  return result.ok;
}

// Gives the page's questions their answers from the file; false when one of them offers no
// such answer (a member could not tap it either).
bool answerPage(CliSession& cli, NutritionProfileViewController& page, const Answers& answers) {
  bool given = true;
  for (auto* panel : page.panelViews()) {
    for (auto* view : panel->questionViews()) {
      const std::string id = view->question->identifier.value_or("");
      const auto found = answers.find(id);
      if (found == answers.end()) continue;
      std::string shown;
      for (const auto& choice : found->second)
        shown += (shown.empty() ? "" : ", ") + choice;
      std::printf("> %s: %s\n", id.c_str(), shown.c_str());
      const TapResult result = tapAnswer(*view, found->second);
      given &= reportProblem(id, result);
      if (result.waitingRows.empty()) continue;
      // A yes answer's rows come from a catalogue that may still be on its way.
      const auto& rows = view->answersVerticalStackView->arrangedSubviews();
      if (!cli.runUntil([&] { return !rows.empty(); }, 70s)) {
        given &= reportProblem(id, {false, "its answers did not arrive", {}});
        continue;
      }
      given &= reportProblem(id, tapRows(*view, result.waitingRows));
    }
  }
  return given;
}

class EditorRun {
 public:
  EditorRun(CliSession& cli, std::shared_ptr<Window> window)
      : cli_(cli), window_(std::move(window)) {}

  bool open() {
    Core& core = Core::current();
    auto pages = core.utils().getProfileQuestionary();
    if (!pages || pages->empty()) return false;
    editor_ = makeProfileEditor(core.screens(),
                                ProfileEditorServices::from(cli_.platform(), core.dataService()),
                                std::move(*pages));
    editor_->modalPresentationStyle = ModalPresentationStyle::fullScreen;
    window_->rootViewController()->present(editor_, false);
    return true;
  }

  // The page shown once its catalogues arrived; null when they did not.
  NutritionProfileViewController* page() {
    NutritionProfileViewController* shown = editor_->currentPage();
    if (shown == nullptr || !cli_.runUntil([&] { return loaded(*shown); }, 70s)) return nullptr;
    return shown;
  }

  void print(const char* heading, std::size_t index) {
    std::printf("--- %s %zu of %zu\n", heading, index + 1, editor_->pages->size());
    std::fputs(renderText(*editor_).c_str(), stdout);
  }

  std::shared_ptr<ProfilePageViewController> editor_;

 private:
  CliSession& cli_;
  std::shared_ptr<Window> window_;
};

int showPages(CliSession& cli, EditorRun& run) {
  for (std::size_t index = 0; index < run.editor_->pages->size(); ++index) {
    NutritionProfileViewController* page = run.page();
    if (page == nullptr) return cli.fail("the questionnaire's answers did not arrive");
    run.print("page", index);
    printOffered(*page);
    run.editor_->nextProfilePage();
  }
  return 0;
}

// The alert shown over `page`, if any: a page presents on the outermost container it is in.
AlertController* noticeOver(ViewController& page) {
  ViewController* screen = &page;
  while (screen->parent() != nullptr)
    screen = screen->parent();
  return dynamic_cast<AlertController*>(screen->presentedViewController());
}

int sendAnswers(CliSession& cli, EditorRun& run, const Answers& answers) {
  for (std::size_t index = 0;; ++index) {
    NutritionProfileViewController* page = run.page();
    if (page == nullptr) return cli.fail("the questionnaire's answers did not arrive");
    const bool given = answerPage(cli, *page, answers);
    run.print("page", index);
    if (!given) return 1;
    std::printf("> %s\n", page->nextButton->currentTitle().value_or("").c_str());
    page->nextButton->tap();
    if (ViewController* notice = noticeOver(*page)) {
      std::printf("--- notice\n%s", renderText(*notice).c_str());
      return 1;
    }
    if (page->isLastPage) break;
  }
  auto* confirmation =
      dynamic_cast<HealthAlertViewController*>(Core::current().application().topViewController());
  if (confirmation == nullptr) return cli.fail("no confirmation was shown");
  std::printf("--- confirmation\n%s", renderText(*confirmation).c_str());
  std::printf("> %s\n", confirmation->continueButton->currentTitle().value_or("").c_str());
  NutritionProfileViewController* last = run.editor_->currentPage();
  auto keep = run.editor_;
  const bool isNew = Core::current().session().isUnregister;
  confirmation->continueButton->tap();
  const bool settled = cli.runUntil(
      [&] {
        return run.editor_->presentingViewController() == nullptr || noticeOver(*last) != nullptr;
      },
      70s);
  if (!settled) return cli.fail("the profile update got no answer");
  if (ViewController* notice = noticeOver(*last)) {
    std::printf("--- notice\n%s", renderText(*notice).c_str());
    return 1;
  }
  std::printf(
      "--- sent\nThe profile was sent (%s api/user); the editor closed and the new menu is "
      "on its way.\n",
      isNew ? "POST" : "PATCH");
  return 0;
}

}  // namespace

int runQuestionnaire(const std::vector<std::string>& arguments) {
  std::vector<std::string> rest = arguments;
  std::optional<Answers> answers;
  if (!takeAnswers(rest, answers)) return 2;
  auto cli = openMember(rest, "questionnaire [--answers FILE]");
  if (!cli) return 1;
  auto window = std::make_shared<Window>(nullptr, cli->platform().mainQueue);
  window->setRootViewController(std::make_shared<ViewController>());
  Core::current().application().setKeyWindow(window);
  EditorRun run(*cli, window);
  if (!run.open()) return cli->fail("the questionnaire resources are missing");
  return answers ? sendAnswers(*cli, run, *answers) : showPages(*cli, run);
}

}  // namespace nutrition::cli
