#pragma once

#include <optional>

#include "session/StoredProcessBinding.h"

namespace wakeloft {

// Where the claims on a session held for processes are remembered across
// launches.
class ProcessBindingStore {
 public:
  virtual ~ProcessBindingStore() = default;

  virtual StoredProcessBinding load() const = 0;
  // Nothing, or claims without a hold, removes the record.
  virtual void save(const std::optional<SessionClaims>& claims) = 0;
};

}  // namespace wakeloft
