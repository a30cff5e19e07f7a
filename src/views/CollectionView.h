#pragma once
// Collection and table views: cells asked of a data source, reused by identifier, sized and
// selected through a delegate. Headless, every item is laid out (there is no viewport to
// clip to), so a renderer and a test see each cell the data source gives.
//
//   collection->registerCell("RecetaCell", [] { return makeView<RecetaCell>(); });
//   auto cell = collection->dequeueReusableCell("RecetaCell", indexPath);  // in the source

#include <functional>
#include <map>
#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "views/ScrollView.h"
#include "views/ViewVisitor.h"

namespace nutrition {

struct IndexPath {
  int section = 0;
  int item = 0;
  bool operator==(const IndexPath&) const = default;
  auto operator<=>(const IndexPath&) const = default;
  [[nodiscard]] int row() const { return item; }
};

class ReusableCell : public View {
 public:
  [[nodiscard]] std::string_view kind() const override { return "Cell"; }
  void accept(ViewVisitor& visitor) const override { visitor.visit(*this); }

  [[nodiscard]] const std::string& reuseIdentifier() const { return reuseIdentifier_; }
  // Called before a cell is handed out again; clear what the last item left.
  virtual void prepareForReuse() {}
  bool isSelected = false;

 private:
  friend class CellListView;
  std::string reuseIdentifier_;
};

using CollectionViewCell = ReusableCell;
using TableViewCell = ReusableCell;

// What collection and table views share: registration, reuse and the laid-out cells.
class CellListView : public ScrollView {
 public:
  using Factory = std::function<std::shared_ptr<ReusableCell>()>;

  void registerCell(const std::string& identifier, Factory factory);
  // A cell for `identifier`: one given back by the last reload, or a new one. Asking for an
  // identifier never registered is a programming error.
  std::shared_ptr<ReusableCell> dequeueReusableCell(const std::string& identifier,
                                                    IndexPath indexPath);
  // Hands every shown cell back for reuse and asks the data source again.
  void reloadData();
  // The shown cells in index order.
  [[nodiscard]] const std::vector<std::pair<IndexPath, std::shared_ptr<ReusableCell>>>& cells()
      const {
    return cells_;
  }
  [[nodiscard]] ReusableCell* cellForItem(IndexPath indexPath) const;
  // A member taps the item: the delegate hears it. False when there is no such item.
  bool selectItem(IndexPath indexPath);
  // Loads the data on first layout when nobody reloaded yet.
  void layoutSubviews() override;

 protected:
  virtual int sectionCount() = 0;
  virtual int itemCount(int section) = 0;
  virtual std::shared_ptr<ReusableCell> makeCell(IndexPath indexPath) = 0;
  virtual Size sizeOfItem(IndexPath indexPath) = 0;
  virtual void didSelect(IndexPath indexPath) = 0;
  [[nodiscard]] virtual bool laysOutVertically() const = 0;
  virtual double lineSpacing() const { return 0; }

 private:
  std::map<std::string, Factory> factories_;
  std::map<std::string, std::vector<std::shared_ptr<ReusableCell>>> pool_;
  std::vector<std::pair<IndexPath, std::shared_ptr<ReusableCell>>> cells_;
  bool loaded_ = false;
};

class CollectionView;

class CollectionViewDataSource {
 public:
  virtual int numberOfSections(CollectionView&) { return 1; }
  virtual int numberOfItems(CollectionView& view, int section) = 0;
  virtual std::shared_ptr<ReusableCell> cellForItem(CollectionView& view, IndexPath indexPath) = 0;

 protected:
  ~CollectionViewDataSource() = default;
};

class CollectionViewDelegate {
 public:
  virtual Size sizeForItem(CollectionView& view, IndexPath indexPath);
  virtual void didSelectItem(CollectionView&, IndexPath) {}

 protected:
  ~CollectionViewDelegate() = default;
};

class CollectionView : public CellListView {
 public:
  [[nodiscard]] std::string_view kind() const override { return "CollectionView"; }
  void accept(ViewVisitor& visitor) const override { visitor.visit(*this); }

  // Not owned: the screen owns the collection and is its source and delegate.
  CollectionViewDataSource* dataSource = nullptr;
  CollectionViewDelegate* delegate = nullptr;
  Axis scrollDirection = Axis::vertical;
  Size itemSize{50, 50};
  double minimumLineSpacing = 10;
  double minimumInteritemSpacing = 10;

 protected:
  int sectionCount() override { return dataSource ? dataSource->numberOfSections(*this) : 0; }
  int itemCount(int section) override {
    return dataSource ? dataSource->numberOfItems(*this, section) : 0;
  }
  std::shared_ptr<ReusableCell> makeCell(IndexPath indexPath) override {
    return dataSource->cellForItem(*this, indexPath);
  }
  Size sizeOfItem(IndexPath indexPath) override {
    return delegate ? delegate->sizeForItem(*this, indexPath) : itemSize;
  }
  void didSelect(IndexPath indexPath) override {
    if (delegate) delegate->didSelectItem(*this, indexPath);
  }
  [[nodiscard]] bool laysOutVertically() const override {
    return scrollDirection == Axis::vertical;
  }
  double lineSpacing() const override { return minimumLineSpacing; }
};

class TableView;

class TableViewDataSource {
 public:
  virtual int numberOfSections(TableView&) { return 1; }
  virtual int numberOfRows(TableView& view, int section) = 0;
  virtual std::shared_ptr<ReusableCell> cellForRow(TableView& view, IndexPath indexPath) = 0;
  virtual double heightForRow(TableView&, IndexPath) { return 44; }
  virtual void didSelectRow(TableView&, IndexPath) {}

 protected:
  ~TableViewDataSource() = default;
};

class TableView : public CellListView {
 public:
  [[nodiscard]] std::string_view kind() const override { return "TableView"; }
  void accept(ViewVisitor& visitor) const override { visitor.visit(*this); }

  // Not owned: the screen owns the table and is its source and delegate.
  TableViewDataSource* dataSource = nullptr;
  bool showsSeparators = true;

 protected:
  int sectionCount() override { return dataSource ? dataSource->numberOfSections(*this) : 0; }
  int itemCount(int section) override {
    return dataSource ? dataSource->numberOfRows(*this, section) : 0;
  }
  std::shared_ptr<ReusableCell> makeCell(IndexPath indexPath) override {
    return dataSource->cellForRow(*this, indexPath);
  }
  Size sizeOfItem(IndexPath indexPath) override {
    return {frame().width(), dataSource ? dataSource->heightForRow(*this, indexPath) : 44};
  }
  void didSelect(IndexPath indexPath) override {
    if (dataSource) dataSource->didSelectRow(*this, indexPath);
  }
  [[nodiscard]] bool laysOutVertically() const override { return true; }
};

}  // namespace nutrition
