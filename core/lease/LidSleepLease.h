#pragma once

#include "base/Date.h"

namespace wakeloft {

// Lease timing shared by the app and the lid helper. All in seconds.
namespace LidSleepLease {

// The longest lease one renewal can get.
inline constexpr double duration = 30;
// How often a client that wants to keep its lease renews it.
inline constexpr double renewalInterval = 10;
// How long a client waits for the helper's answer.
inline constexpr double replyTimeout = 2;
// The limit on one write of the sleep setting.
inline constexpr double writeTimeout = 1;
// The least time between two tries to write the same value after a failure.
inline constexpr double retrySpacing = 0.25;
// The limit on one read of the sleep setting.
inline constexpr double readTimeout = 0.25;

constexpr Date expiry(Date renewedAt) { return renewedAt.adding(duration); }

}  // namespace LidSleepLease
}  // namespace wakeloft
