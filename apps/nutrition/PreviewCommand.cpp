#include "PreviewCommand.h"

#include <httplib.h>
#include <pthread.h>

#include <algorithm>
#include <atomic>
#include <chrono>
#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <future>
#include <map>
#include <mutex>
#include <optional>
#include <sstream>
#include <thread>

#include "CliSession.h"
#include "base/Image.h"
#include "facade/Core.h"
#include "facade/NutritionSDK.h"
#include "platform/linux/LinuxPlatform.h"
#include "views/Button.h"
#include "views/HtmlRenderer.h"
#include "views/Label.h"
#include "views/NavigationController.h"
#include "views/Window.h"

namespace nutrition::cli {
namespace {

using namespace std::chrono_literals;

constexpr const char* kUsage =
    "usage: nutrition preview [--port N] [--main-color RRGGBB] [--nav-color RRGGBB] "
    "[--nav-tint RRGGBB] [--nav-title TEXT] [--large-titles] [--language es|en|pt|de|ca|it|fr] "
    "[--short-profile] [--excluded-aliments on|off] [--fasting on|off] "
    "[--diet standard|diabetes] [--base-url URL --app-id ID --password P] [--member M]";

struct HostSettings {
  int port = 0;
  std::optional<std::string> mainColor;
  std::optional<std::string> navigationColor;
  std::optional<std::string> navigationTint;
  std::optional<std::string> navigationTitle;
  bool largeTitles = false;
  std::optional<NutritionLanguage> language;
  bool shortProfile = false;
  bool excludedAliments = true;
  bool fasting = true;
  DietType diet = DietType::standard;
};

bool isHexColor(const std::string& text) {
  std::string digits = text.starts_with('#') ? text.substr(1) : text;
  return (digits.size() == 3 || digits.size() == 6 || digits.size() == 8) &&
         digits.find_first_not_of("0123456789abcdefABCDEF") == std::string::npos;
}

std::optional<bool> onOff(const std::string& text) {
  if (text == "on" || text == "yes" || text == "true") return true;
  if (text == "off" || text == "no" || text == "false") return false;
  return std::nullopt;
}

// Takes the preview's own flags out of `arguments`, leaving the member options; prints one
// line and returns nothing when one is wrong.
std::optional<HostSettings> takeSettings(std::vector<std::string>& arguments) {
  HostSettings settings;
  std::vector<std::string> rest;
  const auto bad = [](const std::string& line) {
    std::fprintf(stderr, "nutrition preview: %s\n", line.c_str());
    return std::nullopt;
  };
  for (std::size_t i = 0; i < arguments.size(); ++i) {
    const std::string& name = arguments[i];
    if (name == "--large-titles") {
      settings.largeTitles = true;
      continue;
    }
    if (name == "--short-profile") {
      settings.shortProfile = true;
      continue;
    }
    static const std::vector<std::string> kValued = {
        "--port",     "--main-color", "--nav-color",         "--nav-tint", "--nav-title",
        "--language", "--fasting",    "--excluded-aliments", "--diet"};
    if (std::find(kValued.begin(), kValued.end(), name) == kValued.end()) {
      rest.push_back(name);
      continue;
    }
    if (i + 1 >= arguments.size()) return bad(name + " needs a value");
    const std::string& value = arguments[++i];
    if (name == "--port") {
      char* end = nullptr;
      const long port = std::strtol(value.c_str(), &end, 10);
      if (value.empty() || *end != '\0' || port < 1 || port > 65535) {
        return bad("--port takes a number from 1 to 65535");
      }
      settings.port = static_cast<int>(port);
    } else if (name == "--main-color" || name == "--nav-color" || name == "--nav-tint") {
      if (!isHexColor(value)) return bad(name + " takes a colour as RRGGBB, not '" + value + "'");
      (name == "--main-color"  ? settings.mainColor
       : name == "--nav-color" ? settings.navigationColor
                               : settings.navigationTint) = value;
    } else if (name == "--nav-title") {
      settings.navigationTitle = value;
    } else if (name == "--language") {
      static const std::map<std::string, NutritionLanguage> kLanguages = {
          {"es", NutritionLanguage::es}, {"en", NutritionLanguage::en},
          {"pt", NutritionLanguage::pt}, {"de", NutritionLanguage::de},
          {"ca", NutritionLanguage::ca}, {"it", NutritionLanguage::it},
          {"fr", NutritionLanguage::fr}};
      const auto found = kLanguages.find(value);
      if (found == kLanguages.end()) return bad("--language takes es, en, pt, de, ca, it or fr");
      settings.language = found->second;
    } else if (name == "--fasting" || name == "--excluded-aliments") {
      const auto flag = onOff(value);
      if (!flag) return bad(name + " takes on or off");
      (name == "--fasting" ? settings.fasting : settings.excludedAliments) = *flag;
    } else if (name == "--diet") {
      if (value != "standard" && value != "diabetes") {
        return bad("--diet takes standard or diabetes");
      }
      settings.diet = value == "diabetes" ? DietType::diabetes : DietType::standard;
    }
  }
  arguments = std::move(rest);
  return settings;
}

// The device locale a language stands for: the screens' texts follow it.
const char* localeOf(NutritionLanguage language) {
  switch (language) {
    case NutritionLanguage::es:
      return "es_ES.UTF-8";
    case NutritionLanguage::en:
      return "en_GB.UTF-8";
    case NutritionLanguage::pt:
      return "pt_PT.UTF-8";
    case NutritionLanguage::de:
      return "de_DE.UTF-8";
    case NutritionLanguage::ca:
      return "ca_ES.UTF-8";
    case NutritionLanguage::it:
      return "it_IT.UTF-8";
    case NutritionLanguage::fr:
      return "fr_FR.UTF-8";
  }
  return "es_ES.UTF-8";
}

std::string jsonString(const std::string& text) {
  std::string out = "\"";
  for (const char c : text) {
    const auto byte = static_cast<unsigned char>(c);
    if (c == '"' || c == '\\') {
      out += '\\';
      out += c;
    } else if (byte < 0x20) {
      char escaped[8];
      std::snprintf(escaped, sizeof escaped, "\\u%04x", byte);
      out += escaped;
    } else {
      out += c;
    }
  }
  return out + "\"";
}

// Mirrors the key window's presentation graph from the core's notices: the chain of screens
// presented from the root, each a navigation stack when it is one. Each change is printed.
class PreviewPresenter final : public Presenter {
 public:
  void didSetRoot(Window&, ViewController& root) override {
    chain_ = {root.weak_from_this()};
    note("root " + std::string(root.kind()));
  }
  void didPresent(ViewController& presenting, ViewController& presented, bool) override {
    keepThrough(presenting);
    chain_.push_back(presented.weak_from_this());
    note("present " + std::string(presented.kind()) + " on " + std::string(presenting.kind()));
  }
  void didDismiss(ViewController& presenting, ViewController& dismissed, bool) override {
    keepThrough(presenting);
    note("dismiss " + std::string(dismissed.kind()));
  }
  void didPush(NavigationController&, ViewController& pushed, bool) override {
    note("push " + std::string(pushed.kind()));
  }
  void didPop(NavigationController&, ViewController& popped, bool) override {
    note("pop " + std::string(popped.kind()));
  }

