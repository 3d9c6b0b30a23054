#include "RigSocketServer.h"

#include <gio/gio.h>
#include <gio/gunixsocketaddress.h>
#include <sys/resource.h>
#include <sys/socket.h>
#include <sys/stat.h>
#include <sys/un.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <cstring>
#include <filesystem>
#include <stdexcept>
#include <system_error>

#include "clock/MainRunLoop.h"
#include "rig/RigWire.h"

namespace wakeloft {

namespace {

// Owns a GLib source and stops it when dropped.
struct SourceHandle {
  GSource* source = nullptr;
  SourceHandle() = default;
  SourceHandle(const SourceHandle&) = delete;
  SourceHandle& operator=(const SourceHandle&) = delete;
  ~SourceHandle() { reset(); }
  void reset(GSource* replacement = nullptr) {
    if (source) {
      g_source_destroy(source);
      g_source_unref(source);
    }
    source = replacement;
  }
};

// Frees the error and clears the caller's pointer, so a later
// g_clear_error there does nothing.
std::string takeMessage(GError*& error) {
  std::string message = error ? error->message : "unknown error";
  g_clear_error(&error);
  return message;
}

template <typename Body>
GSource* watch(GSocket* socket, GIOCondition condition, Body* body) {
  GSource* source = g_socket_create_source(socket, condition, nullptr);
  g_source_set_callback(
      source, G_SOURCE_FUNC(+[](GSocket*, GIOCondition ready, gpointer data) -> gboolean {
        return (*static_cast<Body*>(data))(ready) ? G_SOURCE_CONTINUE : G_SOURCE_REMOVE;
      }),
      body, nullptr);
  g_source_attach(source, nullptr);
  return source;
}

}  // namespace

struct RigSocketServer::Listener {
  GSocket* socket = nullptr;
  std::function<bool(GIOCondition)> onReady;
  SourceHandle source;
  // While accepting is paused: the latest moment to try again.
  SourceHandle retry;
  bool failing = false;
  ~Listener() {
    retry.reset();
    source.reset();
    if (socket) g_object_unref(socket);
  }
};

struct RigSocketServer::Connection {
  std::uint64_t client = 0;
  GSocket* socket = nullptr;
  RigLineReader reader;
  std::string unsent;
  // Requests handed on whose reply has not come back yet.
  std::size_t awaiting = 0;
  std::function<bool(GIOCondition)> onReadable;
  std::function<bool(GIOCondition)> onWritable;
  SourceHandle readSource;
  SourceHandle writeSource;
  bool closed = false;

  ~Connection() {
    readSource.reset();
    writeSource.reset();
    if (socket) {
      g_socket_close(socket, nullptr);
      g_object_unref(socket);
    }
  }

