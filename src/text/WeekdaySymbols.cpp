#include "text/WeekdaySymbols.h"

namespace nutrition {

std::array<std::string_view, 7> shortWeekdaySymbols(std::string_view language) {
  using Names = std::array<std::string_view, 7>;
  if (language == "es") return Names{"dom", "lun", "mar", "mié", "jue", "vie", "sáb"};
  if (language == "pt") return Names{"dom", "seg", "ter", "qua", "qui", "sex", "sáb"};
  if (language == "de") return Names{"So.", "Mo.", "Di.", "Mi.", "Do.", "Fr.", "Sa."};
  if (language == "ca") return Names{"dg.", "dl.", "dt.", "dc.", "dj.", "dv.", "ds."};
  if (language == "it") return Names{"dom", "lun", "mar", "mer", "gio", "ven", "sab"};
  if (language == "fr") return Names{"dim.", "lun.", "mar.", "mer.", "jeu.", "ven.", "sam."};
  return Names{"Sun", "Mon", "Tue", "Wed", "Thu", "Fri", "Sat"};
}

}  // namespace nutrition