  // "HostScreen > CustomNavViewController[NutricionHomeViewController]": the screens shown.
  [[nodiscard]] std::string describe() const {
    std::string out;
    for (const auto& weak : chain_) {
      auto screen = weak.lock();
      if (!screen) continue;
      if (!out.empty()) out += " > ";
      out += std::string(screen->kind());
      if (const auto* navigation = dynamic_cast<const NavigationController*>(screen.get())) {
        std::string stack;
        for (const auto& shown : navigation->viewControllers())
          stack += (stack.empty() ? "" : ", ") + std::string(shown->kind());
        out += "[" + stack + "]";
      }
    }
    return out;
  }

 private:
  // Drops what was presented above `presenting` (a screen may present from a child: then the
  // chain is kept whole).
  void keepThrough(ViewController& presenting) {
    for (std::size_t at = 0; at < chain_.size(); ++at) {
      auto shown = chain_[at].lock();
      if (shown.get() != &presenting) continue;
      chain_.resize(at + 1);
      return;
    }
  }
  static void note(const std::string& event) {
    std::printf("  screen: %s\n", event.c_str());
    std::fflush(stdout);
  }

  std::vector<std::weak_ptr<ViewController>> chain_;
};

// The host app's own screen, under the module: what a member sees before opening it.
class HostScreen final : public ViewController {
 public:
  explicit HostScreen(const HostSettings& settings) : settings_(settings) {}
  [[nodiscard]] std::string_view kind() const override { return "HostScreen"; }

