#pragma once

#include <string_view>

#include "lease/LidLeaseService.h"

namespace wakeloft {

// Who is at the other end of a lease connection, as the helper's peer check
// tells them apart: the app, which holds leases, or the app's command, which
// may only ask how the setting and the lease stand.
struct LidLeasePeer {
  enum class Kind { app, command };

  static constexpr std::string_view commandRefusal =
      "Only the Wakeloft app may take or give back a lease; its command may only ask how it stands.";

  // `requests` as `peer` may reach them. The command's renewals and
  // revocations are answered with `commandRefusal` and never reach the
  // service; its going away holds nothing to end.
  static LidLeaseService::Requests admitting(Kind peer, LidLeaseService::Requests requests);
};

}  // namespace wakeloft
