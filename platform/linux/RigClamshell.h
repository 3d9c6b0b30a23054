#pragma once

#include <optional>
#include <string>

#include "helper/Clamshell.h"

namespace wakeloft {

// The lease rig's lid: a file that holds "open" or "closed" (a missing file,
// or none given, is an open lid). The rig has no closed-display mode.
class RigClamshell final : public Clamshell {
 public:
  explicit RigClamshell(std::optional<std::string> lidFilePath) : path_(std::move(lidFilePath)) {}

  std::optional<bool> lidIsClosed() override;
  std::optional<bool> closingCausesSleep() override { return true; }
  // The rig has no system to put to sleep: the log line that reports the
  // request is what a rig checker looks for.
  void requestSleep() override {}

 private:
  std::optional<std::string> path_;
};

}  // namespace wakeloft
