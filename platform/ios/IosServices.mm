// The system services of the iOS platform bundle besides HTTP (IosHttpClient.mm).

#include "IosPlatform.h"

#import <CoreGraphics/CoreGraphics.h>
#import <CoreText/CoreText.h>
#import <Foundation/Foundation.h>
#import <UserNotifications/UserNotifications.h>
#import <dispatch/dispatch.h>

#include "IosHttpClient.h"
#include "Marshal+Private.h"

// The framework's own bundle: the class is defined here so that `bundleForClass:` finds it.
@interface NKBundleAnchor : NSObject
@end
@implementation NKBundleAnchor
@end

namespace nutrition::ios {
namespace {

// NSUserDefaults holds numbers, strings and string lists for the module; anything else another
// party wrote under the same key reads as no value.
class DefaultsStore final : public KeyValueStore {
 public:
  explicit DefaultsStore(NSUserDefaults* defaults) : defaults_(defaults) {}

  [[nodiscard]] std::optional<StoredValue> value(std::string_view key) const override {
    @autoreleasepool {
      id stored = [defaults_ objectForKey:toNSString(key)];
      if ([stored isKindOfClass:[NSNumber class]]) {
        return StoredValue{static_cast<NSNumber*>(stored).doubleValue};
      }
      if ([stored isKindOfClass:[NSString class]]) return StoredValue{toString(stored)};
      if ([stored isKindOfClass:[NSArray class]]) {
        std::vector<std::string> list;
        for (id element in static_cast<NSArray*>(stored)) {
          if (![element isKindOfClass:[NSString class]]) return std::nullopt;
          list.push_back(toString(element));
        }
        return StoredValue{std::move(list)};
      }
      return std::nullopt;
    }
  }

  void set(std::string_view key, StoredValue value) override {
    @autoreleasepool {
      id object = nil;
      if (const auto* number = std::get_if<double>(&value)) {
        object = @(*number);
      } else if (const auto* text = std::get_if<std::string>(&value)) {
        object = toNSString(*text);
        if (object == nil) return;  // not UTF-8: NSUserDefaults cannot hold it
      } else {
        NSMutableArray<NSString*>* list = [NSMutableArray array];
        for (const auto& element : std::get<std::vector<std::string>>(value)) {
          NSString* text = toNSString(element);  // nil for bytes that are not UTF-8
          [list addObject:text != nil ? text : @""];
        }
        object = list;
      }
      [defaults_ setObject:object forKey:toNSString(key)];
    }
  }

  void remove(std::string_view key) override {
    @autoreleasepool {
      [defaults_ removeObjectForKey:toNSString(key)];
    }
  }

 private:
  NSUserDefaults* defaults_;
};

class DefaultsStores final : public KeyValueStores {
 public:
  std::shared_ptr<KeyValueStore> standard() override {
    return std::make_shared<DefaultsStore>([NSUserDefaults standardUserDefaults]);
  }
  std::shared_ptr<KeyValueStore> suite(std::string_view name) override {
    NSUserDefaults* defaults = [[NSUserDefaults alloc] initWithSuiteName:toNSString(name)];
    return std::make_shared<DefaultsStore>(defaults != nil ? defaults
                                                           : [NSUserDefaults standardUserDefaults]);
  }
};

// Keeps the module's own list of pending requests and mirrors every change into the user
// notification centre: a calendar trigger at the request's local date and time, the default
// sound, no title.
class UserNotificationScheduler final : public InMemoryNotificationScheduler {
 public:
  void removePending(std::string_view identifier) override {
    InMemoryNotificationScheduler::removePending(identifier);
    [[UNUserNotificationCenter currentNotificationCenter]
        removePendingNotificationRequestsWithIdentifiers:@[ toNSString(identifier) ]];
  }

