#pragma once

#include <string_view>

#include "base/ProcessTable.h"

namespace wakeloft {

// The processes in /proc: a process's stat line gives its name, its state
// and its start time in clock ticks since boot.
class ProcfsProcessTable final : public ProcessTable {
 public:
  std::optional<RunningProcess> find(pid_t pid) const override;

  // One /proc/PID/stat line, for `pid`; nothing when it does not read or the
  // process has ended.
  static std::optional<RunningProcess> parse(std::string_view stat, pid_t pid);
};

}  // namespace wakeloft
