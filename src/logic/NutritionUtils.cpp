#include "logic/NutritionUtils.h"

#include "base/SharedInstance.h"

namespace nutrition {

NutritionUtils& NutritionUtils::sharedInstance() {
  return SharedInstance<NutritionUtils>::get([] { return new NutritionUtils; });
}

}  // namespace nutrition
