#pragma once

#include "lid/LidAwakeStore.h"

namespace wakeloft {

class InMemoryLidAwakeStore final : public LidAwakeStore {
 public:
  explicit InMemoryLidAwakeStore(bool initial = false) : acknowledged(initial) {}

  bool hasAcknowledgedHeatWarning() const override { return acknowledged; }
  void setHasAcknowledgedHeatWarning(bool value) override { acknowledged = value; }

  bool acknowledged;
};

}  // namespace wakeloft
