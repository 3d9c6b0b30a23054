#pragma once

#include <sys/types.h>

#include <memory>
#include <string>

#include "lease/LidSleepLease.h"
#include "lid/LeaseClientLidSleepBlocker.h"

namespace wakeloft {

// The lease client on Linux: the app's side of the lease rig, over its Unix
// socket on GLib's main context, never blocking. One connection, made on the
// first request and dropped after failures like the XPC connection on macOS;
// a late reply line is matched to its request and ignored.
class SocketLidSleepBlocker final : public LeaseClientLidSleepBlocker {
 public:
  // Only a rig running as `helperUid` is answered: anyone may bind a socket
  // in a shared folder.
  SocketLidSleepBlocker(std::shared_ptr<LidHelperRegistration> registration, std::string socketPath, uid_t helperUid,
                        double replyTimeout = LidSleepLease::replyTimeout);

  // The requirement the socket transport understands: "uid " and a number.
  static std::string requirement(uid_t helperUid);
};

}  // namespace wakeloft
