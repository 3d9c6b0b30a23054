#pragma once

#include "automatic/AutomaticSessionStore.h"

namespace wakeloft {

// Kept in memory, the defaults to begin with; for previews and tests.
class InMemoryAutomaticSessionStore final : public AutomaticSessionStore {
 public:
  AutomaticRules::Settings settings() override { return settings_; }
  void setSettings(const AutomaticRules::Settings& settings) override { settings_ = settings; }
  bool isSuppressed() override { return suppressed_; }
  void setSuppressed(bool suppressed) override { suppressed_ = suppressed; }
  bool stopsWhenScreenLocks() override { return stopsWhenScreenLocks_; }
  void setStopsWhenScreenLocks(bool on) override { stopsWhenScreenLocks_ = on; }
  bool areRulesForced() override { return rulesForced; }
  bool isStopWhenScreenLocksForced() override { return stopWhenScreenLocksForced; }

  bool rulesForced = false;
  bool stopWhenScreenLocksForced = false;

 private:
  AutomaticRules::Settings settings_;
  bool suppressed_ = false;
  bool stopsWhenScreenLocks_ = false;
};

}  // namespace wakeloft
