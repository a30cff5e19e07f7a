#pragma once
// What the backend clients read from the layers above them, as narrow interfaces: the session
// and the data holder depend on the REST client, and the REST client's requests name the
// session's member and the menu screens' selection. The composition root (facade/Core)
// implements these by forwarding to the services it owns.

#include <cstdint>
#include <functional>
#include <optional>

#include "model/NutritionUser.h"

namespace nutrition {

// The member in use (the session's current user).
class CurrentUserSource {
 public:
  virtual ~CurrentUserSource() = default;
  // Null without one.
  [[nodiscard]] virtual const NutritionUser* currentMember() const = 0;
};

// The day and intake the menu screens have selected (the data holder's selection).
class MenuSelection {
 public:
  virtual ~MenuSelection() = default;
  [[nodiscard]] virtual std::optional<std::int64_t> selectedMenuDay() const = 0;
  [[nodiscard]] virtual std::optional<std::int64_t> selectedMenuIntake() const = 0;
};

// What follows a member update the backend took: the menu made from the old profile is
// dropped and the member read again as the backend now has it.
class MemberRefresh {
 public:
  virtual ~MemberRefresh() = default;
  virtual void dropHeldMenu() = 0;
  virtual void rereadMember(std::function<void(std::optional<NutritionUser>)> completion) = 0;
};

}  // namespace nutrition
