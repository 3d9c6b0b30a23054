#include "ui/MenuBarItem.h"

#include "ui/TextCatalog.h"

namespace wakeloft::MenuBarItem {

MenuBarIcon icon(const AwakeController& awake, const LidAwakeController& lid) {
  return MenuBarIcon::current(awake.isOn(), awake.activeUntil(), lid.isOn());
}

LocalizedText iconLabel(const MenuBarIcon& icon) {
  using Label = MenuBarIcon::SpokenLabel;
  switch (icon.spokenLabel()) {
    case Label::off: return TextCatalog::iconOff;
    case Label::on: return TextCatalog::iconOn;
    case Label::onWithTimerRunning: return TextCatalog::iconOnWithTimerRunning;
    case Label::onWithLidClosed: return TextCatalog::iconOnWithLidClosed;
    case Label::onWithLidClosedAndTimerRunning: return TextCatalog::iconOnWithLidClosedAndTimerRunning;
  }
  return TextCatalog::iconOff;
}

}  // namespace wakeloft::MenuBarItem
