#include "sandbox/SeedData.h"

#include <algorithm>
#include <cstdio>
#include <cstdlib>

#include "json/JsonReader.h"
#include "sandbox/SeedFiles.h"

namespace nutrition::sandbox {
namespace {

template <class T>
T decodeSeed(std::string_view name, std::string_view json) {
  auto decoded = json::decodeDocument<T>(json);
  if (!decoded.ok()) {
    std::fprintf(stderr, "sandbox seed %.*s does not decode: %s\n", int(name.size()), name.data(),
                 decoded.error().message.c_str());
    std::abort();
  }
  return std::move(decoded).value();
}

}  // namespace

const std::string& LocalizedText::in(NutritionLanguage language) const {
  static const std::string kEmpty;
  const std::optional<std::string>* texts[] = {&es, &en, &pt, &de, &ca, &it, &fr};
  const auto& text = *texts[languageIndex(language)];
  if (text) return *text;
  return es ? *es : kEmpty;
}

const SeedData& SeedData::embedded() {
  static const SeedData data = [] {
    SeedData seed;
    seed.accounts = decodeSeed<std::vector<SeedAccount>>("accounts.json", seedAccountsJson());
    seed.catalogues = decodeSeed<SeedCatalogues>("catalogues.json", seedCataloguesJson());
    seed.dishes = decodeSeed<std::vector<SeedDish>>("dishes.json", seedDishesJson());
    return seed;
  }();
  return data;
}

const SeedDish* SeedData::dish(std::int64_t id) const {
  const auto found =
      std::find_if(dishes.begin(), dishes.end(), [&](const SeedDish& d) { return d.id == id; });
  return found == dishes.end() ? nullptr : &*found;
}

const SeedEntry* SeedData::entry(const std::vector<SeedEntry>& catalogue, std::int64_t id) const {
  const auto found = std::find_if(catalogue.begin(), catalogue.end(),
                                  [&](const SeedEntry& e) { return e.id == id; });
  return found == catalogue.end() ? nullptr : &*found;
}

NutritionLanguage requestLanguage(std::string_view code) {
  return fromRawValue<NutritionLanguage>(code).value_or(NutritionLanguage::es);
}

}  // namespace nutrition::sandbox
