#include "ui/ManagedSettings.h"

#include <exception>
#include <utility>

#include "base/MainThread.h"

namespace wakeloft {

ManagedSettings::ManagedSettings(Controllers controllers, std::shared_ptr<LidHelperRegistration> registration,
                                 std::shared_ptr<ManagedPreferencesNotifier> changes,
                                 std::function<void()> unregistered)
    : controllers_(std::move(controllers)),
      registration_(std::move(registration)),
      changes_(std::move(changes)),
      unregistered_(std::move(unregistered)) {
  requireMainThread("ManagedSettings");
  changes_->observe([this] { apply(); });
  apply();
}

ManagedSettings::~ManagedSettings() { changes_->observe(nullptr); }

void ManagedSettings::apply() {
  controllers_.lid->refresh();
  if (controllers_.consent) controllers_.consent->reload();
  if (controllers_.automatic) controllers_.automatic->reload();
  if (controllers_.screenLock) controllers_.screenLock->reload();
  if (controllers_.lid->refusal() != LidAwakeRefusal::forbiddenByOrganization) return;
  const auto status = registration_->status();
  if (status != LidHelperStatus::enabled && status != LidHelperStatus::requiresApproval) return;
  try {
    registration_->unregisterHelper();
    if (unregistered_) unregistered_();
  } catch (const std::exception&) {
    // The system's launch service did not answer; the next change of the
    // profile, or the next launch, tries again.
  }
}

}  // namespace wakeloft
