#pragma once
// The seed data files as compiled into the program (generated from sandbox/data at build time).

#include <string_view>

namespace nutrition::sandbox {

std::string_view seedAccountsJson();
std::string_view seedCataloguesJson();
std::string_view seedDishesJson();

}  // namespace nutrition::sandbox
