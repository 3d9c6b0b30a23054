#pragma once

#include "session/ScreenOnStore.h"

namespace wakeloft {

// Kept in memory, off to begin with; for previews and tests.
class InMemoryScreenOnStore final : public ScreenOnStore {
 public:
  bool keepsScreenOn() override { return on_; }
  void setKeepsScreenOn(bool on) override { on_ = on; }

 private:
  bool on_ = false;
};

}  // namespace wakeloft
