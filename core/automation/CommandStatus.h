#pragma once

#include <functional>
#include <optional>
#include <string>

#include "base/Date.h"
#include "session/StoredAwakeIntent.h"
#include "session/StoredProcessBinding.h"

namespace wakeloft {

// What `wakeloft status` prints, from the app's stored state: the same
// records the app keeps, read through the same stores.
namespace CommandStatus {

struct Facts {
  bool isAppRunning = false;
  StoredAwakeIntent intent = StoredAwakeIntent::intent(AwakeIntent::off());
  StoredProcessBinding binding = StoredProcessBinding::none();
  bool isDeepwakeOn = false;
  // Whether that very process still runs: a session held only for processes
  // that are gone does not come back when the app opens.
  std::function<bool(const ProcessIdentity&)> isRunning = [](const ProcessIdentity&) { return false; };
  // Why the rules keep a session on, as the app publishes it; such a session
  // is never the stored intent.
  std::optional<std::string> automaticReason = std::nullopt;
};

// Three lines: whether the app runs; whether a session is on, with the
// panel's countdown for a timed one and the processes it is held for; whether
// Deepwake is on. Without the app nothing is on, but a session it will take
// up again when it opens is told. A session the automatic rules keep is told
// with the rule that holds. Durations in `locale`'s words.
std::string render(const Facts& facts, Date now, const std::string& locale);

}  // namespace CommandStatus
}  // namespace wakeloft
