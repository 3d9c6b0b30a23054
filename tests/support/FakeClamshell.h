#pragma once

#include <optional>
#include <stdexcept>
#include <string>
#include <vector>

#include "helper/Clamshell.h"

namespace wakeloft::testing {

// A lid the test opens and closes, recording what was asked of it.
struct FakeClamshell final : Clamshell {
  std::optional<bool> closed = true;
  std::optional<bool> causesSleep = true;
  bool sleepFails = false;
  std::vector<std::string> asked;

  std::optional<bool> lidIsClosed() override {
    asked.push_back("lidIsClosed");
    return closed;
  }
  std::optional<bool> closingCausesSleep() override {
    asked.push_back("closingCausesSleep");
    return causesSleep;
  }
  void requestSleep() override {
    asked.push_back("requestSleep");
    if (sleepFails) throw std::runtime_error("IOPMSleepSystem returned 0xe00002c2");
  }
};

}  // namespace wakeloft::testing
