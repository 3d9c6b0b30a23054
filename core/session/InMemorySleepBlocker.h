#pragma once

#include <optional>
#include <utility>

#include "session/SleepBlocker.h"
#include "session/SleepBlockerError.h"

namespace wakeloft {

// A sleep blocker that holds nothing real, for previews, tests and machines
// without power assertions. It can be told to refuse the next engage.
class InMemorySleepBlocker final : public SleepBlocker {
 public:
  void engage() override {
    if (engaged_) return;
    ++engageCalls;
    if (const auto code = std::exchange(nextRefusal, std::nullopt)) throw SleepBlockerError::assertionFailed(*code);
    engaged_ = true;
  }
  void release() override {
    if (!engaged_) return;
    ++releaseCalls;
    engaged_ = false;
    dropped_ = false;
  }
  void restore() override {
    if (!std::exchange(dropped_, false) || !engaged_) return;
    engaged_ = false;
    engage();
  }
  bool isEngaged() const override { return engaged_; }

  // The system lets go of the assertion behind the blocker's back; it still
  // counts as engaged until restored.
  void drop() { dropped_ = engaged_; }
  bool isHeld() const { return engaged_ && !dropped_; }

  // The IOReturn code the next engage is refused with; used once.
  std::optional<int> nextRefusal;
  // Calls that reached the (pretend) system: refused ones count, repeats do not.
  int engageCalls = 0;
  int releaseCalls = 0;

 private:
  bool engaged_ = false;
  bool dropped_ = false;
};

}  // namespace wakeloft
