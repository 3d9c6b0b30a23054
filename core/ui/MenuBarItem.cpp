#include "ui/MenuBarItem.h"

#include "ui/TextCatalog.h"

namespace wakeloft::MenuBarItem {

MenuBarIcon icon(const AwakeController& awake, const LidAwakeController& lid, bool isUpdateWaiting) {
  return MenuBarIcon::current(awake.isOn(), awake.activeUntil(), lid.isOn(), isUpdateWaiting);
}

namespace {

LocalizedText stateLabel(const MenuBarIcon& icon) {
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

}  // namespace

LocalizedText iconLabel(const MenuBarIcon& icon, const TextLookup& lookup) {
  auto state = stateLabel(icon);
  if (!icon.showsUpdateDot) return state;
  return LocalizedText(TextCatalog::iconWithUpdateWaiting, {state.resolved(lookup)});
}

}  // namespace wakeloft::MenuBarItem
