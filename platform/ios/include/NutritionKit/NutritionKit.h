// NutritionKit: a generated weekly menu with recipes and favourites, the health questionnaire,
// and an intermittent-fasting timer, driven through NutritionSDK.

#import <NutritionKit/NutritionDay.h>
#import <NutritionKit/NutritionSDK.h>
#import <NutritionKit/NutritionTypes.h>
#import <NutritionKit/PublicProfile.h>
