#pragma once

#include "lid/LidHelperStatus.h"

namespace wakeloft {

// The system's registration states of an app's helper service, as the raw
// values ServiceManagement reports for them.
namespace AppServiceStatus {

inline constexpr long notRegistered = 0;
inline constexpr long enabled = 1;
inline constexpr long requiresApproval = 2;
inline constexpr long notFound = 3;

// A value a later system may add reads as not registered: registering again
// is the one step that can still help.
constexpr LidHelperStatus lidHelperStatus(long raw) {
  switch (raw) {
    case enabled: return LidHelperStatus::enabled;
    case requiresApproval: return LidHelperStatus::requiresApproval;
    case notFound: return LidHelperStatus::notFound;
    default: return LidHelperStatus::notRegistered;
  }
}

}  // namespace AppServiceStatus
}  // namespace wakeloft
