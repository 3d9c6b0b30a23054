#pragma once

#include "lid/DeepwakeGuardrails.h"

namespace wakeloft {

// Where the guardrail settings live across launches. Main thread only.
class DeepwakeGuardrailStore {
 public:
  virtual ~DeepwakeGuardrailStore() = default;
  virtual DeepwakeGuardrails::Settings settings() = 0;
  virtual void setSettings(const DeepwakeGuardrails::Settings& settings) = 0;
};

}  // namespace wakeloft