  void add(NotificationRequest request) override {
    @autoreleasepool {
      UNMutableNotificationContent* content = [[UNMutableNotificationContent alloc] init];
      content.body = toNSString(request.body);
      content.sound = [UNNotificationSound defaultSound];
      NSDateComponents* when = [[NSDateComponents alloc] init];
      when.year = request.trigger.year;
      when.month = request.trigger.month;
      when.day = request.trigger.day;
      when.hour = request.trigger.hour;
      when.minute = request.trigger.minute;
      when.second = request.trigger.second;
      UNCalendarNotificationTrigger* trigger =
          [UNCalendarNotificationTrigger triggerWithDateMatchingComponents:when repeats:NO];
      UNNotificationRequest* system =
          [UNNotificationRequest requestWithIdentifier:toNSString(request.identifier)
                                               content:content
                                               trigger:trigger];
      [[UNUserNotificationCenter currentNotificationCenter] addNotificationRequest:system
                                                             withCompletionHandler:nil];
    }
    InMemoryNotificationScheduler::add(std::move(request));
  }
};

class DeviceCalendar final : public Calendar {
 public:
  [[nodiscard]] std::string timeZoneIdentifier() const override {
    return toString([NSTimeZone localTimeZone].name);
  }
  [[nodiscard]] std::chrono::seconds utcOffset(Date instant) const override {
    NSDate* date = [NSDate
        dateWithTimeIntervalSince1970:static_cast<double>(instant.time_since_epoch().count())];
    return std::chrono::seconds([[NSTimeZone localTimeZone] secondsFromGMTForDate:date]);
  }
};

class DispatchMainQueue final : public MainQueue {
 public:
  void post(Task task) override {
    auto shared = std::make_shared<Task>(std::move(task));
    dispatch_async(dispatch_get_main_queue(), ^{
      (*shared)();
    });
  }
  void postDelayed(std::chrono::milliseconds delay, Task task) override {
    auto shared = std::make_shared<Task>(std::move(task));
    const auto nanoseconds = std::chrono::duration_cast<std::chrono::nanoseconds>(delay).count();
    dispatch_after(dispatch_time(DISPATCH_TIME_NOW, nanoseconds), dispatch_get_main_queue(), ^{
      (*shared)();
    });
  }
};

// Resources inside the framework: "strings/NutritionStrings.en" with "json" is the file
// strings/NutritionStrings.en.json of the bundle.
class FrameworkBundle final : public ResourceBundle {
 public:
  [[nodiscard]] std::optional<std::string> resource(std::string_view name,
                                                    std::string_view extension) const override {
    @autoreleasepool {
      NSBundle* bundle = resourceBundle();
      NSString* path = toNSString(name);
      NSString* directory = path.stringByDeletingLastPathComponent;
      NSString* file = [bundle pathForResource:path.lastPathComponent
                                        ofType:toNSString(extension)
                                   inDirectory:directory.length > 0 ? directory : nil];
      if (file == nil) return std::nullopt;
      NSData* data = [NSData dataWithContentsOfFile:file];
      if (data == nil) return std::nullopt;
      return std::string(static_cast<const char*>(data.bytes), data.length);
    }
  }
};

class PreferredLanguage final : public DeviceLocale {
 public:
  [[nodiscard]] std::string languageCode() const override {
    NSString* preferred = [NSLocale preferredLanguages].firstObject;
    if (preferred == nil) return {};
    NSString* code = [preferred componentsSeparatedByString:@"-"].firstObject;
    return toString(code.lowercaseString);
  }
};

class CoreTextFonts final : public FontRegistry {
 public:
  Outcome registerFont(std::string_view bytes) override {
    NSData* data = [NSData dataWithBytes:bytes.data() length:bytes.size()];
    CGDataProviderRef provider = CGDataProviderCreateWithCFData((__bridge CFDataRef)data);
    if (provider == nullptr) return Outcome::noDataProvider;
    CGFontRef font = CGFontCreateWithDataProvider(provider);
    CGDataProviderRelease(provider);
    if (font == nullptr) return Outcome::notAFont;
    CFErrorRef error = nullptr;
    const bool registered = CTFontManagerRegisterGraphicsFont(font, &error);
    CGFontRelease(font);
    if (error != nullptr) CFRelease(error);
    return registered ? Outcome::registered : Outcome::refused;
  }
};

std::string documentsDirectory() {
  NSArray<NSString*>* paths =
      NSSearchPathForDirectoriesInDomains(NSDocumentDirectory, NSUserDomainMask, YES);
  return paths.firstObject != nil ? toString(paths.firstObject) : std::string();
}

}  // namespace

// The bundle that holds the module's resources: the framework itself, or the resource bundle a
// Swift package build puts beside the code ("NutritionKit_NutritionKit.bundle"), looked for in
// the framework and in the app.
NSBundle* resourceBundle() {
  static NSBundle* found = [] {
    NSBundle* code = [NSBundle bundleForClass:[NKBundleAnchor class]];
    for (NSBundle* place in @[ code, [NSBundle mainBundle] ]) {
      NSURL* url = [place URLForResource:@"NutritionKit_NutritionKit" withExtension:@"bundle"];
      NSBundle* bundle = url != nil ? [NSBundle bundleWithURL:url] : nil;
      if (bundle != nil) return bundle;
    }
    return code;
  }();
  return found;
}

std::shared_ptr<Platform> makeIosPlatform() {
  auto platform = Platform::portableDefaults();
  platform->calendar = std::make_shared<DeviceCalendar>();
  platform->keyValueStores = std::make_shared<DefaultsStores>();
  platform->locale = std::make_shared<PreferredLanguage>();
  platform->http = makeSessionHttpClient();
  platform->mainQueue = std::make_shared<DispatchMainQueue>();
  platform->resources = std::make_shared<FrameworkBundle>();
  platform->notifications = std::make_shared<UserNotificationScheduler>();
  platform->fonts = std::make_shared<CoreTextFonts>();
  platform->documentsDirectory = documentsDirectory();
  return platform;
}

}  // namespace nutrition::ios
