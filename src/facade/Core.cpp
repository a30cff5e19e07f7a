#include "facade/Core.h"

#include <mutex>

namespace nutrition {
namespace {

std::mutex& coreMutex() {
  static std::mutex mutex;
  return mutex;
}

std::unique_ptr<Core>& installedCore() {
  static std::unique_ptr<Core> core;
  return core;
}

void discardCore() {
  std::unique_ptr<Core> old;
  {
    std::lock_guard lock(coreMutex());
    old = std::move(installedCore());
  }
  // Destroyed outside the lock: the services' destructors may release platform objects.
}

}  // namespace

Core& Core::current() {
  std::lock_guard lock(coreMutex());
  auto& core = installedCore();
  if (!core) {
    Platform::setInstallObserver(&discardCore);
    core = std::make_unique<Core>(Platform::current());
  }
  return *core;
}

Core::Core(std::shared_ptr<const Platform> platform)
    : platform_(std::move(platform)),
      deviceLanguage_(platform_->locale->languageCode()),
      strings_(*platform_->resources, deviceLanguage_),
      config_(*platform_, deviceLanguage_),
      authService_(*platform_, config_),
      dataService_(*platform_, config_, strings_, {links_, links_, links_}),
      session_(*platform_, authService_, dataService_, config_),
      ayuno_(*platform_, links_, strings_),
      sdk_(*this) {}

Core::~Core() = default;

NutritionUtils& Core::utils() {
  if (!utils_) utils_.emplace(*platform_, dataService_, links_, config_, strings_);
  return *utils_;
}

NutritionProfileUtils& Core::profileUtils() {
  if (!profileUtils_) profileUtils_.emplace(session_, utils());
  return *profileUtils_;
}

const NutritionUser* Core::Links::currentMember() const {
  const auto& user = core_.session_.currentUser;
  return user ? &*user : nullptr;
}

std::optional<std::int64_t> Core::Links::selectedMenuDay() const {
  return core_.utils().selectedDay;
}

std::optional<std::int64_t> Core::Links::selectedMenuIntake() const {
  return core_.utils().selectedIntake;
}

void Core::Links::dropHeldMenu() {
  core_.utils().weeklyMenu.reset();
}

void Core::Links::rereadMember(std::function<void(std::optional<NutritionUser>)> completion) {
  core_.session_.getNutritionUser(std::move(completion));
}

// The contract's singletons: one-line accessors into the installed platform's Core.
NutritionSDK& NutritionSDK::sharedInstance() {
  return Core::current().sdk();
}
NutritionSDKUtils& NutritionSDKUtils::sharedInstance() {
  return Core::current().config();
}
NutritionAuthDataservice& NutritionAuthDataservice::sharedInstance() {
  return Core::current().authService();
}
DataServiceNutrition& DataServiceNutrition::sharedInstance() {
  return Core::current().dataService();
}
NutritionAuth& NutritionAuth::sharedInstance() {
  return Core::current().session();
}
NutritionUtils& NutritionUtils::sharedInstance() {
  return Core::current().utils();
}
NutritionProfileUtils& NutritionProfileUtils::sharedInstance() {
  return Core::current().profileUtils();
}
AyunoUtils& AyunoUtils::shared() {
  return Core::current().ayuno();
}
NutritionControllers& NutritionControllers::sharedInstance() {
  return Core::current().router();
}

}  // namespace nutrition
