#include "PidfdProcessExitWatcher.h"

#include <glib-unix.h>
#include <sys/syscall.h>
#include <unistd.h>

#include <cerrno>
#include <string>
#include <system_error>
#include <utility>

#include "base/MainThread.h"

namespace wakeloft {

PidfdProcessExitWatcher::~PidfdProcessExitWatcher() { cancel(); }

void PidfdProcessExitWatcher::watch(pid_t pid, std::function<void()> ended) {
  requireMainThread("PidfdProcessExitWatcher");
  cancel();
  // No libc wrapper before glibc 2.36; the descriptor is close-on-exec.
  const int fd = pid > 0 ? static_cast<int>(::syscall(SYS_pidfd_open, pid, 0)) : -1;
  if (fd < 0 && pid > 0 && errno != ESRCH) {
    throw std::system_error(errno, std::generic_category(), "the end of process " + std::to_string(pid) +
                                                                " cannot be watched");
  }
  ended_ = std::move(ended);
  if (fd < 0) {
    // Gone already: said from the loop, never from inside this call.
    source_ = g_idle_add(alreadyEnded, this);
    return;
  }
  fd_ = fd;
  source_ = g_unix_fd_add(fd, G_IO_IN, fdReady, this);
}

void PidfdProcessExitWatcher::cancel() {
  if (source_ != 0) g_source_remove(std::exchange(source_, 0));
  if (fd_ >= 0) ::close(std::exchange(fd_, -1));
  ended_ = nullptr;
}

gboolean PidfdProcessExitWatcher::fdReady(gint, GIOCondition, gpointer self) {
  static_cast<PidfdProcessExitWatcher*>(self)->fire();
  return G_SOURCE_REMOVE;
}

gboolean PidfdProcessExitWatcher::alreadyEnded(gpointer self) {
  static_cast<PidfdProcessExitWatcher*>(self)->fire();
  return G_SOURCE_REMOVE;
}

void PidfdProcessExitWatcher::fire() {
  // The source ends with this callback; whatever `ended` does next (watch
  // again, or drop this watcher) finds nothing of the old watch.
  source_ = 0;
  if (fd_ >= 0) ::close(std::exchange(fd_, -1));
  if (auto ended = std::exchange(ended_, nullptr)) ended();
}

}  // namespace wakeloft
