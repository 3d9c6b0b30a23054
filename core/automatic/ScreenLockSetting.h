#pragma once

namespace wakeloft {

// Whether every session ends when the screen locks or the user switches to
// another login session, as the Automatic popover shows and changes it. Off
// by default. Main thread only.
class ScreenLockSetting {
 public:
  virtual ~ScreenLockSetting() = default;
  virtual bool stopsWhenScreenLocks() const = 0;
  virtual void setStopsWhenScreenLocks(bool stops) = 0;
  // A configuration profile fixes it; changes are ignored.
  virtual bool isForced() const = 0;
};

}  // namespace wakeloft
