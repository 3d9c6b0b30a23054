#pragma once

#include <chrono>

#include "clock/DateProvider.h"

namespace wakeloft {

class SystemDateProvider final : public DateProvider {
 public:
  Date now() const override {
    const auto sinceEpoch = std::chrono::system_clock::now().time_since_epoch();
    return Date{std::chrono::duration<double>(sinceEpoch).count()};
  }
};

}  // namespace wakeloft
