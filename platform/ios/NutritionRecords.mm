// The public value types: the enumeration constants and the records handed to the host app,
// each built once from the core's record and immutable afterwards.

#include "Marshal+Private.h"

NutritionGender const NutritionGenderMale = @"Male";
NutritionGender const NutritionGenderFemale = @"Female";

NutritionLanguage const NutritionLanguageSpanish = @"es_ES";
NutritionLanguage const NutritionLanguageEnglish = @"en_EN";
NutritionLanguage const NutritionLanguagePortuguese = @"pt_PT";
NutritionLanguage const NutritionLanguageGerman = @"de_DE";
NutritionLanguage const NutritionLanguageCatalan = @"ca_ES";
NutritionLanguage const NutritionLanguageItalian = @"it_IT";
NutritionLanguage const NutritionLanguageFrench = @"fr_FR";

NSArray<NutritionLanguage>* NutritionLanguageAllCases(void) {
  NSMutableArray<NutritionLanguage>* all = [NSMutableArray array];
  for (nutrition::NutritionLanguage language : nutrition::allNutritionLanguages()) {
    [all addObject:nutrition::ios::toNSString(nutrition::rawValue(language))];
  }
  return all;
}

using nutrition::ios::toNSArray;
using nutrition::ios::toNSNumber;
using nutrition::ios::toNSString;
using nutrition::ios::toNullableNSString;

@implementation PublicProfile

- (instancetype)initWithName:(NSString*)name
                    lastName:(NSString*)lastName
                      height:(NSNumber*)height
                      weight:(NSNumber*)weight
                      gender:(NutritionGender)gender
                   birthDate:(NSDate*)birthDate {
  if ((self = [super init])) {
    _name = [name copy];
    _lastName = [lastName copy];
    _height = height;
    _weight = weight;
    _gender = [gender copy];
    _birthDate = birthDate;
  }
  return self;
}

+ (instancetype)profileWithRecord:(const nutrition::PublicProfile&)record {
  return [[PublicProfile alloc] initWithName:toNullableNSString(record.name)
                                    lastName:toNullableNSString(record.lastName)
                                      height:toNSNumber(record.height)
                                      weight:toNSNumber(record.weight)
                                      gender:nutrition::ios::toRawNSString(record.gender)
                                   birthDate:nutrition::ios::toNSDate(record.birthDate)];
}

@end

@implementation NutritionDish

- (instancetype)initWithRecord:(const nutrition::NutritionDish&)record {
  if ((self = [super init])) {
    _dishID = toNSNumber(record.dishID);
    _name = toNullableNSString(record.name);
    _dishOrderID = toNSNumber(record.dishOrderID);
    _typeName = toNullableNSString(record.typeName);
    _carbs = toNSNumber(record.carbs);
    _proteins = toNSNumber(record.proteins);
    _fats = toNSNumber(record.fats);
    _kcal = toNSNumber(record.kcal);
    _preferences = toNSArray(record.preferences, [](std::int64_t value) { return @(value); });
    _difficulty = toNSNumber(record.difficulty);
    _ingredients = toNullableNSString(record.ingredients);
    _recipe = toNullableNSString(record.recipe);
    _binaryUrls =
        toNSArray(record.binaryUrls, [](const std::string& url) { return toNSString(url); });
  }
  return self;
}

@end

@implementation NutritionIntake {
  nutrition::NutritionIntake _record;  // the total is summed when asked, as the core does
}

- (instancetype)initWithRecord:(const nutrition::NutritionIntake&)record {
  if ((self = [super init])) {
    _intakeId = toNSNumber(record.intakeId);
    _name = toNullableNSString(record.name);
    _day = toNSNumber(record.day);
    _dishes = toNSArray(record.dishes, [](const nutrition::NutritionDish& dish) {
      return [[NutritionDish alloc] initWithRecord:dish];
    });
    _record = record;
  }
  return self;
}

- (NSInteger)getTotalKcal {
  return static_cast<NSInteger>(_record.getTotalKcal());
}

@end

@implementation NutritionDay

- (instancetype)initWithRecord:(const nutrition::NutritionDay&)record {
  if ((self = [super init])) {
    _day = toNSNumber(record.day);
    _intakes = toNSArray(record.intakes, [](const nutrition::NutritionIntake& intake) {
      return [[NutritionIntake alloc] initWithRecord:intake];
    });
    _kcalDay = toNSNumber(record.kcalDay);
  }
  return self;
}

@end
