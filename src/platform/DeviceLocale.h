#pragma once
// What the device says about its user's language.

#include <string>

namespace nutrition {

class DeviceLocale {
 public:
  virtual ~DeviceLocale() = default;
  // The ISO 639 language code of the current locale in lower case ("fr"), or the empty string
  // when the locale names no language.
  [[nodiscard]] virtual std::string languageCode() const = 0;
};

class FixedDeviceLocale final : public DeviceLocale {
 public:
  explicit FixedDeviceLocale(std::string code) : code_(std::move(code)) {}
  [[nodiscard]] std::string languageCode() const override { return code_; }

 private:
  std::string code_;
};

}  // namespace nutrition
