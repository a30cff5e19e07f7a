#pragma once
// What the sandbox backend remembers: members, their current menus and their favourites.
// Given a data directory it is saved there after every change, written to a temporary file
// and renamed into place, so a killed process keeps everything it already answered.

#include <cstdint>
#include <filesystem>
#include <map>
#include <optional>
#include <string>
#include <tuple>
#include <vector>

#include "json/JsonFields.h"
#include "model/NutritionDish.h"
#include "model/NutritionMenu.h"
#include "model/NutritionUser.h"

namespace nutrition::sandbox {

struct StoredMenu {
  std::string userId;
  double readyAt = 0;  // seconds since 1970: "Processed" is false before
  NutritionMenu menu;

  static constexpr auto jsonFields() {
    return std::tuple{json::required("userId", &StoredMenu::userId),
                      json::required("readyAt", &StoredMenu::readyAt),
                      json::required("menu", &StoredMenu::menu)};
  }
};

struct StoredFavorites {
  std::string userId;
  std::vector<NutritionDish> dishes;

  static constexpr auto jsonFields() {
    return std::tuple{json::required("userId", &StoredFavorites::userId),
                      json::required("dishes", &StoredFavorites::dishes)};
  }
};

struct SandboxState {
  std::vector<NutritionUser> users;
  std::vector<StoredMenu> menus;
  std::vector<StoredFavorites> favorites;

  NutritionUser* user(const std::string& userId);
  StoredMenu* menu(const std::string& userId);
  std::vector<NutritionDish>& favoritesOf(const std::string& userId);

  // Reads the state saved in `directory`; empty when there is none. A file that cannot be read
  // is reported and set aside (renamed with ".corrupt") rather than overwritten.
  static SandboxState load(const std::filesystem::path& directory);
  // Writes the state atomically; false when the file could not be written.
  bool save(const std::filesystem::path& directory) const;

  static constexpr auto jsonFields() {
    return std::tuple{json::required("users", &SandboxState::users),
                      json::required("menus", &SandboxState::menus),
                      json::required("favorites", &SandboxState::favorites)};
  }
};

}  // namespace nutrition::sandbox
