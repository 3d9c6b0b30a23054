#pragma once

#include <optional>
#include <stdexcept>
#include <string>
#include <vector>

#include "lease/SystemSleepSetting.h"

namespace wakeloft::testing {

// The sleep setting as a plain value. Something else on the machine can
// change `value` directly; reads and writes fail with the given text for as
// long as it is set.
struct InMemorySleepSetting final : SystemSleepSetting {
  bool value = false;
  std::optional<std::string> writeError;
  std::optional<std::string> readError;
  // Every write tried, failed ones included, in order.
  std::vector<bool> writeAttempts;
  int readCount = 0;

  void writeDisabled(bool disabled) override {
    writeAttempts.push_back(disabled);
    if (writeError) throw std::runtime_error(*writeError);
    value = disabled;
  }
  bool readDisabled() override {
    ++readCount;
    if (readError) throw std::runtime_error(*readError);
    return value;
  }
};

}  // namespace wakeloft::testing
