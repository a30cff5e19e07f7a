#pragma once
// The system's font manager: a font shipped as a file becomes usable by its name once
// registered.

#include <mutex>
#include <set>
#include <string>
#include <string_view>

namespace nutrition {

class FontRegistry {
 public:
  enum class Outcome {
    registered,
    noDataProvider,  // the bytes cannot be handed to the font system
    notAFont,        // the bytes are no font the system reads
    refused,         // the system would not register it (already registered, most often)
  };

  virtual ~FontRegistry() = default;
  virtual Outcome registerFont(std::string_view bytes) = 0;
};

// Accepts TrueType, OpenType and font collections (by their sfnt signature) and refuses the
// same bytes twice: the portable default and the test double. Fonts are only remembered.
class InMemoryFontRegistry final : public FontRegistry {
 public:
  Outcome registerFont(std::string_view bytes) override;
  std::size_t count() const;

 private:
  mutable std::mutex mutex_;
  std::set<std::string, std::less<>> fonts_;
};

}  // namespace nutrition
