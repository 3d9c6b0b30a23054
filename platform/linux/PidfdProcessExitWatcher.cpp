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

struct PidfdProcessExitWatcher::Watch {
  PidfdProcessExitWatcher& owner;
  pid_t pid;
  int fd;
  guint source = 0;
  std::function<void()> ended;

  ~Watch() {
    if (source != 0) g_source_remove(source);
    if (fd >= 0) ::close(fd);
  }
};

PidfdProcessExitWatcher::PidfdProcessExitWatcher() = default;
PidfdProcessExitWatcher::~PidfdProcessExitWatcher() = default;

void PidfdProcessExitWatcher::watch(pid_t pid, std::function<void()> ended) {
  requireMainThread("PidfdProcessExitWatcher");
  // No libc wrapper before glibc 2.36; the descriptor is close-on-exec.
  const int fd = pid > 0 ? static_cast<int>(::syscall(SYS_pidfd_open, pid, 0)) : -1;
  if (fd < 0 && pid > 0 && errno != ESRCH) {
    throw std::system_error(errno, std::generic_category(), "the end of process " + std::to_string(pid) +
                                                                " cannot be watched");
  }
  std::unique_ptr<Watch> watch(new Watch{*this, pid, fd, 0, std::move(ended)});
  // Gone already: said from the loop, never from inside this call.
  watch->source = fd < 0 ? g_idle_add(fired, watch.get()) : g_unix_fd_add(fd, G_IO_IN, fdReady, watch.get());
  watches_[pid] = std::move(watch);
}

void PidfdProcessExitWatcher::cancel(pid_t pid) { watches_.erase(pid); }

gboolean PidfdProcessExitWatcher::fdReady(gint, GIOCondition, gpointer watch) { return fired(watch); }

gboolean PidfdProcessExitWatcher::fired(gpointer opaque) {
  auto* watch = static_cast<Watch*>(opaque);
  // The source ends with this callback; whatever `ended` does next (watch
  // again, or drop this watcher) finds nothing of the old watch.
  watch->source = 0;
  auto ended = std::move(watch->ended);
  watch->owner.watches_.erase(watch->pid);
  if (ended) ended();
  return G_SOURCE_REMOVE;
}

}  // namespace wakeloft
