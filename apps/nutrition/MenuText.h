#pragma once
// The menu as text for the command line.

#include "model/NutritionMenu.h"

namespace nutrition::cli {

void printDay(const NutritionDay& day);
// Today's day of the menu the module holds, as the facade gives it.
void printToday();
void printWeek(const NutritionMenu& menu);

}  // namespace nutrition::cli
