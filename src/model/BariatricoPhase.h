#pragma once
// The five staged diet phases after bariatric surgery, numbered 0 to 4. Each phase has its own
// diet identifier (10 + number) and plan, written by the session.

#include <cstdint>

namespace nutrition {

enum class BariatricoPhase { phase0, phase1, phase2, phase3, phase4 };

constexpr std::int64_t phaseNumber(BariatricoPhase phase) {
  return static_cast<std::int64_t>(phase);
}

}  // namespace nutrition
