#include "SocketLidSleepBlocker.h"

#include <gio/gio.h>
#include <gio/gunixsocketaddress.h>

#include <charconv>
#include <deque>
#include <functional>
#include <optional>
#include <utility>

#include "clock/MainRunLoop.h"
#include "rig/RigWire.h"

namespace wakeloft {

namespace {

using Outcome = XPCReply::Outcome;

constexpr std::string_view uidPrefix = "uid ";

std::optional<uid_t> requiredUid(std::string_view requirement) {
  if (!requirement.starts_with(uidPrefix)) return std::nullopt;
  requirement.remove_prefix(uidPrefix.size());
  uid_t uid = 0;
  const auto [end, error] = std::from_chars(requirement.data(), requirement.data() + requirement.size(), uid);
  if (error != std::errc() || end != requirement.data() + requirement.size()) return std::nullopt;
  return uid;
}

// A GLib source on the default main context that calls `body` while it
// answers true; destroyed with the handle.
class SocketWatch {
 public:
  SocketWatch() = default;
  SocketWatch(const SocketWatch&) = delete;
  SocketWatch& operator=(const SocketWatch&) = delete;
  ~SocketWatch() { stop(); }

  void start(GSocket* socket, GIOCondition condition, std::function<bool()>* body) {
    stop();
    source_ = g_socket_create_source(socket, condition, nullptr);
    g_source_set_callback(
        source_, G_SOURCE_FUNC(+[](GSocket*, GIOCondition, gpointer data) -> gboolean {
          return (*static_cast<std::function<bool()>*>(data))() ? G_SOURCE_CONTINUE : G_SOURCE_REMOVE;
        }),
        body, nullptr);
    g_source_attach(source_, nullptr);
  }
  void stop() {
    if (!source_) return;
    g_source_destroy(source_);
    g_source_unref(source_);
    source_ = nullptr;
  }
  bool isActive() const { return source_ && !g_source_is_destroyed(source_); }

 private:
  GSource* source_ = nullptr;
};

// One connection to the rig. Replies come back in the order of the requests,
// so each reply line answers the oldest request still waiting, also when
// that request has timed out meanwhile.
class RigConnection : public std::enable_shared_from_this<RigConnection> {
 public:
  ~RigConnection() {
    readWatch_.stop();
    writeWatch_.stop();
    if (socket_) {
      g_socket_close(socket_, nullptr);
      g_object_unref(socket_);
    }
  }

  void connect(const std::string& path, const std::string& requirement) {
    uid_ = requiredUid(requirement);
    if (!uid_) return fail();  // nobody can meet it

    GError* error = nullptr;
    socket_ = g_socket_new(G_SOCKET_FAMILY_UNIX, G_SOCKET_TYPE_STREAM, G_SOCKET_PROTOCOL_DEFAULT, &error);
    if (!socket_) {
      g_clear_error(&error);
      return fail();
    }
    g_socket_set_blocking(socket_, FALSE);

    std::weak_ptr<RigConnection> weak = weak_from_this();
    onReadable_ = [weak] {
      auto self = weak.lock();
      return self && self->read();
    };
    onWritable_ = [weak] {
      auto self = weak.lock();
      return self && self->writable();
    };

    GSocketAddress* address = g_unix_socket_address_new(path.c_str());
    const gboolean connected = g_socket_connect(socket_, address, nullptr, &error);
    g_object_unref(address);
    if (connected) return established();
    const bool pending = g_error_matches(error, G_IO_ERROR, G_IO_ERROR_PENDING);
    g_clear_error(&error);
    if (!pending) return fail();
    writeWatch_.start(socket_, G_IO_OUT, &onWritable_);
  }

  void send(const LidLeaseRequest& request, const std::shared_ptr<XPCReply>& reply) {
    if (broken_) return reply->finish(Outcome::failed());
    awaiting_.push_back(reply);
    unsent_ += RigWire::requestLine(request);
    if (connected_) flush();
  }

  // Whatever is still waiting hears `failed`: the connection is going.
  void close() { fail(); }

 private:
  void established() {
    connected_ = true;
    GError* error = nullptr;
    GCredentials* credentials = g_socket_get_credentials(socket_, &error);
    const uid_t peer = credentials ? g_credentials_get_unix_user(credentials, nullptr) : static_cast<uid_t>(-1);
    if (credentials) g_object_unref(credentials);
    g_clear_error(&error);
    if (peer != *uid_) return fail();
    readWatch_.start(socket_, G_IO_IN, &onReadable_);
    flush();
  }

