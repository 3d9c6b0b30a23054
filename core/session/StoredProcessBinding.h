#pragma once

#include <optional>

#include "base/ProcessTable.h"

namespace wakeloft {

// What a binding store hands back: no binding, the process a session was
// bound to, or a record that cannot be read.
class StoredProcessBinding {
 public:
  static StoredProcessBinding none() { return StoredProcessBinding(std::nullopt, false); }
  static StoredProcessBinding bound(RunningProcess process) { return StoredProcessBinding(std::move(process), false); }
  static StoredProcessBinding unreadable() { return StoredProcessBinding(std::nullopt, true); }

  bool isUnreadable() const { return unreadable_; }
  // The process, when a readable binding is stored.
  const std::optional<RunningProcess>& process() const { return process_; }

  friend bool operator==(const StoredProcessBinding&, const StoredProcessBinding&) = default;

 private:
  StoredProcessBinding(std::optional<RunningProcess> process, bool unreadable)
      : process_(std::move(process)), unreadable_(unreadable) {}

  std::optional<RunningProcess> process_;
  bool unreadable_;
};

}  // namespace wakeloft
