#include "views/ViewVisitor.h"

#include "views/Button.h"
#include "views/CollectionView.h"
#include "views/Controls.h"
#include "views/ImageView.h"
#include "views/Label.h"
#include "views/Pickers.h"
#include "views/StackView.h"
#include "views/TextField.h"

namespace nutrition {

void ViewVisitor::visit(const Control& view) {
  visit(static_cast<const View&>(view));
}
void ViewVisitor::visit(const Label& view) {
  visit(static_cast<const View&>(view));
}
void ViewVisitor::visit(const Button& view) {
  visit(static_cast<const Control&>(view));
}
void ViewVisitor::visit(const ImageView& view) {
  visit(static_cast<const View&>(view));
}
void ViewVisitor::visit(const StackView& view) {
  visit(static_cast<const View&>(view));
}
void ViewVisitor::visit(const ScrollView& view) {
  visit(static_cast<const View&>(view));
}
void ViewVisitor::visit(const TextField& view) {
  visit(static_cast<const Control&>(view));
}
void ViewVisitor::visit(const DatePicker& view) {
  visit(static_cast<const Control&>(view));
}
void ViewVisitor::visit(const PickerView& view) {
  visit(static_cast<const View&>(view));
}
void ViewVisitor::visit(const Toolbar& view) {
  visit(static_cast<const View&>(view));
}
void ViewVisitor::visit(const ProgressView& view) {
  visit(static_cast<const View&>(view));
}
void ViewVisitor::visit(const PageControl& view) {
  visit(static_cast<const View&>(view));
}
void ViewVisitor::visit(const ActivityIndicator& view) {
  visit(static_cast<const View&>(view));
}
void ViewVisitor::visit(const ReusableCell& view) {
  visit(static_cast<const View&>(view));
}
void ViewVisitor::visit(const CollectionView& view) {
  visit(static_cast<const ScrollView&>(view));
}
void ViewVisitor::visit(const TableView& view) {
  visit(static_cast<const ScrollView&>(view));
}

}  // namespace nutrition
