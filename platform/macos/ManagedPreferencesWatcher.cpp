#include "ManagedPreferencesWatcher.h"

#include <dispatch/dispatch.h>
#include <pwd.h>
#include <unistd.h>

#include "base/MainThread.h"

namespace wakeloft {

namespace {

constexpr const char* managedPreferences = "/Library/Managed Preferences";

}  // namespace

ManagedPreferencesWatcher::ManagedPreferencesWatcher(std::string domain) {
  requireMainThread("ManagedPreferencesWatcher");
  const std::string root = managedPreferences;
  const std::string file = domain + ".plist";
  // Each path is watched with its folder; the folders themselves too, so
  // that one made by a first profile is seen.
  paths_ = {root, root + "/" + file};
  if (const passwd* user = getpwuid(getuid()); user && user->pw_name && *user->pw_name) {
    const std::string folder = root + "/" + user->pw_name;
    paths_.push_back(folder);
    paths_.push_back(folder + "/" + file);
  }
}

void ManagedPreferencesWatcher::observe(std::function<void()> handler) {
  requireMainThread("ManagedPreferencesWatcher::observe");
  handler_ = std::move(handler);
  watchers_.clear();
  if (handler_) watch();
}

void ManagedPreferencesWatcher::watch() {
  for (const auto& path : paths_) {
    watchers_.push_back(std::make_unique<VnodeFileWatcher>(path, weakSelf_([](ManagedPreferencesWatcher& self) {
      self.changed();
    })));
  }
}

// A watcher whose folder was missing when it began watches nothing until it
// is made again, so every change makes them all again; not from inside one
// of their handlers, and once for a burst of changes.
void ManagedPreferencesWatcher::changed() {
  if (isRewatching_) return;
  isRewatching_ = true;
  auto rewatch = weakSelf_([](ManagedPreferencesWatcher& self) {
    self.isRewatching_ = false;
    if (!self.handler_) return;
    self.watchers_.clear();
    self.watch();
    self.handler_();
  });
  dispatch_async(dispatch_get_main_queue(), ^{
    rewatch();
  });
}

}  // namespace wakeloft
