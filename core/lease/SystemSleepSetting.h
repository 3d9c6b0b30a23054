#pragma once

namespace wakeloft {

// The system-wide sleep-disable setting ("disablesleep"): 1 keeps the Mac
// awake, also with the lid closed. Only the lid helper's keeper touches it.
//
// Both operations report failure by throwing an exception derived from
// std::exception whose what() is the system's own description; an
// implementation gives up and throws after LidSleepLease::writeTimeout (a
// write) or LidSleepLease::readTimeout (a read).
class SystemSleepSetting {
 public:
  virtual ~SystemSleepSetting() = default;
  // true writes 1, false writes 0.
  virtual void writeDisabled(bool disabled) = 0;
  // true when the setting is 1.
  virtual bool readDisabled() = 0;
};

}  // namespace wakeloft
