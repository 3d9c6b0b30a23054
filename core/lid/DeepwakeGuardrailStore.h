#pragma once

#include "lid/DeepwakeGuardrails.h"

namespace wakeloft {

// Where the guardrail settings live across launches. Main thread only.
class DeepwakeGuardrailStore {
 public:
  virtual ~DeepwakeGuardrailStore() = default;
  virtual DeepwakeGuardrails::Settings settings() = 0;
  virtual void setSettings(const DeepwakeGuardrails::Settings& settings) = 0;
  // What a configuration profile sets; `settings` reads it as the profile has it.
  virtual DeepwakeGuardrails::Forced forced() const = 0;
  // False only where a configuration profile forbids Deepwake.
  virtual bool isDeepwakeAllowed() const = 0;
};

}  // namespace wakeloft
