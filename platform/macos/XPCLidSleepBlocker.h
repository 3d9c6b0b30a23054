#pragma once

#import <Foundation/Foundation.h>

#include <functional>
#include <memory>
#include <optional>
#include <string>

#include "lease/LidSleepLease.h"
#include "lid/LeaseClientLidSleepBlocker.h"

namespace wakeloft {

// The lease client on macOS: LeaseClientLidSleepBlocker over an
// NSXPCConnection to the helper's mach service. Each connection is pinned to
// the helper's code requirement and speaks LidLeaseXPC.
class XPCLidSleepBlocker final : public LeaseClientLidSleepBlocker {
 public:
  // Returns a new connection that has not been resumed.
  using MakeConnection = std::function<NSXPCConnection*()>;

  // To the helper's mach service in the privileged bootstrap, where launch
  // daemons live.
  static NSXPCConnection* makeHelperConnection();

  // `helperRequirement` is LidHelperService::codeRequirement of the helper's
  // label and the app's own team; absent when the team cannot be read.
  XPCLidSleepBlocker(std::shared_ptr<LidHelperRegistration> registration, std::optional<std::string> helperRequirement,
                     double replyTimeout = LidSleepLease::replyTimeout,
                     MakeConnection makeConnection = makeHelperConnection);
};

}  // namespace wakeloft
