#pragma once

#include <stdexcept>
#include <string>

namespace wakeloft {

// Why a program run by ChildProcess gave no result. The text names the
// program and is fit to show: it ends up in the helper's replies.
class ChildProcessError : public std::runtime_error {
 public:
  enum class Kind {
    // It could not be started at all (missing, not executable, no resources).
    notStarted,
    // It did not finish in time; it was killed and reaped.
    timedOut,
    // A signal ended it before it could exit.
    signalled,
    // Its output or its end could not be followed; it was killed and reaped.
    lost,
  };

  ChildProcessError(Kind kind, const std::string& description) : std::runtime_error(description), kind_(kind) {}

  Kind kind() const { return kind_; }

 private:
  Kind kind_;
};

}  // namespace wakeloft
