#include "DispatchProcessExitWatcher.h"

#include <dispatch/dispatch.h>

#include <map>
#include <stdexcept>
#include <string>
#include <utility>

#include "base/MainThread.h"

namespace wakeloft {

struct DispatchProcessExitWatcher::Sources {
  struct Watch {
    dispatch_source_t source;
    std::function<void()> ended;
    // Tells an event of this watch from one of a watch it replaced.
    unsigned long number;
  };
  std::map<pid_t, Watch> watches;
  unsigned long made = 0;

  void remove(pid_t pid) {
    const auto found = watches.find(pid);
    if (found == watches.end()) return;
    dispatch_source_cancel(found->second.source);
    dispatch_release(found->second.source);
    watches.erase(found);
  }
};

DispatchProcessExitWatcher::DispatchProcessExitWatcher() : sources_(std::make_unique<Sources>()) {}

DispatchProcessExitWatcher::~DispatchProcessExitWatcher() {
  while (!sources_->watches.empty()) sources_->remove(sources_->watches.begin()->first);
}

void DispatchProcessExitWatcher::watch(pid_t pid, std::function<void()> ended) {
  requireMainThread("DispatchProcessExitWatcher");
  if (pid <= 0) throw std::runtime_error("there is no process " + std::to_string(pid) + " to watch");
  dispatch_source_t source = dispatch_source_create(DISPATCH_SOURCE_TYPE_PROC, static_cast<uintptr_t>(pid),
                                                    DISPATCH_PROC_EXIT, dispatch_get_main_queue());
  if (!source) throw std::runtime_error("the end of process " + std::to_string(pid) + " cannot be watched");
  sources_->remove(pid);
  const unsigned long number = ++sources_->made;
  auto fire = weakSelf_([pid, number](DispatchProcessExitWatcher& self) { self.fire(pid, number); });
  dispatch_source_set_event_handler(source, ^{
    fire();
  });
  sources_->watches[pid] = {source, std::move(ended), number};
  dispatch_resume(source);
}

void DispatchProcessExitWatcher::cancel(pid_t pid) { sources_->remove(pid); }

void DispatchProcessExitWatcher::fire(pid_t pid, unsigned long number) {
  const auto found = sources_->watches.find(pid);
  if (found == sources_->watches.end() || found->second.number != number) return;
  auto ended = std::move(found->second.ended);
  sources_->remove(pid);
  if (ended) ended();
}

}  // namespace wakeloft
