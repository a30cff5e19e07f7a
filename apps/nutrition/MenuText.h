#pragma once
// The menu as text for the command line.

#include "model/NutritionMenu.h"
#include "platform/Platform.h"

namespace nutrition::cli {

void printDay(const NutritionDay& day);
// Today's day of the menu (1 = Monday ... 7 = Sunday).
void printToday(const NutritionMenu& menu, const Platform& platform);
void printWeek(const NutritionMenu& menu);

}  // namespace nutrition::cli
