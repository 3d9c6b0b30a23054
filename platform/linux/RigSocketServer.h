#pragma once

#include <sys/types.h>

#include <cstddef>
#include <cstdint>
#include <functional>
#include <limits>
#include <map>
#include <memory>
#include <optional>
#include <string>

#include "lease/LidLeaseRequest.h"

namespace wakeloft {

// The lease rig's transport: a Unix stream socket served on GLib's main
// context. Each accepted connection is one client, numbered from 1; its
// lines become requests, and each request's reply goes back as one line, in
// order. A peer of another user, a line that breaks the wire, or the end of
// the stream ends the connection, which the service hears as a disconnect.
// A client that does not read its replies is not read from either, and
// connections beyond what the descriptor limit leaves over are refused.
class RigSocketServer {
 public:
  using Reply = std::function<void(const std::optional<std::string>&)>;
  using Requests = std::function<void(std::uint64_t client, LidLeaseRequest request, Reply reply)>;
  using Log = std::function<void(const std::string&)>;

  // Binds `path` (mode 0600) without accepting yet. A socket file there is
  // replaced only when connecting to it is refused; while another helper
  // answers on it, nothing is touched. Throws std::runtime_error saying why
  // when the path cannot be used.
  RigSocketServer(std::string path, uid_t allowedUid, Log log);
  ~RigSocketServer();
  RigSocketServer(const RigSocketServer&) = delete;
  RigSocketServer& operator=(const RigSocketServer&) = delete;

  // Starts accepting connections; their requests go to `requests`.
  void serve(Requests requests);

  const std::string& path() const { return path_; }

  // How far a client may get ahead of its replies before it is no longer
  // read from.
  static constexpr std::size_t maxAwaitingReplies = 64;
  static constexpr std::size_t maxUnsentBytes = 64 * 1024;
  // Descriptors never given to connections: what the helper needs besides.
  static constexpr std::size_t reservedDescriptors = 8;

 private:
  struct Listener;
  struct Connection;

  void accept();
  void pauseAccepting();
  void resumeAccepting();
  // False when the connection is no longer to be read from.
  bool read(const std::shared_ptr<Connection>& connection);
  void send(const std::shared_ptr<Connection>& connection, const std::string& line);
  void flush(const std::shared_ptr<Connection>& connection);
  void close(const std::shared_ptr<Connection>& connection);

  std::string path_;
  uid_t allowedUid_;
  Requests requests_;
  Log log_;
  std::unique_ptr<Listener> listener_;
  std::map<std::uint64_t, std::shared_ptr<Connection>> connections_;
  std::uint64_t lastClient_ = 0;
  std::size_t maxConnections_ = std::numeric_limits<std::size_t>::max();
  bool full_ = false;  // refusing connections until one closes
};

}  // namespace wakeloft
