#pragma once

#include "automatic/AutomaticRules.h"

namespace wakeloft {

// Where the automatic rules, their suppression and whether a lock stops
// sessions live across launches.
// Main thread only.
class AutomaticSessionStore {
 public:
  virtual ~AutomaticSessionStore() = default;
  virtual AutomaticRules::Settings settings() = 0;
  virtual void setSettings(const AutomaticRules::Settings& settings) = 0;
  virtual bool isSuppressed() = 0;
  virtual void setSuppressed(bool suppressed) = 0;
  // Whether a lock or a switch to another user ends every session; off by
  // default.
  virtual bool stopsWhenScreenLocks() = 0;
  virtual void setStopsWhenScreenLocks(bool on) = 0;
  // Whether a configuration profile fixes any of the rules, which fixes them
  // as a whole, and whether it fixes the lock's setting.
  virtual bool areRulesForced() = 0;
  virtual bool isStopWhenScreenLocksForced() = 0;
};

}  // namespace wakeloft
