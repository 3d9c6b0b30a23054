#pragma once

#include <functional>
#include <memory>
#include <string>

#include "base/WeakSelf.h"

namespace wakeloft {

// Tells the main thread when a file may have changed: when it is written,
// removed or renamed, or when an entry of its folder changes (how a new file
// is usually moved into place). After a removal or rename it watches
// whatever is at the path by then. Kernel events through dispatch sources on
// the main queue; nothing runs while nothing happens.
//
// Main thread only.
class VnodeFileWatcher {
 public:
  VnodeFileWatcher(std::string path, std::function<void()> changed);
  ~VnodeFileWatcher();
  VnodeFileWatcher(const VnodeFileWatcher&) = delete;
  VnodeFileWatcher& operator=(const VnodeFileWatcher&) = delete;

 private:
  class Source;

  void arm();
  void rearmSoon();

  std::string path_;
  std::function<void()> changed_;
  std::unique_ptr<Source> file_;
  std::unique_ptr<Source> folder_;
  WeakSelf<VnodeFileWatcher> weakSelf_{this};
};

}  // namespace wakeloft
