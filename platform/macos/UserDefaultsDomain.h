#pragma once

#include <string>

#include "CFOwned.h"
#include "base/DefaultsDomain.h"

namespace wakeloft {

// The app's own preferences, the domain the standard user defaults read and
// write: Core Foundation preferences of the current application, or of the
// application with the given identifier (the command reads the app's).
class UserDefaultsDomain final : public DefaultsDomain {
 public:
  UserDefaultsDomain() = default;
  explicit UserDefaultsDomain(const std::string& application) : application_(makeCFString(application)) {}

  std::optional<DefaultsValue> object(const std::string& key) const override;
  // Throws std::invalid_argument, writing nothing, for a key or text that is
  // not UTF-8: the domain could not store it.
  void set(const std::string& key, DefaultsValue value) override;
  void remove(const std::string& key) override;
  bool boolean(const std::string& key) const override;
  bool isForced(const std::string& key) const override;

 private:
  CFStringRef application() const { return application_ ? application_.get() : kCFPreferencesCurrentApplication; }

  CFOwned<CFStringRef> application_;
};

}  // namespace wakeloft
