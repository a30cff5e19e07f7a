#pragma once
// Every image the module's bundle must ship, by name: the screens' own, those the resource
// files name, and the check images of the questionnaires' list questions (their own answers,
// and the answers the sandbox backend's catalogues give them).

#include <filesystem>
#include <string>
#include <vector>

namespace nutrition::imagegen {

enum class ImageKind { screen, phaseIcon, waitScreen, infoIcon, check };

struct RequiredImage {
  std::string name;
  ImageKind kind;
  bool operator<(const RequiredImage& other) const { return name < other.name; }
};

// Sorted by name, each once; `resources` is the resources/ folder.
std::vector<RequiredImage> requiredImages(const std::filesystem::path& resources);

}  // namespace nutrition::imagegen
