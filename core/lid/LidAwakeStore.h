#pragma once

namespace wakeloft {

// What Deepwake remembers across launches: only whether the heat warning was
// acknowledged. Main thread only.
class LidAwakeStore {
 public:
  virtual ~LidAwakeStore() = default;
  virtual bool hasAcknowledgedHeatWarning() const = 0;
  virtual void setHasAcknowledgedHeatWarning(bool acknowledged) = 0;
};

}  // namespace wakeloft
