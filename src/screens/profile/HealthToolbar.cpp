#include "screens/profile/HealthToolbar.h"

#include "views/SystemColors.h"

namespace nutrition {

HealthToolbar::HealthToolbar(const UIContext& ui) {
  setFrame({{}, {390, 44}});  // sized to fit a phone's width
  isUserInteractionEnabled = true;
  BarButtonItem done;
  done.title = ui.localized("Hecho");
  done.tintColor = systemColors::label;
  done.action = [this] {
    if (selectAction) selectAction();
  };
  BarButtonItem cancel;
  cancel.title = ui.localized("Cancelar");
  cancel.tintColor = systemColors::label;
  cancel.action = [this] {
    if (cancelAction) cancelAction();
  };
  items = {done, BarButtonItem::flexibleSpace(), cancel};
}

}  // namespace nutrition
