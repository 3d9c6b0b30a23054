#pragma once

namespace wakeloft {

// Where "Keep the screen on" lives across launches; off by default, so the
// display may sleep. Main thread only.
class ScreenOnStore {
 public:
  virtual ~ScreenOnStore() = default;
  virtual bool keepsScreenOn() = 0;
  virtual void setKeepsScreenOn(bool on) = 0;
};

}  // namespace wakeloft
