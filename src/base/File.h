#pragma once
// Whole-file reads and writes for the module's small files (stores, notifications, cached
// images). A write goes to a temporary file beside the target and is renamed over it, so a
// process killed half-way leaves either the old or the new contents, never a mix.

#include <filesystem>
#include <optional>
#include <string>
#include <string_view>

namespace nutrition {

// The file's bytes; nothing when it cannot be opened or read.
std::optional<std::string> readFile(const std::filesystem::path& path);

// Creates the parent folders, writes `bytes` to "<path>.tmp" and renames it over `path`.
// False (and the old contents kept) when any step fails.
bool writeFileAtomically(const std::filesystem::path& path, std::string_view bytes);

}  // namespace nutrition
