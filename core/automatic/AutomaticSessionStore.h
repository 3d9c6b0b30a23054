#pragma once

#include "automatic/AutomaticRules.h"

namespace wakeloft {

// Where the automatic rules and their suppression live across launches.
// Main thread only.
class AutomaticSessionStore {
 public:
  virtual ~AutomaticSessionStore() = default;
  virtual AutomaticRules::Settings settings() = 0;
  virtual void setSettings(const AutomaticRules::Settings& settings) = 0;
  virtual bool isSuppressed() = 0;
  virtual void setSuppressed(bool suppressed) = 0;
};

}  // namespace wakeloft
