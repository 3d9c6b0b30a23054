#pragma once

#include "lid/LidHelperStatus.h"

namespace wakeloft {

// Registers the helper daemon with the system and says whether it runs or
// still waits for the user's approval. Main thread only.
class LidHelperRegistration {
 public:
  virtual ~LidHelperRegistration() = default;
  virtual LidHelperStatus status() const = 0;
  // Throws the system's own error when registration fails.
  virtual void registerHelper() = 0;
  // Throws the system's own error when it fails; a helper that was not
  // registered is not a failure.
  virtual void unregisterHelper() = 0;
};

}  // namespace wakeloft