  // A client that sends faster than it reads is not read from until it has
  // caught up, so what it costs the helper stays bounded.
  bool owesTooMuch() const { return awaiting >= maxAwaitingReplies || unsent.size() >= maxUnsentBytes; }
};

namespace {

// Whether something accepts connections on the socket at `path`. Only a
// refusal proves the socket dead; anything unclear counts as alive.
bool answers(const std::string& path) {
  sockaddr_un address{};
  address.sun_family = AF_UNIX;
  if (path.size() >= sizeof address.sun_path) {
    throw std::runtime_error("cannot serve on " + path + ": the path is too long for a socket");
  }
  std::memcpy(address.sun_path, path.c_str(), path.size() + 1);
  // Non-blocking, so a full backlog answers EAGAIN instead of holding us.
  const int probe = socket(AF_UNIX, SOCK_STREAM | SOCK_NONBLOCK | SOCK_CLOEXEC, 0);
  if (probe < 0) throw std::runtime_error("cannot make a socket: " + std::string(std::strerror(errno)));
  const int result = connect(probe, reinterpret_cast<const sockaddr*>(&address), sizeof address);
  const int error = errno;
  ::close(probe);
  return result == 0 || (error != ECONNREFUSED && error != ENOENT);
}

}  // namespace

RigSocketServer::RigSocketServer(std::string path, uid_t allowedUid, Log log)
    : path_(std::move(path)), allowedUid_(allowedUid), log_(std::move(log)) {
  struct stat existing {};
  if (lstat(path_.c_str(), &existing) == 0) {
    if (!S_ISSOCK(existing.st_mode)) {
      throw std::runtime_error("cannot serve on " + path_ + ": a file that is not a socket is in the way");
    }
    if (answers(path_)) {
      throw std::runtime_error("cannot serve on " + path_ + ": another helper is answering there; it was left alone");
    }
    if (unlink(path_.c_str()) != 0) {
      throw std::runtime_error("cannot replace the stale socket " + path_ + ": " + std::strerror(errno));
    }
  }

  listener_ = std::make_unique<Listener>();
  GError* error = nullptr;
  listener_->socket = g_socket_new(G_SOCKET_FAMILY_UNIX, G_SOCKET_TYPE_STREAM, G_SOCKET_PROTOCOL_DEFAULT, &error);
  if (!listener_->socket) throw std::runtime_error("cannot make a socket: " + takeMessage(error));

  GSocketAddress* address = g_unix_socket_address_new(path_.c_str());
  // Created as 0600 from the start: no moment in which others may connect.
  const mode_t previous = umask(0177);
  const gboolean bound = g_socket_bind(listener_->socket, address, FALSE, &error);
  umask(previous);
  g_object_unref(address);
  if (!bound) throw std::runtime_error("cannot serve on " + path_ + ": " + takeMessage(error));
  // A root helper serving another user hands that user the socket, still
  // 0600: others cannot even connect, rather than relying on the peer check
  // alone as a socket open to all would. lchown, so a link swapped in at the
  // path is never followed.
  if (allowedUid_ != geteuid() && lchown(path_.c_str(), allowedUid_, static_cast<gid_t>(-1)) != 0) {
    const int failure = errno;
    unlink(path_.c_str());
    throw std::runtime_error("cannot hand " + path_ + " to uid " + std::to_string(allowedUid_) + ": " +
                             std::strerror(failure));
  }
  // A burst of connects beyond the backlog fails at once with EAGAIN.
  g_socket_set_listen_backlog(listener_->socket, SOMAXCONN);
  if (!g_socket_listen(listener_->socket, &error)) {
    unlink(path_.c_str());
    throw std::runtime_error("cannot listen on " + path_ + ": " + takeMessage(error));
  }
  g_socket_set_blocking(listener_->socket, FALSE);
}

void RigSocketServer::serve(Requests requests) {
  requests_ = std::move(requests);
  // Connections get the descriptors the helper does not hold yet, less a
  // few kept back for its own work (writing the rig file, reading the lid).
  std::size_t open = 0;
  std::error_code unreadable;
  for (std::filesystem::directory_iterator entry("/proc/self/fd", unreadable), end; !unreadable && entry != end;
       entry.increment(unreadable)) {
    ++open;  // the listing's own descriptor among them, kept back as well
  }
  rlimit limit{};
  if (getrlimit(RLIMIT_NOFILE, &limit) == 0 && limit.rlim_cur != RLIM_INFINITY) {
    const auto spare = limit.rlim_cur > open + reservedDescriptors ? limit.rlim_cur - open - reservedDescriptors : 0;
    maxConnections_ = std::max<std::size_t>(spare, 1);
  }
  listener_->onReady = [this](GIOCondition) {
    accept();
    return true;
  };
  listener_->source.reset(watch(listener_->socket, G_IO_IN, &listener_->onReady));
}

RigSocketServer::~RigSocketServer() {
  connections_.clear();
  listener_.reset();
  unlink(path_.c_str());
}

void RigSocketServer::accept() {
  GError* error = nullptr;
  GSocket* socket = g_socket_accept(listener_->socket, nullptr, &error);
  if (!socket) {
    if (g_error_matches(error, G_IO_ERROR, G_IO_ERROR_WOULD_BLOCK)) {
      g_clear_error(&error);
      return;
    }
    // Out of descriptors, most likely. The connection stays pending, so the
    // listener would fire again at once: wait for one of ours to close, or a
    // second at most, and say so once until accepting works again.
    const std::string why = takeMessage(error);
    if (!listener_->failing) log_("connections not accepted for now: " + why);
    listener_->failing = true;
    pauseAccepting();
    return;
  }
  listener_->failing = false;

  if (connections_.size() >= maxConnections_) {
    // Closed at once, so the client hears so and the backlog drains.
    if (!full_) {
      log_("connection refused: " + std::to_string(connections_.size()) +
           " connections are open, as many as this helper serves");
    }
    full_ = true;
    g_socket_close(socket, nullptr);
    g_object_unref(socket);
    return;
  }

  GCredentials* credentials = g_socket_get_credentials(socket, &error);
  const uid_t uid = credentials ? g_credentials_get_unix_user(credentials, nullptr) : static_cast<uid_t>(-1);
  if (credentials) g_object_unref(credentials);
  g_clear_error(&error);
  if (uid != allowedUid_) {
    log_("connection refused: peer uid " + (uid == static_cast<uid_t>(-1) ? std::string("unknown") : std::to_string(uid)) +
         " is not the allowed uid " + std::to_string(allowedUid_));
    g_socket_close(socket, nullptr);
    g_object_unref(socket);
    return;
  }

  auto connection = std::make_shared<Connection>();
  connection->client = ++lastClient_;
  connection->socket = socket;
  g_socket_set_blocking(socket, FALSE);
  std::weak_ptr<Connection> weak = connection;

  connection->onWritable = [this, weak](GIOCondition) {
    if (auto c = weak.lock()) flush(c);
    return false;  // flush() watches again when it must
  };
  connection->onReadable = [this, weak](GIOCondition) {
    auto c = weak.lock();
    return c && read(c);
  };
  connection->readSource.reset(watch(socket, G_IO_IN, &connection->onReadable));
  connections_.emplace(connection->client, std::move(connection));
}

bool RigSocketServer::read(const std::shared_ptr<Connection>& c) {
  char buffer[4096];
  GError* error = nullptr;
  const gssize received = g_socket_receive_with_blocking(c->socket, buffer, sizeof buffer, FALSE, nullptr, &error);
  if (received < 0 && g_error_matches(error, G_IO_ERROR, G_IO_ERROR_WOULD_BLOCK)) {
    g_clear_error(&error);
    return true;
  }
  if (received <= 0) {
    g_clear_error(&error);
    close(c);
    return false;
  }
  for (auto& item : c->reader.feed(std::string_view(buffer, static_cast<std::size_t>(received)))) {
    if (const auto* violation = std::get_if<RigWire::Violation>(&item)) {
      log_("client " + std::to_string(c->client) + " closed: it sent " + violation->why);
      close(c);
      return false;
    }
    const auto parsed = RigWire::parseRequest(std::get<std::string>(item));
    if (const auto* violation = std::get_if<RigWire::Violation>(&parsed)) {
      log_("client " + std::to_string(c->client) + " closed: it sent " + violation->why);
      close(c);
      return false;
    }
    ++c->awaiting;
    std::weak_ptr<Connection> weak = c;
    // An open connection means this server still stands.
    requests_(c->client, std::get<LidLeaseRequest>(parsed), [this, weak](const std::optional<std::string>& reply) {
      if (auto alive = weak.lock(); alive && !alive->closed) send(alive, RigWire::replyLine(reply));
    });
  }
  if (!c->owesTooMuch()) return true;
  c->readSource.reset();  // until send() or flush() finds it caught up
  return false;
}

void RigSocketServer::send(const std::shared_ptr<Connection>& c, const std::string& line) {
  --c->awaiting;
  c->unsent += line;
  flush(c);
}

void RigSocketServer::flush(const std::shared_ptr<Connection>& c) {
  while (!c->unsent.empty()) {
    GError* error = nullptr;
    const gssize sent = g_socket_send_with_blocking(c->socket, c->unsent.data(), c->unsent.size(), FALSE, nullptr, &error);
    if (sent < 0) {
      const bool later = g_error_matches(error, G_IO_ERROR, G_IO_ERROR_WOULD_BLOCK);
      g_clear_error(&error);
      if (!later) {
        // The peer is gone; while it is not read from, this is where that shows.
        close(c);
        return;
      }
      if (!c->writeSource.source) c->writeSource.reset(watch(c->socket, G_IO_OUT, &c->onWritable));
      break;
    }
    c->unsent.erase(0, static_cast<std::size_t>(sent));
  }
  if (c->unsent.empty()) c->writeSource.reset();
  if (!c->closed && !c->readSource.source && !c->owesTooMuch()) {
    c->readSource.reset(watch(c->socket, G_IO_IN, &c->onReadable));
  }
}

void RigSocketServer::pauseAccepting() {
  listener_->source.reset();
  GSource* retry = g_timeout_source_new_seconds(1);
  g_source_set_callback(
      retry,
      +[](gpointer server) -> gboolean {
        static_cast<RigSocketServer*>(server)->resumeAccepting();
        return G_SOURCE_REMOVE;
      },
      this, nullptr);
  g_source_attach(retry, nullptr);
  listener_->retry.reset(retry);
}

void RigSocketServer::resumeAccepting() {
  if (!listener_->retry.source) return;
  listener_->retry.reset();
  listener_->source.reset(watch(listener_->socket, G_IO_IN, &listener_->onReady));
}

void RigSocketServer::close(const std::shared_ptr<Connection>& connection) {
  if (connection->closed) return;
  connection->closed = true;
  connection->readSource.reset();
  connection->writeSource.reset();
  g_socket_close(connection->socket, nullptr);
  const auto client = connection->client;
  // Freed on the loop's next turn: the callback running now may be its own.
  MainRunLoop::perform([kept = connection] {});
  connections_.erase(client);
  full_ = false;
  resumeAccepting();  // a descriptor came free
  requests_(client, LidLeaseRequest::disconnect(), [](const std::optional<std::string>&) {});
}

}  // namespace wakeloft
