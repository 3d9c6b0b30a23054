#pragma once

#include <optional>
#include <vector>

#include "base/Date.h"
#include "base/ProcessTable.h"

namespace wakeloft {

// A process a session is held for: until it ends, or until its own end
// when one was given, whichever comes first.
struct ProcessHold {
  RunningProcess process;
  std::optional<Date> until;

  friend bool operator==(const ProcessHold&, const ProcessHold&) = default;
};

// The session the user asked for: until its end, or without one.
struct UserClaim {
  std::optional<Date> until;

  friend bool operator==(const UserClaim&, const UserClaim&) = default;
};

// Everything a session held for processes lasts for: it lasts while any
// claim does.
struct SessionClaims {
  // Absent when the user asked for no session of their own.
  std::optional<UserClaim> user;
  std::vector<ProcessHold> holds;

  // More than any sane number of builds at once; it keeps the record small.
  static constexpr std::size_t mostHolds = 32;

  // The processes whose claims may end last, as the session is described:
  // none when the user's own claim outlasts them; the one held longest when
  // every claim has an end; every one held when some process has no end but
  // its own.
  std::vector<RunningProcess> endingLast() const;

  friend bool operator==(const SessionClaims&, const SessionClaims&) = default;
};

}  // namespace wakeloft
