#pragma once
// The system's semantic colours in their light appearance. Screens name them where the product
// says "the label colour", "the tertiary label colour" and so on; a platform renderer may map
// these exact values back to its own dynamic colours.

#include "base/Color.h"

namespace nutrition::systemColors {

inline constexpr Color clear{0, 0, 0, 0};
inline constexpr Color white{255, 255, 255, 255};
inline constexpr Color black{0, 0, 0, 255};
inline constexpr Color label{0, 0, 0, 255};
inline constexpr Color secondaryLabel{60, 60, 67, 153};
inline constexpr Color tertiaryLabel{60, 60, 67, 76};
inline constexpr Color systemBackground{255, 255, 255, 255};
inline constexpr Color secondarySystemBackground{242, 242, 247, 255};
inline constexpr Color systemGray{142, 142, 147, 255};
inline constexpr Color lightGray{170, 170, 170, 255};
inline constexpr Color gray{128, 128, 128, 255};

}  // namespace nutrition::systemColors
