#include "status/MenuBarIcon.h"

namespace wakeloft {

MenuBarIcon::SpokenLabel MenuBarIcon::spokenLabel() const {
  if (!isOn) return SpokenLabel::off;
  if (keepsLidClosedAwake) {
    return showsTimerBadge ? SpokenLabel::onWithLidClosedAndTimerRunning : SpokenLabel::onWithLidClosed;
  }
  return showsTimerBadge ? SpokenLabel::onWithTimerRunning : SpokenLabel::on;
}

}  // namespace wakeloft
