#pragma once
// The composition root: one Core is built from the installed Platform and owns one instance of
// every service of the module, each given its collaborators through its constructor. The
// contract's singletons (`NutritionSDK::sharedInstance()`, `AyunoUtils::shared()`, ...) are
// one-line accessors into `Core::current()`; installing another Platform discards the Core
// and the next access builds a new one from the new platform. A reference an accessor gave
// does not outlive the install that follows it.
//
// Creation order, in the constructor: the string tables and the device language, the
// configuration record, the login and REST clients, the session, the fasting clock and the
// facade. The data holder (and what needs it: the profile mapping) is made the first time
// something asks for it, through `utils()`; making it sends its two creation requests (the
// member's favourites and the excluded-aliment catalogue), so a session's start-up stays two
// requests and those two go out once a member is known to whoever asks.
//
// The REST client needs the session's member, the menu screens' selection and a way to
// re-read the member after an update; the Core gives it those through narrow interfaces
// (backend/RequestContext.h) that forward to the services it owns.

#include <memory>
#include <optional>
#include <string>

#include "backend/DataServiceNutrition.h"
#include "backend/NutritionAuthDataservice.h"
#include "config/NutritionSDKUtils.h"
#include "facade/NutritionSDK.h"
#include "fasting/AyunoUtils.h"
#include "logic/NutritionProfileUtils.h"
#include "logic/NutritionUtils.h"
#include "platform/Platform.h"
#include "router/NutritionControllers.h"
#include "screens/ScreenContext.h"
#include "session/NutritionAuth.h"
#include "text/StringTables.h"
#include "ui/UIContext.h"
#include "views/NotificationCenter.h"
#include "views/Window.h"

namespace nutrition {

class Core {
 public:
  // The Core of the installed platform, built on first use. Call on the main thread.
  static Core& current();

  explicit Core(std::shared_ptr<const Platform> platform);
  ~Core();
  Core(const Core&) = delete;
  Core& operator=(const Core&) = delete;

  const Platform& platform() const { return *platform_; }
  const StringTables& strings() const { return strings_; }
  NutritionSDKUtils& config() { return config_; }
  NutritionAuthDataservice& authService() { return authService_; }
  DataServiceNutrition& dataService() { return dataService_; }
  NutritionAuth& session() { return session_; }
  AyunoUtils& ayuno() { return ayuno_; }
  NutritionSDK& sdk() { return sdk_; }
  // The key window the host shows the module's screens in (none until a platform shell or a
  // test sets one), and what themed controls and screens read.
  Application& application() { return application_; }
  NotificationCenter& notifications() { return notifications_; }
  const UIContext& ui() const { return ui_; }
  const ScreenContext& screens() const { return screens_; }
  NutritionControllers& router() { return router_; }
  // Made on first use.
  NutritionUtils& utils();
  NutritionProfileUtils& profileUtils();

 private:
  // The narrow interfaces of the REST client and the fasting clock, forwarding to the services
  // below. Declared first: the services keep references to it.
  class Links final : public CurrentUserSource,
                      public MenuSelection,
                      public MemberRefresh,
                      public ScreenServices,
                      public ScreenRoutes {
   public:
    explicit Links(Core& core) : core_(core) {}
    [[nodiscard]] const NutritionUser* currentMember() const override;
    [[nodiscard]] std::optional<std::int64_t> selectedMenuDay() const override;
    [[nodiscard]] std::optional<std::int64_t> selectedMenuIntake() const override;
    void dropHeldMenu() override;
    void rereadMember(std::function<void(std::optional<NutritionUser>)> completion) override;
    NutritionUtils& utils() override { return core_.utils(); }
    NutritionProfileUtils& profileUtils() override { return core_.profileUtils(); }
    NutritionAuth& session() override { return core_.session_; }
    [[nodiscard]] const DataServiceNutrition& dataService() const override {
      return core_.dataService_;
    }
    [[nodiscard]] const Platform& platform() const override { return *core_.platform_; }
    void showWeekMenu() override { core_.router_.showWeekMenu(); }
    void showProfile() override { core_.router_.showProfile(); }
    void getAyunoViewController(ScreenCompletion completion) override {
      core_.router_.getAyunoViewController(std::move(completion));
    }

   private:
    Core& core_;
  };

  std::shared_ptr<const Platform> platform_;
  std::string deviceLanguage_;
  Links links_{*this};
  StringTables strings_;
  NutritionSDKUtils config_;
  NutritionAuthDataservice authService_;
  DataServiceNutrition dataService_;
  NutritionAuth session_;
  AyunoUtils ayuno_;
  NutritionSDK sdk_;
  std::optional<NutritionUtils> utils_;
  std::optional<NutritionProfileUtils> profileUtils_;
  NotificationCenter notifications_;
  // After the services, so destroyed before them: the screens it holds refer to them.
  Application application_;
  UIContext ui_{config_, strings_, application_, notifications_, platform_->mainQueue};
  ScreenContext screens_{ui_, ayuno_, links_, links_, links_};
  NutritionControllers router_{screens_};
};

}  // namespace nutrition
