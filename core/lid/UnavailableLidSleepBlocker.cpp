#include "lid/UnavailableLidSleepBlocker.h"

#include "lid/LidSleepBlockerError.h"

namespace wakeloft {

void UnavailableLidSleepBlocker::renew(Date, Completion completion) {
  completion(std::make_exception_ptr(LidSleepBlockerError::helperUnavailable()));
}

void UnavailableLidSleepBlocker::revoke(Completion completion) { completion(nullptr); }

}  // namespace wakeloft
