#pragma once
// Conversions between the core's C++ values and the Objective-C values of the public headers:
// strings, optional numbers and dates, the member enumerations and the menu records. The one
// place where the two worlds meet; everything else calls these.

#import <Foundation/Foundation.h>

#if !__has_feature(objc_arc)
#error "the iOS shell is built with automatic reference counting (-fobjc-arc)"
#endif

#include <chrono>
#include <cmath>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "base/Date.h"
#include "base/RawEnum.h"
#include "model/NutritionDay.h"
#include "model/NutritionEnums.h"
#include "model/PublicProfile.h"

#import <NutritionKit/NutritionDay.h>
#import <NutritionKit/NutritionTypes.h>
#import <NutritionKit/PublicProfile.h>

NS_ASSUME_NONNULL_BEGIN

namespace nutrition::ios {

inline NSString* toNSString(std::string_view text) {
  NSString* string = [[NSString alloc] initWithBytes:text.data()
                                              length:text.size()
                                            encoding:NSUTF8StringEncoding];
  return string != nil ? string : @"";  // bytes that are not UTF-8 read as empty
}

inline std::string toString(NSString* _Nullable text) {
  const char* bytes = text.UTF8String;
  return bytes != nullptr ? std::string(bytes) : std::string();
}

inline NSString* _Nullable toNullableNSString(const std::optional<std::string>& text) {
  return text ? toNSString(*text) : nil;
}

inline NSNumber* _Nullable toNSNumber(std::optional<std::int64_t> value) {
  return value ? @(*value) : nil;
}

inline std::optional<std::int64_t> toOptionalInt(NSNumber* _Nullable number) {
  if (number == nil) return std::nullopt;
  return number.longLongValue;
}

// NSDate keeps fractions of a second; the core's dates are whole seconds, rounded down.
inline NSDate* _Nullable toNSDate(const std::optional<Date>& date) {
  if (!date) return nil;
  return
      [NSDate dateWithTimeIntervalSince1970:static_cast<double>(date->time_since_epoch().count())];
}

inline std::optional<Date> toDate(NSDate* _Nullable date) {
  if (date == nil) return std::nullopt;
  const double seconds = std::floor(date.timeIntervalSince1970);
  // Beyond what a date of years 0001 to 9999 can hold: no date.
  if (!(seconds > -62135596800.0 && seconds < 253402300800.0)) return std::nullopt;
  return Date{std::chrono::seconds{static_cast<std::int64_t>(seconds)}};
}

// The string-valued enumerations: a value outside the table (Swift can build one from any raw
// string) converts to no case.
template <RawEnum E>
inline std::optional<E> fromNSString(NSString* _Nullable raw) {
  if (raw == nil) return std::nullopt;
  return fromRawValue<E>(std::string_view(toString(raw)));
}

template <RawEnum E>
inline NSString* _Nullable toRawNSString(const std::optional<E>& value) {
  return value ? toNSString(rawValue(*value)) : nil;
}

// The integer-valued enumerations, likewise.
template <RawEnum E>
inline std::optional<E> fromNSInteger(NSInteger raw) {
  return fromRawValue<E>(static_cast<std::int64_t>(raw));
}

template <class T, class Convert>
inline NSArray* _Nullable toNSArray(const std::optional<std::vector<T>>& values, Convert convert) {
  if (!values) return nil;
  NSMutableArray* array = [NSMutableArray arrayWithCapacity:values->size()];
  for (const T& value : *values)
    [array addObject:convert(value)];
  return array;
}

}  // namespace nutrition::ios

// Builders of the public records from the core's, for the facade.
@interface PublicProfile (Core)
+ (instancetype)profileWithRecord:(const nutrition::PublicProfile&)record;
@end

@interface NutritionDish (Core)
- (instancetype)initWithRecord:(const nutrition::NutritionDish&)record;
@end

@interface NutritionIntake (Core)
- (instancetype)initWithRecord:(const nutrition::NutritionIntake&)record;
@end

@interface NutritionDay (Core)
- (instancetype)initWithRecord:(const nutrition::NutritionDay&)record;
@end

NS_ASSUME_NONNULL_END
