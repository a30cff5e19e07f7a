#include "screens/menu/DishPhoto.h"

#include "ui/BundleImages.h"

namespace nutrition {

void DishPhoto::show(const std::shared_ptr<ImageView>& view, const NutritionDish* dish,
                     const NutritionSDKUtils& config) {
  const std::uint64_t request = ++*generation_;
  view->image = ImageRef::named(std::string(kPlaceholderMenuImage));
  if (dish == nullptr || !dish->binaryUrls || dish->binaryUrls->empty()) return;
  const std::string& url = dish->binaryUrls->front();
  if (config.existImage(url, Folder::recipes)) {
    if (auto cached = config.getImage(url, Folder::recipes)) {
      view->image = ImageRef::data(std::move(*cached));
      return;
    }
  }
  config.downloadImage(url, Folder::recipes,
                       [weakView = std::weak_ptr<ImageView>(view),
                        generation = std::weak_ptr<std::uint64_t>(generation_),
                        request](std::optional<Image> image) {
                         const auto current = generation.lock();
                         const auto target = weakView.lock();
                         if (!image || !current || !target || *current != request) return;
                         target->image = ImageRef::data(std::move(*image));
                       });
}

}  // namespace nutrition
