#pragma once
// Stand-ins for what the backend clients, the data holder and the fasting clock read from the
// layers above them: a member the test sets, a menu selection, and a record of what a member
// update asked to follow.

#include <functional>
#include <optional>
#include <vector>

#include "backend/DataServiceNutrition.h"
#include "backend/RequestContext.h"

namespace nutrition::test {

struct FakeLinks final : CurrentUserSource, MenuSelection, MemberRefresh {
  std::optional<NutritionUser> member;
  std::optional<std::int64_t> day;
  std::optional<std::int64_t> intake;
  int droppedMenus = 0;
  std::vector<std::function<void(std::optional<NutritionUser>)>> rereads;

  const NutritionUser* currentMember() const override { return member ? &*member : nullptr; }
  std::optional<std::int64_t> selectedMenuDay() const override { return day; }
  std::optional<std::int64_t> selectedMenuIntake() const override { return intake; }
  void dropHeldMenu() override { ++droppedMenus; }
  void rereadMember(std::function<void(std::optional<NutritionUser>)> completion) override {
    rereads.push_back(std::move(completion));
  }

  DataServiceNutrition::Links links() { return {*this, *this, *this}; }

  // A member record with only its backend id.
  void setMember(const std::string& userId) {
    member = NutritionUser::empty();
    member->userID = userId;
  }
};

}  // namespace nutrition::test