 protected:
  void loadView() override {
    auto root = std::make_shared<View>(Rect{{}, kPhoneScreen});
    root->backgroundColor = Color{255, 255, 255};
    auto heading = addOutlet<Label>(*root, "hostTitle");
    heading->setFrame({{24, 100}, {342, 40}});
    heading->setText("NutritionKit");
    heading->font = Font::system(34, FontWeight::bold);
    auto note = addOutlet<Label>(*root, "hostNote");
    note->setFrame({{24, 146}, {342, 60}});
    note->numberOfLines = 0;
    note->setText("The host app's screen. The module presents its screens over it.");
    note->font = Font::system(15);
    note->textColor = Color{60, 60, 67, 153};
    const Color main = Color::fromHex(settings_.mainColor.value_or("EA6E29"));
    double top = 240;
    const auto button = [&](const std::string& name, const std::string& text,
                            std::function<void()> action) {
      auto shown = addOutlet<Button>(*root, name);
      shown->setFrame({{24, top}, {342, 50}});
      shown->setTitle(text);
      shown->setTitleColor(Color{255, 255, 255});
      shown->titleFont = Font::system(17, FontWeight::semibold);
      shown->backgroundColor = main;
      shown->cornerRadius = 25;
      shown->addTarget(ControlEvent::touchUpInside, std::move(action));
      top += 66;
    };
    button("openModule", "Nutrition", [] { NutritionSDK::sharedInstance().showNutritionModule(); });
    button("openProfile", "Profile", [] { NutritionSDK::sharedInstance().showProfile(); });
    button("openFasting", "Fasting", [this] {
      std::weak_ptr<ViewController> weak = weak_from_this();
      NutritionSDK::sharedInstance().getAyunoController([weak](std::shared_ptr<ViewController> s) {
        auto self = weak.lock();
        if (!s || !self) return;
        ViewController* shownOn = self.get();
        while (shownOn->presentedViewController() != nullptr)
          shownOn = shownOn->presentedViewController();
        s->modalPresentationStyle = ModalPresentationStyle::fullScreen;
        shownOn->present(s, true);
      });
    });
    setView(root);
  }

 private:
  HostSettings settings_;
};

// How the command stops: the signal thread sets `stopping` and wakes the main loop. Shared,
// since that thread outlives the command.
struct StopState {
  std::atomic<bool> stopping = false;
  std::mutex mutex;
  std::shared_ptr<ManualMainQueue> queue;
};

// What the page needs of a render: its number, and the rendering when the page's is older.
struct Frame {
  long generation = 0;
  std::optional<std::string> html;
  std::string graph;
};

class PreviewServer {
 public:
  PreviewServer(std::shared_ptr<StopState> stop, std::shared_ptr<ManualMainQueue> queue,
                std::shared_ptr<Window> window, std::shared_ptr<PreviewPresenter> presenter,
                std::filesystem::path images)
      : stop_(std::move(stop)),
        queue_(std::move(queue)),
        window_(std::move(window)),
        presenter_(std::move(presenter)),
        images_(std::move(images)) {
    options_.bundleImageURL = [](const std::string& name) { return "images/" + name; };
    options_.imageURL = [this](const Image& image) { return "photo/" + keepPhoto(image); };
  }

  void route(httplib::Server& server) {
    server.Get("/", [](const httplib::Request&, httplib::Response& response) {
      response.set_content(previewPage(), "text/html; charset=utf-8");
    });
    server.Get("/renderer.css", [](const httplib::Request&, httplib::Response& response) {
      response.set_content(htmlStyleSheet(), "text/css; charset=utf-8");
    });
    server.Get("/favicon.ico",
               [](const httplib::Request&, httplib::Response& response) { response.status = 204; });
    server.Get("/frame", [this](const httplib::Request& request, httplib::Response& response) {
      serveFrame(request, response);
    });
    server.Post("/action", [this](const httplib::Request& request, httplib::Response& response) {
      serveAction(request, response);
    });
    server.Get(R"(/images/([A-Za-z0-9_@.\-]+))",
               [this](const httplib::Request& request, httplib::Response& response) {
                 serveImage(request.matches[1].str(), response);
               });
    server.Get(R"(/photo/([0-9a-f]+))",
               [this](const httplib::Request& request, httplib::Response& response) {
                 std::lock_guard lock(photosMutex_);
                 const auto found = photos_.find(request.matches[1].str());
                 if (found == photos_.end()) {
                   response.status = 404;
                   return;
                 }
                 response.set_header("Cache-Control", "max-age=86400, immutable");
                 const auto& bytes = found->second;
                 const bool png = bytes.size() > 4 && bytes[0] == 0x89 && bytes[1] == 'P';
                 response.set_content(std::string(bytes.begin(), bytes.end()),
                                      png ? "image/png" : "image/jpeg");
               });
  }

