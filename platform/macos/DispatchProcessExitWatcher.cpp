#include "DispatchProcessExitWatcher.h"

#include <stdexcept>
#include <string>
#include <utility>

#include "base/MainThread.h"

namespace wakeloft {

DispatchProcessExitWatcher::~DispatchProcessExitWatcher() { cancel(); }

void DispatchProcessExitWatcher::watch(pid_t pid, std::function<void()> ended) {
  requireMainThread("DispatchProcessExitWatcher");
  cancel();
  if (pid <= 0) throw std::runtime_error("there is no process " + std::to_string(pid) + " to watch");
  dispatch_source_t source = dispatch_source_create(DISPATCH_SOURCE_TYPE_PROC, static_cast<uintptr_t>(pid),
                                                    DISPATCH_PROC_EXIT, dispatch_get_main_queue());
  if (!source) throw std::runtime_error("the end of process " + std::to_string(pid) + " cannot be watched");
  const unsigned long watch = ++watches_;
  auto fire = weakSelf_([watch](DispatchProcessExitWatcher& self) { self.fire(watch); });
  dispatch_source_set_event_handler(source, ^{
    fire();
  });
  ended_ = std::move(ended);
  source_ = source;
  dispatch_resume(source);
}

void DispatchProcessExitWatcher::cancel() {
  ++watches_;
  ended_ = nullptr;
  if (!source_) return;
  dispatch_source_cancel(source_);
  dispatch_release(std::exchange(source_, nullptr));
}

void DispatchProcessExitWatcher::fire(unsigned long watch) {
  if (watch != watches_) return;
  auto ended = std::exchange(ended_, nullptr);
  cancel();
  if (ended) ended();
}

}  // namespace wakeloft
