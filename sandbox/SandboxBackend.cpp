#include "sandbox/SandboxBackend.h"

#include <algorithm>
#include <cmath>

#include "json/JsonEncode.h"
#include "json/JsonReader.h"
#include "model/NutritionCatalogues.h"
#include "model/NutritionCredentials.h"
#include "model/NutritionDistribution.h"
#include "model/NutritionFavoriteDish.h"
#include "model/NutritionPreference.h"
#include "sandbox/PngImage.h"

namespace nutrition::sandbox {
namespace {

struct LoginBody {
  std::optional<std::string> clientAlias;
  std::optional<std::string> password;
  static constexpr auto jsonFields() {
    return std::tuple{json::field("ClientAlias", &LoginBody::clientAlias),
                      json::field("Password", &LoginBody::password)};
  }
};

struct ReplaceBody {
  std::optional<std::string> userId;
  std::optional<std::int64_t> day;
  std::optional<std::int64_t> intake;
  std::optional<std::int64_t> dishOrder;
  std::optional<std::string> language;
  static constexpr auto jsonFields() {
    using R = ReplaceBody;
    return std::tuple{json::field("UserId", &R::userId), json::field("DayNum", &R::day),
                      json::field("IntakeId", &R::intake),
                      json::field("DishOrderId", &R::dishOrder),
                      json::field("Language", &R::language)};
  }
};

struct RemoveFavoriteBody {
  std::optional<std::string> userId;
  std::optional<std::int64_t> dishId;
  static constexpr auto jsonFields() {
    return std::tuple{json::field("UserId", &RemoveFavoriteBody::userId),
                      json::field("DishId", &RemoveFavoriteBody::dishId)};
  }
};

template <class T>
Answer ok(const T& value) {
  auto text = json::encodeJson(value);
  if (!text.ok()) return errorAnswer(500, text.error().message);
  return Answer{200, std::move(text).value()};
}

Answer badBody(const Error& error) {
  return errorAnswer(400, "invalid JSON body: " + error.message);
}

// Copies every field present in `update` over `stored`, as a partial update does.
void merge(NutritionUser& stored, const NutritionUser& update) {
  std::apply(
      [&](const auto&... field) {
        ((update.*field.member ? void(stored.*field.member = update.*field.member) : void()), ...);
      },
      NutritionUser::jsonFields());
}

std::string clientAliasOf(const SeedData& seed, const NutritionUser& user) {
  for (const auto& account : seed.accounts) {
    if (user.clientID == account.clientId) return account.clientAlias;
  }
  const std::string& id = user.userID.value_or("");
  const auto underscore = id.rfind('_');
  return underscore == std::string::npos ? std::string{} : id.substr(underscore + 1);
}

}  // namespace

Answer errorAnswer(int status, std::string_view message) {
  json::JsonWriter out;
  out.beginObject();
  out.key("error");
  out.string(message);
  out.key("status");
  out.integer(status);
  out.endObject();
  return Answer{status, out.take()};
}

SandboxBackend::SandboxBackend(Options options, const SeedData& seed)
    : seed_(seed), generator_(seed), options_(std::move(options)) {
  if (!options_.now) {
    options_.now = [] {
      return std::chrono::duration<double>(std::chrono::system_clock::now().time_since_epoch())
          .count();
    };
  }
  if (options_.dataDirectory) state_ = SandboxState::load(*options_.dataDirectory);
}

void SandboxBackend::setBaseURL(std::string baseURL) {
  std::lock_guard lock(mutex_);
  baseURL_ = std::move(baseURL);
}

void SandboxBackend::setProcessingTime(std::chrono::milliseconds time) {
  std::lock_guard lock(mutex_);
  options_.processingTime = time;
}

std::string SandboxBackend::timestamp() const {
  const double now = options_.now();
  const auto seconds = static_cast<std::int64_t>(std::floor(now));
  const auto millis = static_cast<int>((now - double(seconds)) * 1000.0);
  std::string text = formatIso8601(Date{std::chrono::seconds{seconds}});
  char fraction[8];
  std::snprintf(fraction, sizeof fraction, ".%03d", std::clamp(millis, 0, 999));
  text.insert(text.size() - 1, fraction);
  return text;
}

std::optional<Answer> SandboxBackend::persist() {
  if (!options_.dataDirectory || state_.save(*options_.dataDirectory)) return std::nullopt;
  return errorAnswer(500, "the sandbox could not save its state");
}

Answer SandboxBackend::login(std::string_view body) {
  const auto request = json::decodeDocument<LoginBody>(body);
  if (!request.ok()) return badBody(request.error());
  std::vector<NutritionCredentialsIA> answer;
  for (const auto& account : seed_.accounts) {
    if (account.clientAlias == request->clientAlias && account.password == request->password) {
      answer.push_back(
          {account.clientId, account.clientAlias, account.clientName, account.enabled});
    }
  }
  return ok(answer);
}

std::string SandboxBackend::userAnswer(const NutritionUser& user) const {
  NutritionUserResponse response;
  char id[32];
  std::snprintf(id, sizeof id, "%024zx", std::hash<std::string>{}(user.userID.value_or("")));
  response.id = id;
  response.userID = user.userID;
  response.memberID = user.memberID;
  response.clientID = user.clientID;
  response.intermittentFastingID = user.intermittentFastingID;
  response.dateOfBirth = user.dateOfBirth;
  response.difficulty = user.difficulty;
  response.gender = user.gender;
  response.physicalIntensityID = user.physicalIntensityID;
  response.targetWeight = user.targetWeight;
  response.weight = user.weight;
  response.dailyKcal = user.dailyKcal;
  response.height = user.height;
  response.desiredBalanceID = user.desiredBalanceID;
  response.trainingID = user.trainingID;
  response.dietID = user.dietID;
  response.distributionByIntakeID = user.distributionByIntakeID;
  response.clientAlias = clientAliasOf(seed_, user);
  response.selectedIntakes = user.selectedIntakes;
  response.excludedAlimentIDS = user.excludedAliments;
  response.preferenceIDS = user.preferences;
  response.countryIDS = user.countries;
  auto text = json::encodeJson(std::vector<NutritionUserResponse>{response});
  return text.ok() ? std::move(text).value() : "[]";
}

Answer SandboxBackend::getUser(std::string_view, const std::string& userId) {
  std::lock_guard lock(mutex_);
  const NutritionUser* user = state_.user(userId);
  return Answer{200, user ? userAnswer(*user) : "[]"};
}

Answer SandboxBackend::createUser(std::string_view language, std::string_view body) {
  return saveUser(language, body, true);
}

Answer SandboxBackend::updateUser(std::string_view language, std::string_view body) {
  return saveUser(language, body, false);
}

Answer SandboxBackend::saveUser(std::string_view, std::string_view body, bool create) {
  const auto request = json::decodeDocument<NutritionUser>(body);
  if (!request.ok()) return badBody(request.error());
  if (!request->userID || request->userID->empty()) return errorAnswer(400, "UserId is required");

  std::lock_guard lock(mutex_);
  NutritionUser* stored = state_.user(*request->userID);
  if (create && stored) return errorAnswer(409, "the user exists already; update it with PATCH");
  if (!create && !stored) return errorAnswer(404, "no such user; create it with POST");
  if (create) {
    state_.users.push_back(*request);
    stored = &state_.users.back();
  } else {
    merge(*stored, *request);
  }
  if (request->regenerateMenu.value_or(create)) regenerateMenu(*stored);
  if (auto failure = persist()) return *failure;
  return Answer{200, userAnswer(*stored)};
}

void SandboxBackend::regenerateMenu(const NutritionUser& user) {
  const std::string& userId = *user.userID;
  StoredMenu* stored = state_.menu(userId);
  const std::int64_t serial = stored ? stored->menu.serialNumber.value_or(0) + 1 : 1;
  const double readyAt =
      options_.now() + std::chrono::duration<double>(options_.processingTime).count();
  StoredMenu fresh{userId, readyAt, generator_.generate(user, serial, timestamp())};
  if (stored) {
    *stored = std::move(fresh);
  } else {
    state_.menus.push_back(std::move(fresh));
  }
}

NutritionDish SandboxBackend::render(const NutritionDish& dish, NutritionLanguage language) const {
  NutritionDish out = dish;
  const SeedDish* seed = dish.dishID ? seed_.dish(*dish.dishID) : nullptr;
  if (!seed) return out;
  out.name = seed->name.in(language);
  out.ingredients = seed->ingredients.in(language);
  out.recipe = seed->recipe.in(language);
  out.difficulty = seed->difficulty;
  out.dishOrderID = seed->course;
  if (const SeedEntry* course = seed_.entry(seed_.catalogues.dishOrders, seed->course)) {
    out.typeName = course->name.in(language);
  }
  out.preferences = std::vector<std::int64_t>{};
  for (const auto& preference : seed_.catalogues.preferences) {
    const auto& conflicts = seed->conflictsPreferences;
    if (std::find(conflicts.begin(), conflicts.end(), preference.id) == conflicts.end()) {
      out.preferences->push_back(preference.id);
    }
  }
  out.binaryUrls =
      std::vector<std::string>{baseURL_ + "images/dish-" + std::to_string(seed->id) + ".png"};
  return out;
}

NutritionMenu SandboxBackend::render(const StoredMenu& stored, NutritionLanguage language) const {
  NutritionMenu menu = stored.menu;
  menu.processed = options_.now() >= stored.readyAt;
  if (!*menu.processed) {
    // While the backend is still building it, the menu has no days yet.
    menu.days = std::vector<NutritionDay>{};
    MenuGenerator::updateTotals(menu);
    return menu;
  }
  if (!menu.days) return menu;
  for (auto& day : *menu.days) {
    if (!day.intakes) continue;
    for (auto& intake : *day.intakes) {
      if (const SeedEntry* entry =
              seed_.entry(seed_.catalogues.intakes, intake.intakeId.value_or(0))) {
        intake.name = entry->name.in(language);
      }
      if (!intake.dishes) continue;
      for (auto& dish : *intake.dishes)
        dish = render(dish, language);
    }
  }
  return menu;
}

std::string SandboxBackend::menuAnswer(const StoredMenu& stored, NutritionLanguage language) const {
  auto text = json::encodeJson(std::vector<NutritionMenu>{render(stored, language)});
  return text.ok() ? std::move(text).value() : "[]";
}

Answer SandboxBackend::getMenu(std::string_view language, const std::string& userId) {
  std::lock_guard lock(mutex_);
  const NutritionUser* user = state_.user(userId);
  if (!user) return Answer{200, "[]"};
  StoredMenu* stored = state_.menu(userId);
  if (!stored) {
    state_.menus.push_back(StoredMenu{userId, 0, generator_.generate(*user, 1, timestamp())});
    stored = &state_.menus.back();
    if (auto failure = persist()) return *failure;
  }
  return Answer{200, menuAnswer(*stored, requestLanguage(language))};
}

Answer SandboxBackend::replaceDish(std::string_view body) {
  const auto request = json::decodeDocument<ReplaceBody>(body);
  if (!request.ok()) return badBody(request.error());
  if (!request->userId || !request->day || !request->intake || !request->dishOrder) {
    return errorAnswer(400, "UserId, DayNum, IntakeId and DishOrderId are required");
  }
  std::lock_guard lock(mutex_);
  const NutritionUser* user = state_.user(*request->userId);
  StoredMenu* stored = state_.menu(*request->userId);
  if (!user || !stored) return errorAnswer(404, "no menu for this user");
  if (options_.now() < stored->readyAt) return errorAnswer(409, "the menu is still being built");
  if (!generator_.replaceDish(*user, stored->menu, *request->day, *request->intake,
                              *request->dishOrder, timestamp())) {
    return errorAnswer(404, "no dish of that course to replace, or no other dish fits");
  }
  if (auto failure = persist()) return *failure;
  return Answer{200, menuAnswer(*stored, requestLanguage(request->language.value_or("")))};
}

Answer SandboxBackend::addFavorite(std::string_view language, std::string_view body) {
  const auto request = json::decodeDocument<NutritionFavoriteDishPost>(body);
  if (!request.ok()) return badBody(request.error());
  if (!request->userId || !request->dish || !request->dish->dishID) {
    return errorAnswer(400, "UserId and a Dish with its DishId are required");
  }
  std::lock_guard lock(mutex_);
  if (!state_.user(*request->userId)) return errorAnswer(404, "no such user");
  auto& dishes = state_.favoritesOf(*request->userId);
  const auto same = [&](const NutritionDish& d) { return d.dishID == request->dish->dishID; };
  if (std::none_of(dishes.begin(), dishes.end(), same)) dishes.push_back(*request->dish);
  if (auto failure = persist()) return *failure;
  std::vector<NutritionFavoriteDishPost> answer;
  for (const auto& dish : dishes) {
    answer.push_back({request->userId, render(dish, requestLanguage(language))});
  }
  return ok(answer);
}

Answer SandboxBackend::removeFavorite(std::string_view language, std::string_view body) {
  const auto request = json::decodeDocument<RemoveFavoriteBody>(body);
  if (!request.ok()) return badBody(request.error());
  if (!request->userId || !request->dishId)
    return errorAnswer(400, "UserId and DishId are required");
  std::lock_guard lock(mutex_);
  if (!state_.user(*request->userId)) return errorAnswer(404, "no such user");
  auto& dishes = state_.favoritesOf(*request->userId);
  std::erase_if(dishes, [&](const NutritionDish& d) { return d.dishID == request->dishId; });
  if (auto failure = persist()) return *failure;
  NutritionFavoriteDishesGet answer{request->userId, std::vector<NutritionDish>{}};
  for (const auto& dish : dishes)
    answer.dishes->push_back(render(dish, requestLanguage(language)));
  return ok(std::vector<NutritionFavoriteDishesGet>{answer});
}

Answer SandboxBackend::getFavorites(std::string_view language, const std::string& userId) {
  std::lock_guard lock(mutex_);
  std::vector<NutritionDish> answer;
  if (state_.user(userId)) {
    for (const auto& dish : state_.favoritesOf(userId)) {
      answer.push_back(render(dish, requestLanguage(language)));
    }
  }
  return ok(answer);
}

Answer SandboxBackend::getCatalogue(Catalogue catalogue, std::string_view code) const {
  const NutritionLanguage language = requestLanguage(code);
  const auto& seed = seed_.catalogues;
  const auto build = [&]<class Record>(const std::vector<SeedEntry>& entries, auto make) {
    std::vector<Record> records;
    for (const auto& entry : entries)
      records.push_back(make(entry, entry.name.in(language)));
    return ok(records);
  };
  switch (catalogue) {
    case Catalogue::intakes:
      return build.template operator()<NutritionIntake>(seed.intakes, [](auto& e, auto& name) {
        return NutritionIntake{e.id, name, std::nullopt, std::nullopt};
      });
    case Catalogue::excludedAliments:
      return build.template operator()<NutritionExcluded>(
          seed.excludedAliments, [](auto& e, auto& name) {
            return NutritionExcluded{e.id, name, std::nullopt, e.aliments};
          });
    case Catalogue::fastings:
      return build.template operator()<IntermittentFasting>(seed.fastings, [](auto& e, auto& name) {
        return IntermittentFasting{e.id, name, e.enabled.value_or(true)};
      });
    case Catalogue::balances:
      return build.template operator()<NutritionBalance>(seed.balances, [](auto& e, auto& name) {
        return NutritionBalance{e.id, name};
      });
    case Catalogue::preferences:
      return build.template operator()<NutritionPreference>(
          seed.preferences, [](auto& e, auto& name) {
            return NutritionPreference{
                e.id, name, fromRawValue<PreferenceType>(e.type.value_or("")), e.aliments};
          });
    case Catalogue::distributions:
      return build.template operator()<NutritionDistribution>(
          seed.distributions, [](auto& e, auto& name) {
            std::vector<IPDistribution> split;
            for (const auto& s : e.split.value_or(std::vector<SeedSplit>{})) {
              split.push_back(IPDistribution{s.intake, s.carbs, s.proteins, s.fats});
            }
            return NutritionDistribution{e.id, name, split};
          });
    case Catalogue::physicalIntensities:
      return build.template operator()<PhysicalIntensity>(
          seed.physicalIntensities, [](auto& e, auto& name) {
            return PhysicalIntensity{e.documentId, name, e.id};
          });
    case Catalogue::dishOrders:
      return build.template operator()<NutritionDishOrder>(seed.dishOrders,
                                                           [](auto& e, auto& name) {
                                                             return NutritionDishOrder{e.id, name};
                                                           });
  }
  return errorAnswer(404, "no such catalogue");
}

Answer SandboxBackend::getImage(std::string_view fileName) const {
  constexpr std::string_view kPrefix = "dish-";
  constexpr std::string_view kSuffix = ".png";
  if (!fileName.starts_with(kPrefix) || !fileName.ends_with(kSuffix)) {
    return errorAnswer(404, "no such image");
  }
  const auto digits =
      fileName.substr(kPrefix.size(), fileName.size() - kPrefix.size() - kSuffix.size());
  std::int64_t id = 0;
  for (const char c : digits) {
    if (c < '0' || c > '9' || id > 1'000'000) return errorAnswer(404, "no such image");
    id = id * 10 + (c - '0');
  }
  const SeedDish* dish = digits.empty() ? nullptr : seed_.dish(id);
  if (!dish) return errorAnswer(404, "no such image");
  return Answer{200, dishImagePng(*dish), "image/png"};
}

}  // namespace nutrition::sandbox
