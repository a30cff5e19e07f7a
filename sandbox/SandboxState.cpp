#include "sandbox/SandboxState.h"

#include <fcntl.h>
#include <unistd.h>

#include <algorithm>
#include <cstdio>

#include "base/File.h"
#include "base/Log.h"
#include "json/JsonEncode.h"
#include "json/JsonReader.h"

namespace nutrition::sandbox {
namespace {

constexpr const char* kFileName = "sandbox-state.json";

template <class T>
T* findByUser(std::vector<T>& items, const std::string& userId) {
  const auto found = std::find_if(items.begin(), items.end(), [&](const T& item) {
    if constexpr (requires { item.userID; }) {
      return item.userID == userId;
    } else {
      return item.userId == userId;
    }
  });
  return found == items.end() ? nullptr : &*found;
}

bool writeFileDurably(const std::filesystem::path& path, const std::string& contents) {
  const int fd = ::open(path.c_str(), O_WRONLY | O_CREAT | O_TRUNC | O_CLOEXEC, 0644);
  if (fd < 0) return false;
  std::size_t written = 0;
  while (written < contents.size()) {
    const ssize_t n = ::write(fd, contents.data() + written, contents.size() - written);
    if (n <= 0) {
      ::close(fd);
      return false;
    }
    written += static_cast<std::size_t>(n);
  }
  const bool synced = ::fsync(fd) == 0;
  return ::close(fd) == 0 && synced;
}

}  // namespace

NutritionUser* SandboxState::user(const std::string& userId) {
  return findByUser(users, userId);
}

StoredMenu* SandboxState::menu(const std::string& userId) {
  return findByUser(menus, userId);
}

std::vector<NutritionDish>& SandboxState::favoritesOf(const std::string& userId) {
  if (auto* stored = findByUser(favorites, userId)) return stored->dishes;
  favorites.push_back(StoredFavorites{userId, {}});
  return favorites.back().dishes;
}

SandboxState SandboxState::load(const std::filesystem::path& directory) {
  const auto file = directory / kFileName;
  const auto contents = readFile(file);
  if (!contents) return {};
  auto state = json::decodeDocument<SandboxState>(*contents);
  if (state.ok()) return std::move(state).value();
  log(LogLevel::error, "sandbox state " + file.string() + " is unreadable (" +
                           state.error().message + "); starting empty");
  std::error_code ignored;
  std::filesystem::rename(file, std::filesystem::path(file).concat(".corrupt"), ignored);
  return {};
}

bool SandboxState::save(const std::filesystem::path& directory) const {
  const auto text = json::encodeJson(*this);
  if (!text.ok()) return false;
  std::error_code error;
  std::filesystem::create_directories(directory, error);
  const auto file = directory / kFileName;
  const auto temporary = std::filesystem::path(file).concat(".tmp");
  if (!writeFileDurably(temporary, *text)) return false;
  std::filesystem::rename(temporary, file, error);
  return !error;
}

}  // namespace nutrition::sandbox