 private:
  // Runs `work` on the main queue and waits for its result; nothing when the loop does not
  // get to it in time (the preview is stopping).
  template <class T>
  std::optional<T> onMain(std::function<T()> work) {
    auto promise = std::make_shared<std::promise<T>>();
    auto result = promise->get_future();
    queue_->post([promise, work = std::move(work)] { promise->set_value(work()); });
    for (int waited = 0; result.wait_for(100ms) != std::future_status::ready; ++waited) {
      if (stop_->stopping || waited >= 100) return std::nullopt;
    }
    try {
      return result.get();
    } catch (const std::future_error&) {
      return std::nullopt;
    }
  }

  // On the main queue: renders the top of the key window, numbering each different look.
  Frame render(long known) {
    ViewController* root = window_->rootViewController();
    if (root == nullptr) return {generation_, std::nullopt, ""};
    HtmlRendering rendering = renderHtml(*root, options_);
    if (rendering.html != lastHtml_) {
      lastHtml_ = std::move(rendering.html);
      ++generation_;
      targets_[generation_] = std::move(rendering.targets);
      while (targets_.size() > 16)
        targets_.erase(targets_.begin());
    }
    Frame frame{generation_, std::nullopt, presenter_->describe()};
    if (known != generation_) frame.html = lastHtml_;
    return frame;
  }

  void serveFrame(const httplib::Request& request, httplib::Response& response) {
    const long known =
        request.has_param("gen") ? std::atol(request.get_param_value("gen").c_str()) : -1;
    const bool wait = request.has_param("wait");
    const auto deadline = std::chrono::steady_clock::now() + 1s;
    std::optional<Frame> frame;
    while (true) {
      frame = onMain<Frame>([this, known] { return render(known); });
      if (!frame || frame->html || !wait || std::chrono::steady_clock::now() >= deadline) break;
      std::this_thread::sleep_for(100ms);
    }
    if (!frame) {
      response.status = 503;
      return;
    }
    std::string body =
        "{\"gen\":" + std::to_string(frame->generation) + ",\"graph\":" + jsonString(frame->graph);
    if (frame->html) body += ",\"html\":" + jsonString(*frame->html);
    response.set_header("Cache-Control", "no-store");
    response.set_content(body + "}", "application/json");
  }

  void serveAction(const httplib::Request& request, httplib::Response& response) {
    const long generation = std::atol(request.get_param_value("gen").c_str());
    const std::string id = request.get_param_value("id");
    const std::string value = request.get_param_value("value");
    const auto done = onMain<bool>([this, generation, id, value] {
      const auto found = targets_.find(generation);
      if (found == targets_.end()) return false;
      const auto target = found->second.find(id);
      // Copied: the action may lead to a render that drops this generation.
      auto action = target == found->second.end() ? nullptr : target->second;
      return action && action(value);
    });
    response.set_content(done && *done ? "{\"ok\":true}" : "{\"ok\":false}", "application/json");
  }

  void serveImage(const std::string& name, httplib::Response& response) const {
    if (name.find("..") != std::string::npos) {
      response.status = 404;
      return;
    }
    std::ifstream file(images_ / (name + ".png"), std::ios::binary);
    if (!file) {
      response.status = 404;
      return;
    }
    std::stringstream bytes;
    bytes << file.rdbuf();
    response.set_header("Cache-Control", "max-age=3600");
    response.set_content(bytes.str(), "image/png");
  }

  std::string keepPhoto(const Image& image) {
    std::uint64_t hash = 1469598103934665603ULL;  // FNV-1a
    for (const std::uint8_t byte : image.data) {
      hash = (hash ^ byte) * 1099511628211ULL;
    }
    char key[24];
    std::snprintf(key, sizeof key, "%016llx", static_cast<unsigned long long>(hash));
    std::lock_guard lock(photosMutex_);
    photos_.try_emplace(key, image.data);
    return key;
  }

