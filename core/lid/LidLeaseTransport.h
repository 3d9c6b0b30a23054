#pragma once

#include <memory>
#include <string>

#include "lease/LidLeaseRequest.h"
#include "lease/XPCReply.h"

namespace wakeloft {

// The one connection a lease client keeps to the lid helper: XPC on macOS,
// the rig's Unix socket on Linux. It decides nothing; the client decides when
// to make it and when to drop it. Main thread only, except that `reply` may
// be finished from any thread.
class LidLeaseTransport {
 public:
  virtual ~LidLeaseTransport() = default;

  // Whether a connection has been made and not dropped since.
  virtual bool isOpen() const = 0;
  // Makes a new connection and keeps it. Only a helper that meets
  // `requirement` may answer on it. Never fails here: a connection that
  // cannot work fails the requests sent on it.
  virtual void open(const std::string& requirement) = 0;
  // Sends a renewal or a revoke on the open connection. Finishes `reply`
  // with the helper's answer, or with `failed` when the connection reports
  // an error; possibly never, which the client's time limit covers.
  virtual void send(const LidLeaseRequest& request, const std::shared_ptr<XPCReply>& reply) = 0;
  // Closes the connection, if any, and forgets it.
  virtual void drop() = 0;
};

}  // namespace wakeloft
