#pragma once

#include <optional>

namespace wakeloft {

// The lid as the power system sees it. The system implementation lives in
// the helper executable; tests use a fake.
class Clamshell {
 public:
  virtual ~Clamshell() = default;

  // Absent when the state cannot be read.
  virtual std::optional<bool> lidIsClosed() = 0;
  // False while closing the lid does not make the Mac sleep (closed-display
  // mode with an external display, power and input attached). Asked only
  // once the sleep setting is back at 0, since the setting itself keeps a
  // closed lid from causing sleep. Absent when it cannot be read.
  virtual std::optional<bool> closingCausesSleep() = 0;
  // Asks the system to sleep now. Throws an error whose description says
  // why it could not.
  virtual void requestSleep() = 0;
};

}  // namespace wakeloft
