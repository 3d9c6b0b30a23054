#pragma once

#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "automatic/RunningApplications.h"

namespace wakeloft {

// The apps in the Dock, from the shared workspace: read once, then kept up
// to date by the workspace's own notification centre's launch and quit
// notifications, which it posts on the main thread's queue here. Those are
// not posted for background and menu-bar-only (LSUIElement) apps, so such
// apps are left out of the first reading too: an app counted once is always
// seen to quit. Nothing polls. Main thread only.
class WorkspaceRunningApplications final : public RunningApplications {
 public:
  WorkspaceRunningApplications();
  ~WorkspaceRunningApplications() override;
  WorkspaceRunningApplications(const WorkspaceRunningApplications&) = delete;
  WorkspaceRunningApplications& operator=(const WorkspaceRunningApplications&) = delete;

  std::vector<std::string> bundleIdentifiers() const override;
  void observe(std::function<void()> handler) override;

 private:
  struct Observation;  // the apps by process, the handler, the observer tokens

  std::shared_ptr<Observation> observation_;
};

}  // namespace wakeloft
