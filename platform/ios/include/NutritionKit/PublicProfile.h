// The member's short profile, as the module reports it to the host app.

#import <Foundation/Foundation.h>

#import <NutritionKit/NutritionTypes.h>

NS_ASSUME_NONNULL_BEGIN

NS_SWIFT_NAME(PublicProfile)
@interface PublicProfile : NSObject

@property(nonatomic, readonly, copy, nullable) NSString* name;
@property(nonatomic, readonly, copy, nullable) NSString* lastName;
/// Centimetres.
@property(nonatomic, readonly, nullable) NSNumber* height;
/// Kilograms.
@property(nonatomic, readonly, nullable) NSNumber* weight;
@property(nonatomic, readonly, nullable) NutritionGender gender;
@property(nonatomic, readonly, nullable) NSDate* birthDate;

- (instancetype)initWithName:(nullable NSString*)name
                    lastName:(nullable NSString*)lastName
                      height:(nullable NSNumber*)height
                      weight:(nullable NSNumber*)weight
                      gender:(nullable NutritionGender)gender
                   birthDate:(nullable NSDate*)birthDate NS_DESIGNATED_INITIALIZER
    NS_SWIFT_NAME(init(name:lastName:height:weight:gender:birthDate:));
- (instancetype)init NS_UNAVAILABLE;
+ (instancetype)new NS_UNAVAILABLE;

@end

NS_ASSUME_NONNULL_END
