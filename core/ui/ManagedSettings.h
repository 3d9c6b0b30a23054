#pragma once

#include <functional>
#include <memory>

#include "base/ManagedPreferencesNotifier.h"
#include "lid/LidHelperRegistration.h"
#include "ui/Controllers.h"

namespace wakeloft {

// Follows a configuration profile while the app runs. Whenever the managed
// preferences may have changed, and once at launch, the controllers read
// what the profile forces again (a Deepwake it forbids ends there), and
// while Deepwake is forbidden the helper is unregistered, so that a daemon
// the organization does not allow is not left behind. Main thread only.
class ManagedSettings {
 public:
  // `unregistered` runs after the helper was unregistered.
  ManagedSettings(Controllers controllers, std::shared_ptr<LidHelperRegistration> registration,
                  std::shared_ptr<ManagedPreferencesNotifier> changes, std::function<void()> unregistered = {});
  ManagedSettings(const ManagedSettings&) = delete;
  ManagedSettings& operator=(const ManagedSettings&) = delete;
  ~ManagedSettings();

  void apply();

 private:
  Controllers controllers_;
  std::shared_ptr<LidHelperRegistration> registration_;
  std::shared_ptr<ManagedPreferencesNotifier> changes_;
  std::function<void()> unregistered_;
};

}  // namespace wakeloft
