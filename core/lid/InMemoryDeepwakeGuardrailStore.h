#pragma once

#include "lid/DeepwakeGuardrailStore.h"

namespace wakeloft {

// Settings kept in memory, the defaults to begin with; for previews and tests.
class InMemoryDeepwakeGuardrailStore final : public DeepwakeGuardrailStore {
 public:
  explicit InMemoryDeepwakeGuardrailStore(DeepwakeGuardrails::Settings settings = {}) : settings_(settings) {}
  DeepwakeGuardrails::Settings settings() override { return settings_; }
  void setSettings(const DeepwakeGuardrails::Settings& settings) override { settings_ = settings; }
  DeepwakeGuardrails::Forced forced() const override { return forcedSettings; }
  bool isDeepwakeAllowed() const override { return deepwakeAllowed; }

  DeepwakeGuardrails::Forced forcedSettings;
  bool deepwakeAllowed = true;

 private:
  DeepwakeGuardrails::Settings settings_;
};

}  // namespace wakeloft
