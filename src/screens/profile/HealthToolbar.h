#pragma once
// The bar above the keyboard or wheel of a question's text field: "Hecho" runs `selectAction`,
// "Cancelar" runs `cancelAction`, with a flexible space between them.

#include <functional>

#include "ui/UIContext.h"
#include "views/Toolbar.h"

namespace nutrition {

class HealthToolbar : public Toolbar {
 public:
  explicit HealthToolbar(const UIContext& ui);

  [[nodiscard]] std::string_view kind() const override { return "HealthToolbar"; }

  std::function<void()> cancelAction;
  std::function<void()> selectAction;
};

}  // namespace nutrition
