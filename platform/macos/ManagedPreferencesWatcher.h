#pragma once

#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "VnodeFileWatcher.h"
#include "base/ManagedPreferencesNotifier.h"
#include "base/WeakSelf.h"

namespace wakeloft {

// Word of a configuration profile for one preferences domain arriving,
// changing or going. Nothing documented announces that: the defaults' change
// notification covers only this process's own writes, and key-value
// observing cannot take the domain's dotted keys. So the property lists in
// which macOS keeps a profile's forced values are watched, the Mac's
// (/Library/Managed Preferences/DOMAIN.plist) and this user's
// (/Library/Managed Preferences/USER/DOMAIN.plist), with their folders, which
// may not exist before a first profile. This layout is not an interface: if
// it moves, opening the panel still reads a profile. Kernel events only;
// nothing runs while the files stay as they are. Main thread only.
class ManagedPreferencesWatcher final : public ManagedPreferencesNotifier {
 public:
  explicit ManagedPreferencesWatcher(std::string domain);
  ManagedPreferencesWatcher(const ManagedPreferencesWatcher&) = delete;
  ManagedPreferencesWatcher& operator=(const ManagedPreferencesWatcher&) = delete;

  void observe(std::function<void()> handler) override;

 private:
  void watch();
  void changed();

  std::vector<std::string> paths_;
  std::function<void()> handler_;
  std::vector<std::unique_ptr<VnodeFileWatcher>> watchers_;
  bool isRewatching_ = false;
  WeakSelf<ManagedPreferencesWatcher> weakSelf_{this};
};

}  // namespace wakeloft
