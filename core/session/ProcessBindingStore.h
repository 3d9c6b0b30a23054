#pragma once

#include <optional>

#include "session/StoredProcessBinding.h"

namespace wakeloft {

// Where the process a session is bound to is remembered across launches.
class ProcessBindingStore {
 public:
  virtual ~ProcessBindingStore() = default;

  virtual StoredProcessBinding load() const = 0;
  // Nothing removes the record.
  virtual void save(const std::optional<RunningProcess>& process) = 0;
};

}  // namespace wakeloft
