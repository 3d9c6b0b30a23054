#pragma once

#include "base/ProcessTable.h"

namespace wakeloft {

// The kernel's process information through libproc: a process's BSD record
// gives its name, its state and when it started, to the microsecond.
class LibprocProcessTable final : public ProcessTable {
 public:
  std::optional<RunningProcess> find(pid_t pid) const override;
};

}  // namespace wakeloft