  std::shared_ptr<StopState> stop_;
  std::shared_ptr<ManualMainQueue> queue_;
  std::shared_ptr<Window> window_;
  std::shared_ptr<PreviewPresenter> presenter_;
  std::filesystem::path images_;
  HtmlOptions options_;
  // Main queue only.
  std::string lastHtml_;
  long generation_ = 0;
  std::map<long, std::map<std::string, std::function<bool(const std::string&)>>> targets_;
  // Any thread.
  std::mutex photosMutex_;
  std::map<std::string, std::vector<std::uint8_t>> photos_;
};

void applySettings(const HostSettings& settings) {
  auto& sdk = NutritionSDK::sharedInstance();
  if (settings.mainColor) sdk.setMainColor(*settings.mainColor);
  if (settings.navigationColor) sdk.setNavigationBarColor(*settings.navigationColor);
  if (settings.navigationTint) sdk.setNavigationTintColor(*settings.navigationTint);
  if (settings.navigationTitle) sdk.setNavigationTitle(*settings.navigationTitle);
  if (settings.largeTitles) sdk.preferLargeTitlte(true);
  if (settings.language) sdk.setLanguage(*settings.language);
  sdk.setShortProfile(settings.shortProfile);
  sdk.setShowExcludedAliments(settings.excludedAliments);
  sdk.setIntermittentFastingEnable(settings.fasting);
  sdk.setDietType(settings.diet);
}

}  // namespace

int runPreview(const std::vector<std::string>& arguments) {
  std::vector<std::string> rest = arguments;
  const auto settings = takeSettings(rest);
  if (!settings) return 2;
  const auto options = parseCliOptions(rest);
  if (!options) return 2;
  if (settings->language) setenv("LC_ALL", localeOf(*settings->language), 1);

  // Ctrl-C and termination requests are taken by one thread; block them before any other
  // thread starts so that every thread inherits the mask.
  sigset_t signals;
  sigemptyset(&signals);
  sigaddset(&signals, SIGINT);
  sigaddset(&signals, SIGTERM);
  pthread_sigmask(SIG_BLOCK, &signals, nullptr);

  // The port first: a busy one ends the command before the backend is started.
  httplib::Server server;
  // Address reuse only: with port reuse as well, a second preview would share a busy port.
  server.set_socket_options([](socket_t sock) {
    int yes = 1;
    setsockopt(sock, SOL_SOCKET, SO_REUSEADDR, &yes, sizeof yes);
  });
  const std::string host = "127.0.0.1";
  int port = settings->port;
  if (port == 0) {
    port = server.bind_to_any_port(host);
  } else if (!server.bind_to_port(host, port)) {
    port = -1;
  }
  if (port <= 0) {
    std::fprintf(stderr, "nutrition preview: cannot listen on %s port %d (in use?)\n", host.c_str(),
                 settings->port);
    return 1;
  }

  auto stop = std::make_shared<StopState>();
  std::thread([signals, stop] {
    int received = 0;
    sigwait(&signals, &received);
    stop->stopping = true;
    std::lock_guard lock(stop->mutex);
    if (stop->queue) stop->queue->post([] {});
  }).detach();

  CliSession cli(*options, /*keepSandboxState=*/false);
  if (!cli.open()) return 1;
  // The fasting screen's clock runs on from NUTRITIONKIT_NOW, so its timer ticks.
  cli.letClockRun();
  applySettings(*settings);
  auto queue = std::dynamic_pointer_cast<ManualMainQueue>(cli.platform().mainQueue);
  {
    std::lock_guard lock(stop->mutex);
    stop->queue = queue;
  }

  auto presenter = std::make_shared<PreviewPresenter>();
  auto window = std::make_shared<Window>(presenter, cli.platform().mainQueue);
  window->setRootViewController(std::make_shared<HostScreen>(*settings));
  Core::current().application().setKeyWindow(window);

  PreviewServer preview(stop, queue, window, presenter, defaultResourcesDirectory() / "images");
  preview.route(server);
  std::thread listening([&server] { server.listen_after_bind(); });

  std::printf("NutritionKit preview of %s for member '%s'\n",
              cli.embedded() ? "the embedded sandbox backend" : cli.baseURL().c_str(),
              options->member.c_str());
  std::printf("http://%s:%d/\n", host.c_str(), port);
  std::printf("Open it in a browser; press Ctrl-C to stop.\n");
  std::fflush(stdout);

  // The module opens as a host would open it: the unregistered member sees the invitation to
  // the questionnaire, a registered one the weekly menu.
  NutritionSDK::sharedInstance().showNutritionModule();
  while (!stop->stopping) {
    queue->waitAndRun(200ms);
  }
  std::printf("Stopping.\n");
  std::fflush(stdout);
  server.stop();
  listening.join();
  Core::current().application().setKeyWindow(nullptr);
  return 0;
}

}  // namespace nutrition::cli
