// One day of the member's menu, with its intakes and their dishes, as getTodayMenu hands it
// over. Every field may be absent, as the backend may leave it out.

#import <Foundation/Foundation.h>

NS_ASSUME_NONNULL_BEGIN

NS_SWIFT_NAME(NutritionDish)
@interface NutritionDish : NSObject
@property(nonatomic, readonly, nullable) NSNumber* dishID;
@property(nonatomic, readonly, copy, nullable) NSString* name;
/// The course: starter, main course, dessert...
@property(nonatomic, readonly, nullable) NSNumber* dishOrderID;
@property(nonatomic, readonly, copy, nullable) NSString* typeName;
/// Grams.
@property(nonatomic, readonly, nullable) NSNumber* carbs;
@property(nonatomic, readonly, nullable) NSNumber* proteins;
@property(nonatomic, readonly, nullable) NSNumber* fats;
/// Kilocalories.
@property(nonatomic, readonly, nullable) NSNumber* kcal;
@property(nonatomic, readonly, copy, nullable) NSArray<NSNumber*>* preferences;
@property(nonatomic, readonly, nullable) NSNumber* difficulty;
@property(nonatomic, readonly, copy, nullable) NSString* ingredients;
@property(nonatomic, readonly, copy, nullable) NSString* recipe;
@property(nonatomic, readonly, copy, nullable) NSArray<NSString*>* binaryUrls;
- (instancetype)init NS_UNAVAILABLE;
+ (instancetype)new NS_UNAVAILABLE;
@end

NS_SWIFT_NAME(NutritionIntake)
@interface NutritionIntake : NSObject
@property(nonatomic, readonly, nullable) NSNumber* intakeId;
@property(nonatomic, readonly, copy, nullable) NSString* name;
@property(nonatomic, readonly, nullable) NSNumber* day;
@property(nonatomic, readonly, copy, nullable) NSArray<NutritionDish*>* dishes;
/// The kilocalories of the intake's dishes; a dish without them counts 0.
- (NSInteger)getTotalKcal NS_SWIFT_NAME(getTotalKcal());
- (instancetype)init NS_UNAVAILABLE;
+ (instancetype)new NS_UNAVAILABLE;
@end

NS_SWIFT_NAME(NutritionDay)
@interface NutritionDay : NSObject
/// 1 = Monday to 7 = Sunday.
@property(nonatomic, readonly, nullable) NSNumber* day;
@property(nonatomic, readonly, copy, nullable) NSArray<NutritionIntake*>* intakes;
@property(nonatomic, readonly, nullable) NSNumber* kcalDay;
- (instancetype)init NS_UNAVAILABLE;
+ (instancetype)new NS_UNAVAILABLE;
@end

NS_ASSUME_NONNULL_END
