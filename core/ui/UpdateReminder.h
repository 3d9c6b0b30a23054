#pragma once

#include <optional>
#include <string>

#include "base/Observation.h"

namespace wakeloft {

// Gentle reminders of a scheduled update. The updater brings a scheduled
// update's alert to the front only when it can have immediate focus (just
// after launch); any other time a menu-bar app's alert would open behind the
// user's windows, unseen. So then the app shows it gently instead: the
// settings button and its menu say which update waits, until the user turns
// to it or the update session ends. Main thread only.
class UpdateReminder {
 public:
  // Whether the updater should show a scheduled update itself.
  static bool updaterShowsScheduledUpdate(bool inImmediateFocus) { return inImmediateFocus; }

  // The updater is about to show an update (`updaterShowsIt`), or leaves it
  // to the app; `version` is the update's version for display.
  void willShowUpdate(bool updaterShowsIt, bool userInitiated, std::string version);
  // The user has turned to the update's alert.
  void userAttended();
  // The update session is over, installed, skipped or dismissed.
  void sessionFinished();

  // The version of the update that waits for the user, if one does.
  const std::optional<std::string>& waitingVersion() const { return waiting_.get(); }
  ChangeSignal& changed() { return changed_; }

 private:
  ChangeSignal changed_;
  Published<std::optional<std::string>> waiting_{changed_, std::nullopt};
};

}  // namespace wakeloft
