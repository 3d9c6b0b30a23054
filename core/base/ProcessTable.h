#pragma once

#include <sys/types.h>

#include <optional>
#include <string>

#include "base/ProcessIdentity.h"

namespace wakeloft {

// A process that runs now, as the system lists it.
struct RunningProcess {
  ProcessIdentity identity;
  // Its command name, as ps shows it: "make".
  std::string name;

  friend bool operator==(const RunningProcess&, const RunningProcess&) = default;
};

// The system's processes, looked up one pid at a time.
class ProcessTable {
 public:
  virtual ~ProcessTable() = default;

  // Nothing when no process has that pid or it has already ended (a zombie
  // has ended).
  virtual std::optional<RunningProcess> find(pid_t pid) const = 0;
};

}  // namespace wakeloft
