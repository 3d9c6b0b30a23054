#include "session/SessionClaims.h"

namespace wakeloft {

std::vector<RunningProcess> SessionClaims::endingLast() const {
  if (holds.empty() || (user && !user->until)) return {};
  std::vector<RunningProcess> held;
  const ProcessHold* longest = nullptr;
  bool someWithoutEnd = false;
  for (const auto& hold : holds) {
    held.push_back(hold.process);
    someWithoutEnd = someWithoutEnd || !hold.until;
    if (hold.until && (!longest || *hold.until > *longest->until)) longest = &hold;
  }
  if (someWithoutEnd) return held;
  if (user && *user->until >= *longest->until) return {};
  return {longest->process};
}

}  // namespace wakeloft
