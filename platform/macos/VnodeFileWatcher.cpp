#include "VnodeFileWatcher.h"

#include <dispatch/dispatch.h>
#include <fcntl.h>
#include <unistd.h>

#include <filesystem>

#include "base/MainThread.h"

namespace wakeloft {

// One dispatch source over one descriptor opened for events only; the
// descriptor is closed when the source has been cancelled.
class VnodeFileWatcher::Source {
 public:
  static std::unique_ptr<Source> open(const std::string& path, unsigned long mask,
                                      std::function<void(unsigned long)> handler) {
    const int fd = ::open(path.c_str(), O_EVTONLY | O_CLOEXEC);
    if (fd < 0) return nullptr;
    dispatch_source_t source =
        dispatch_source_create(DISPATCH_SOURCE_TYPE_VNODE, static_cast<uintptr_t>(fd), mask, dispatch_get_main_queue());
    if (!source) {
      ::close(fd);
      return nullptr;
    }
    const auto shared = std::make_shared<const std::function<void(unsigned long)>>(std::move(handler));
    dispatch_source_set_event_handler(source, ^{
      (*shared)(dispatch_source_get_data(source));
    });
    dispatch_source_set_cancel_handler(source, ^{
      ::close(fd);
    });
    dispatch_resume(source);
    return std::unique_ptr<Source>(new Source(source));
  }

  ~Source() {
    dispatch_source_cancel(source_);
    dispatch_release(source_);
  }
  Source(const Source&) = delete;
  Source& operator=(const Source&) = delete;

 private:
  explicit Source(dispatch_source_t source) : source_(source) {}

  dispatch_source_t source_;
};

namespace {

constexpr unsigned long fileEvents = DISPATCH_VNODE_WRITE | DISPATCH_VNODE_EXTEND | DISPATCH_VNODE_DELETE |
                                     DISPATCH_VNODE_RENAME | DISPATCH_VNODE_REVOKE;
// A folder is written when an entry is added, removed or renamed.
constexpr unsigned long folderEvents =
    DISPATCH_VNODE_WRITE | DISPATCH_VNODE_DELETE | DISPATCH_VNODE_RENAME | DISPATCH_VNODE_REVOKE;
constexpr unsigned long goneEvents = DISPATCH_VNODE_DELETE | DISPATCH_VNODE_RENAME | DISPATCH_VNODE_REVOKE;

}  // namespace

VnodeFileWatcher::VnodeFileWatcher(std::string path, std::function<void()> changed)
    : path_(std::move(path)), changed_(std::move(changed)) {
  requireMainThread("VnodeFileWatcher");
  arm();
}

VnodeFileWatcher::~VnodeFileWatcher() = default;

void VnodeFileWatcher::arm() {
  file_ = Source::open(path_, fileEvents, weakSelf_([](VnodeFileWatcher& self, unsigned long flags) {
    self.changed_();
    if (flags & goneEvents) self.rearmSoon();
  }));
  // A new entry there may be a new file at the path, or the first one after
  // it went missing.
  folder_ = Source::open(std::filesystem::path(path_).parent_path().string(), folderEvents,
                         weakSelf_([](VnodeFileWatcher& self, unsigned long) { self.rearmSoon(); }));
}

// The descriptors follow the old files: open the path again, but not from
// inside the handler of a source that is about to be replaced.
void VnodeFileWatcher::rearmSoon() {
  auto rearm = weakSelf_([](VnodeFileWatcher& self) {
    self.arm();
    self.changed_();
  });
  dispatch_async(dispatch_get_main_queue(), ^{
    rearm();
  });
}

}  // namespace wakeloft
