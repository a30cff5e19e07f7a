#pragma once
// The nutrition backend's behaviour, apart from HTTP: each operation takes what a request
// carries and gives the status and JSON body to answer with. Safe to call from several
// threads at once.

#include <chrono>
#include <filesystem>
#include <functional>
#include <mutex>
#include <optional>
#include <string>
#include <string_view>

#include "sandbox/MenuGenerator.h"
#include "sandbox/SandboxState.h"
#include "sandbox/SeedData.h"

namespace nutrition::sandbox {

struct Answer {
  int status = 200;
  std::string body;
  std::string contentType = "application/json";
};

// A JSON error body: {"error": message, "status": status}.
Answer errorAnswer(int status, std::string_view message);

enum class Catalogue {
  intakes,
  excludedAliments,
  fastings,
  balances,
  preferences,
  distributions,
  physicalIntensities,
  dishOrders,
};

class SandboxBackend {
 public:
  struct Options {
    // Where members, menus and favourites are saved; in memory only when empty.
    std::optional<std::filesystem::path> dataDirectory;
    // How long a regenerated menu reads "Processed": false.
    std::chrono::milliseconds processingTime{3000};
    // The clock, in seconds since 1970.
    std::function<double()> now;
  };

  explicit SandboxBackend(Options options, const SeedData& seed = SeedData::embedded());

  // Image addresses in answers start with this (the server's base URL, ending in "/").
  void setBaseURL(std::string baseURL);
  void setProcessingTime(std::chrono::milliseconds time);

  Answer login(std::string_view body);
  Answer getUser(std::string_view language, const std::string& userId);
  Answer createUser(std::string_view language, std::string_view body);
  Answer updateUser(std::string_view language, std::string_view body);
  Answer getMenu(std::string_view language, const std::string& userId);
  Answer replaceDish(std::string_view body);
  Answer addFavorite(std::string_view language, std::string_view body);
  Answer removeFavorite(std::string_view language, std::string_view body);
  Answer getFavorites(std::string_view language, const std::string& userId);
  Answer getCatalogue(Catalogue catalogue, std::string_view language) const;
  // "dish-<id>.png"
  Answer getImage(std::string_view fileName) const;

 private:
  Answer saveUser(std::string_view language, std::string_view body, bool create);
  NutritionDish render(const NutritionDish& dish, NutritionLanguage language) const;
  NutritionMenu render(const StoredMenu& stored, NutritionLanguage language) const;
  std::string menuAnswer(const StoredMenu& stored, NutritionLanguage language) const;
  std::string userAnswer(const NutritionUser& user) const;
  void regenerateMenu(const NutritionUser& user);
  std::optional<Answer> persist();
  std::string timestamp() const;

  const SeedData& seed_;
  MenuGenerator generator_;
  Options options_;
  mutable std::mutex mutex_;
  std::string baseURL_ = "/";
  SandboxState state_;
};

}  // namespace nutrition::sandbox
