#pragma once
// Renderers walk a view tree through this visitor: one call per view, with the most specific
// kind the toolkit knows. A kind a renderer does not handle falls back to its base kind
// (a Button to a Control to a View), so themed controls need no renderer changes.

namespace nutrition {

class View;
class Control;
class Label;
class Button;
class ImageView;
class StackView;
class ScrollView;
class TextField;
class DatePicker;
class PickerView;
class Toolbar;
class ProgressView;
class PageControl;
class ActivityIndicator;
class ReusableCell;
class CollectionView;
class TableView;

class ViewVisitor {
 public:
  virtual void visit(const View& view) = 0;
  virtual void visit(const Control& view);
  virtual void visit(const Label& view);
  virtual void visit(const Button& view);
  virtual void visit(const ImageView& view);
  virtual void visit(const StackView& view);
  virtual void visit(const ScrollView& view);
  virtual void visit(const TextField& view);
  virtual void visit(const DatePicker& view);
  virtual void visit(const PickerView& view);
  virtual void visit(const Toolbar& view);
  virtual void visit(const ProgressView& view);
  virtual void visit(const PageControl& view);
  virtual void visit(const ActivityIndicator& view);
  virtual void visit(const ReusableCell& view);
  virtual void visit(const CollectionView& view);
  virtual void visit(const TableView& view);

 protected:
  ~ViewVisitor() = default;
};

}  // namespace nutrition
