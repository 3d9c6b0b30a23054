#include "ui/UpdateReminder.h"

#include <utility>

#include "base/MainThread.h"

namespace wakeloft {

void UpdateReminder::willShowUpdate(bool updaterShowsIt, bool userInitiated, std::string version) {
  requireMainThread("UpdateReminder::willShowUpdate");
  // A check the user asked for, or an alert already in front, needs no hint.
  if (updaterShowsIt || userInitiated) return;
  waiting_.set(std::move(version));
}

void UpdateReminder::userAttended() {
  requireMainThread("UpdateReminder::userAttended");
  waiting_.set(std::nullopt);
}

void UpdateReminder::sessionFinished() {
  requireMainThread("UpdateReminder::sessionFinished");
  waiting_.set(std::nullopt);
}

}  // namespace wakeloft
