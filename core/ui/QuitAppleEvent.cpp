#include "ui/QuitAppleEvent.h"

#include <algorithm>

namespace wakeloft {

bool QuitAppleEvent::isSystemQuit(const std::optional<QuitAppleEvent>& current) {
  if (!current || current->eventClass != coreEventClass || current->eventID != quitApplication) return false;
  const auto reason = current->reasonParameter ? current->reasonParameter : current->reasonAttribute;
  if (!reason) return false;
  return std::find(systemQuitReasons.begin(), systemQuitReasons.end(), *reason) != systemQuitReasons.end();
}

}  // namespace wakeloft