  bool writable() {
    if (!connected_) {
      GError* error = nullptr;
      const bool ok = g_socket_check_connect_result(socket_, &error);
      g_clear_error(&error);
      writeWatch_.stop();
      if (!ok) {
        fail();
      } else {
        established();
      }
      return false;
    }
    flush();
    return writeWatch_.isActive();
  }

  void flush() {
    while (!broken_ && !unsent_.empty()) {
      GError* error = nullptr;
      const gssize sent = g_socket_send_with_blocking(socket_, unsent_.data(), unsent_.size(), FALSE, nullptr, &error);
      if (sent < 0) {
        const bool later = g_error_matches(error, G_IO_ERROR, G_IO_ERROR_WOULD_BLOCK);
        g_clear_error(&error);
        if (!later) return fail();
        if (!writeWatch_.isActive()) writeWatch_.start(socket_, G_IO_OUT, &onWritable_);
        return;
      }
      unsent_.erase(0, static_cast<std::size_t>(sent));
    }
    writeWatch_.stop();
  }

  bool read() {
    char buffer[4096];
    GError* error = nullptr;
    const gssize received = g_socket_receive_with_blocking(socket_, buffer, sizeof buffer, FALSE, nullptr, &error);
    if (received < 0 && g_error_matches(error, G_IO_ERROR, G_IO_ERROR_WOULD_BLOCK)) {
      g_clear_error(&error);
      return true;
    }
    g_clear_error(&error);
    if (received <= 0) {  // the rig went away
      fail();
      return false;
    }
    for (auto& item : reader_.feed(std::string_view(buffer, static_cast<std::size_t>(received)))) {
      const auto* line = std::get_if<std::string>(&item);
      // A broken line, or an answer nobody asked for: the wire can no longer
      // be trusted to pair replies with requests.
      if (!line || awaiting_.empty()) {
        fail();
        return false;
      }
      auto reply = std::move(awaiting_.front());
      awaiting_.pop_front();
      reply->finish(Outcome::replied(RigWire::replyText(*line)));
    }
    return true;
  }

  void fail() {
    broken_ = true;
    readWatch_.stop();
    writeWatch_.stop();
    unsent_.clear();
    if (socket_) g_socket_close(socket_, nullptr);
    for (const auto& reply : std::exchange(awaiting_, {})) reply->finish(Outcome::failed());
  }

  GSocket* socket_ = nullptr;
  std::optional<uid_t> uid_;
  bool connected_ = false;
  bool broken_ = false;
  RigLineReader reader_;
  std::string unsent_;
  std::deque<std::shared_ptr<XPCReply>> awaiting_;
  std::function<bool()> onReadable_;
  std::function<bool()> onWritable_;
  SocketWatch readWatch_;
  SocketWatch writeWatch_;
};

class SocketLidLeaseTransport final : public LidLeaseTransport {
 public:
  explicit SocketLidLeaseTransport(std::string path) : path_(std::move(path)) {}
  ~SocketLidLeaseTransport() override { drop(); }

  bool isOpen() const override { return connection_ != nullptr; }

  void open(const std::string& requirement) override {
    drop();
    connection_ = std::make_shared<RigConnection>();
    connection_->connect(path_, requirement);
  }

  void send(const LidLeaseRequest& request, const std::shared_ptr<XPCReply>& reply) override {
    if (!connection_) return reply->finish(Outcome::failed());
    connection_->send(request, reply);
  }

  void drop() override {
    if (!connection_) return;
    connection_->close();
    // Freed on a later turn: one of its own watches may be running now.
    MainRunLoop::perform([kept = std::exchange(connection_, nullptr)] {});
  }

 private:
  std::string path_;
  std::shared_ptr<RigConnection> connection_;
};

}  // namespace

SocketLidSleepBlocker::SocketLidSleepBlocker(std::shared_ptr<LidHelperRegistration> registration,
                                             std::string socketPath, uid_t helperUid, double replyTimeout)
    : LeaseClientLidSleepBlocker(std::move(registration), requirement(helperUid), replyTimeout,
                                 std::make_unique<SocketLidLeaseTransport>(std::move(socketPath))) {}

std::string SocketLidSleepBlocker::requirement(uid_t helperUid) {
  return std::string(uidPrefix) + std::to_string(helperUid);
}

}  // namespace wakeloft
