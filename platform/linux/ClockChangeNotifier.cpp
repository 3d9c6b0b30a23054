#include "clock/ClockChangeNotifier.h"

#include <glib-unix.h>
#include <glib.h>
#include <sys/timerfd.h>
#include <unistd.h>

#include <cerrno>
#include <cstdint>
#include <limits>
#include <system_error>

#include "base/MainThread.h"

namespace wakeloft {

struct ClockChangeNotifier::Watch {
  int fd = -1;
  GSource* source = nullptr;
  std::function<void()> handler;

  ~Watch() {
    if (source) {
      g_source_destroy(source);
      g_source_unref(source);
    }
    if (fd >= 0) ::close(fd);
  }

  // A cancelled timer reports the cancellation until it is armed again.
  bool arm() const {
    itimerspec never{};
    never.it_value.tv_sec = std::numeric_limits<time_t>::max();
    // ECANCELED: armed all the same, over a cancellation not yet read.
    return timerfd_settime(fd, TFD_TIMER_ABSTIME | TFD_TIMER_CANCEL_ON_SET, &never, nullptr) == 0 || errno == ECANCELED;
  }

  static gboolean ready(gint, GIOCondition, gpointer data) {
    requireMainThread("ClockChangeNotifier's timer");
    auto& timer = *static_cast<Watch*>(data);
    std::uint64_t expirations = 0;
    // ECANCELED: the clock was set. A plain expiry: it was set past the far end.
    if (::read(timer.fd, &expirations, sizeof expirations) < 0 && (errno == EAGAIN || errno == EINTR)) {
      return G_SOURCE_CONTINUE;
    }
    // Not armed, it would stay readable: stop watching rather than spin.
    const bool armed = timer.arm();
    // A copy: the handler may observe anew and replace itself.
    if (const auto handler = timer.handler) handler();
    return armed ? G_SOURCE_CONTINUE : G_SOURCE_REMOVE;
  }
};

ClockChangeNotifier::ClockChangeNotifier() : watch_(std::make_unique<Watch>()) {
  watch_->fd = timerfd_create(CLOCK_REALTIME, TFD_NONBLOCK | TFD_CLOEXEC);
  if (watch_->fd < 0 || !watch_->arm()) {
    throw std::system_error(errno, std::generic_category(), "The clock-change timer could not be set up");
  }
}

ClockChangeNotifier::~ClockChangeNotifier() = default;

void ClockChangeNotifier::observe(std::function<void()> handler) {
  requireMainThread("ClockChangeNotifier::observe");
  watch_->handler = std::move(handler);
  if (watch_->source) return;
  watch_->source = g_unix_fd_source_new(watch_->fd, G_IO_IN);
  g_source_set_callback(watch_->source, G_SOURCE_FUNC(Watch::ready), watch_.get(), nullptr);
  g_source_attach(watch_->source, nullptr);
}

}  // namespace wakeloft
