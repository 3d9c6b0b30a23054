#pragma once

#include "base/Date.h"

namespace wakeloft {

// The wall clock: what the user sees and what is saved.
class DateProvider {
 public:
  virtual ~DateProvider() = default;
  virtual Date now() const = 0;
};

}  // namespace wakeloft
