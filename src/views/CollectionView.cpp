#include "views/CollectionView.h"

#include <algorithm>

#include "base/Log.h"

namespace nutrition {

Size CollectionViewDelegate::sizeForItem(CollectionView& view, IndexPath) {
  return view.itemSize;
}

void CellListView::registerCell(const std::string& identifier, Factory factory) {
  factories_[identifier] = std::move(factory);
}

std::shared_ptr<ReusableCell> CellListView::dequeueReusableCell(const std::string& identifier,
                                                                IndexPath) {
  auto& pool = pool_[identifier];
  if (!pool.empty()) {
    auto cell = std::move(pool.back());
    pool.pop_back();
    cell->isSelected = false;
    cell->prepareForReuse();
    return cell;
  }
  auto factory = factories_.find(identifier);
  if (factory == factories_.end()) fatal("no cell registered for " + identifier);
  auto cell = factory->second();
  cell->reuseIdentifier_ = identifier;
  return cell;
}

void CellListView::reloadData() {
  loaded_ = true;
  for (auto& [indexPath, cell] : cells_) {
    cell->removeFromSuperview();
    pool_[cell->reuseIdentifier()].push_back(std::move(cell));
  }
  cells_.clear();
  const bool vertical = laysOutVertically();
  double position = 0;
  Size content;
  for (int section = 0, sections = sectionCount(); section < sections; ++section) {
    for (int item = 0, items = itemCount(section); item < items; ++item) {
      IndexPath indexPath{section, item};
      auto cell = makeCell(indexPath);
      if (!cell) fatal("the data source gave no cell");
      Size size = sizeOfItem(indexPath);
      cell->setFrame({vertical ? Point{0, position} : Point{position, 0}, size});
      position += (vertical ? size.height : size.width) + lineSpacing();
      if (vertical) {
        content = {std::max(content.width, size.width), position};
      } else {
        content = {position, std::max(content.height, size.height)};
      }
      addSubview(cell);
      cells_.emplace_back(indexPath, std::move(cell));
    }
  }
  contentSize = content;
}

ReusableCell* CellListView::cellForItem(IndexPath indexPath) const {
  for (const auto& [shown, cell] : cells_) {
    if (shown == indexPath) return cell.get();
  }
  return nullptr;
}

bool CellListView::selectItem(IndexPath indexPath) {
  if (isHidden || cellForItem(indexPath) == nullptr) return false;
  didSelect(indexPath);
  return true;
}

void CellListView::layoutSubviews() {
  if (!loaded_) reloadData();
}

}  // namespace nutrition
