#pragma once
// A dish's photo in an image view: the placeholder at once, then the dish's first photo from the
// image cache, or downloaded into it and shown when it arrives.
//
// Cells and tiles are reused, so a download may arrive after its view was asked to show another
// dish. Each view keeps one `DishPhoto`; a new `show` makes every earlier download stale, and a
// stale one is not shown (it is still cached).

#include <cstdint>
#include <memory>

#include "config/NutritionSDKUtils.h"
#include "model/NutritionDish.h"
#include "views/ImageView.h"

namespace nutrition {

class DishPhoto {
 public:
  void show(const std::shared_ptr<ImageView>& view, const NutritionDish* dish,
            const NutritionSDKUtils& config);

 private:
  std::shared_ptr<std::uint64_t> generation_ = std::make_shared<std::uint64_t>(0);
};

}  // namespace nutrition
