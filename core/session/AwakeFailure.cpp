#include "session/AwakeFailure.h"

#include "lid/LidSleepBlockerError.h"
#include "session/SleepBlockerError.h"

namespace wakeloft {

AwakeFailure AwakeFailure::from(const std::exception& error) {
  if (const auto* blocker = dynamic_cast<const SleepBlockerError*>(&error)) {
    return AssertionRefused{blocker->assertionCode()};
  }
  if (const auto* lid = dynamic_cast<const LidSleepBlockerError*>(&error)) {
    switch (lid->kind()) {
      case LidSleepBlockerError::Kind::helperRefused:
        return LidHelperRefused{LidHelperRefusal::fromReason(lid->reason())};
      case LidSleepBlockerError::Kind::helperUnavailable: return LidHelperUnavailable{};
      case LidSleepBlockerError::Kind::helperRequiresApproval: return LidHelperRequiresApproval{};
    }
  }
  return Reported{error.what()};
}

AwakeFailure AwakeFailure::from(const std::exception_ptr& error) {
  if (!error) return Reported{"An unknown error occurred."};
  try {
    std::rethrow_exception(error);
  } catch (const std::exception& e) {
    return from(e);
  } catch (...) {
    return Reported{"An unknown error occurred."};
  }
}

}  // namespace wakeloft
