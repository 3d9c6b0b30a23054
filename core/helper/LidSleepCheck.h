#pragma once

#include <functional>
#include <memory>
#include <string>

#include "helper/Clamshell.h"

namespace wakeloft {

// While the sleep setting is 1 a closed lid does not make the Mac sleep, and
// putting the setting back to 0 does not make it sleep either: a Mac shut in
// a bag would stay awake. So when the last lease has ended and the setting is
// back at 0, a closed lid that would normally cause sleep gets the system
// asked to sleep, as closing it would have done.
//
// Main-thread confined, like the lease keeper it follows.
class LidSleepCheck {
 public:
  LidSleepCheck(std::shared_ptr<Clamshell> clamshell, std::function<void(const std::string&)> log);

  // Called after every request and tick with whether this helper holds the
  // setting at 1 (the keeper's `isSleepDisabled`). The lid is looked at only
  // on the step from held to released, after 0 has been written.
  void settingSettled(bool sleepDisabled);

 private:
  void lastLeaseEnded();

  std::shared_ptr<Clamshell> clamshell_;
  std::function<void(const std::string&)> log_;
  bool held_ = false;
};

}  // namespace wakeloft
