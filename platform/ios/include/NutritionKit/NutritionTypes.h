// The small enumerations of the member record, as Swift sees them: NutritionGender and
// NutritionLanguage are string-valued (their raw values are what the backend receives),
// NutritionUserCountry and DietType integer-valued.

#import <Foundation/Foundation.h>

NS_ASSUME_NONNULL_BEGIN

/// The member's sex: "Male" or "Female".
typedef NSString* NutritionGender NS_TYPED_ENUM NS_SWIFT_NAME(NutritionGender);
FOUNDATION_EXPORT NutritionGender const NutritionGenderMale NS_SWIFT_NAME(male);
FOUNDATION_EXPORT NutritionGender const NutritionGenderFemale NS_SWIFT_NAME(female);

/// The module's languages, sent to the backend as they stand ("en_EN" included).
typedef NSString* NutritionLanguage NS_TYPED_ENUM NS_SWIFT_NAME(NutritionLanguage);
FOUNDATION_EXPORT NutritionLanguage const NutritionLanguageSpanish NS_SWIFT_NAME(es);
FOUNDATION_EXPORT NutritionLanguage const NutritionLanguageEnglish NS_SWIFT_NAME(en);
FOUNDATION_EXPORT NutritionLanguage const NutritionLanguagePortuguese NS_SWIFT_NAME(pt);
FOUNDATION_EXPORT NutritionLanguage const NutritionLanguageGerman NS_SWIFT_NAME(de);
FOUNDATION_EXPORT NutritionLanguage const NutritionLanguageCatalan NS_SWIFT_NAME(ca);
FOUNDATION_EXPORT NutritionLanguage const NutritionLanguageItalian NS_SWIFT_NAME(it);
FOUNDATION_EXPORT NutritionLanguage const NutritionLanguageFrench NS_SWIFT_NAME(fr);

/// Every language, in the module's order (es, en, pt, de, ca, it, fr).
FOUNDATION_EXPORT NSArray<NutritionLanguage>* NutritionLanguageAllCases(void)
    NS_SWIFT_NAME(getter:NutritionLanguage.allCases());

/// The member's country; the raw values are the backend's country identifiers.
typedef NS_ENUM(NSInteger, NutritionUserCountry) {
  NutritionUserCountrySpain NS_SWIFT_NAME(spain) = 1,
      NutritionUserCountryPortugal NS_SWIFT_NAME(portugal) = 2,
          NutritionUserCountryColombia NS_SWIFT_NAME(colombia) = 3,
              NutritionUserCountryUK NS_SWIFT_NAME(uk) = 4,
                  NutritionUserCountryFrance NS_SWIFT_NAME(france) = 5,
                      NutritionUserCountryUSA NS_SWIFT_NAME(usa) = 9,
                          NutritionUserCountryGermany NS_SWIFT_NAME(germany) = 10,
                              NutritionUserCountryItaly NS_SWIFT_NAME(italy) = 11,
                                  NutritionUserCountryCataluna NS_SWIFT_NAME(cataluna) = 12,
                                      NutritionUserCountrySpainEUS NS_SWIFT_NAME(spainEUS) = 13,
                                          NutritionUserCountryUSA2 NS_SWIFT_NAME(usa2) = 14,
                                      } NS_SWIFT_NAME(NutritionUserCountry);

/// The kind of menu the backend builds.
typedef NS_ENUM(NSInteger, DietType) {
  DietTypeStandard NS_SWIFT_NAME(standard) = 1, DietTypeDiabetes NS_SWIFT_NAME(diabetes) = 8,
  } NS_SWIFT_NAME(DietType);

NS_ASSUME_NONNULL_END
