#pragma once

#include "lid/LidAwakeController.h"
#include "session/AwakeController.h"
#include "status/MenuBarIcon.h"
#include "ui/LocalizedText.h"

namespace wakeloft {

// The status item in the menu bar: its icon and what VoiceOver calls it.
// The image is the icon's own, drawn for the app's layout direction.
namespace MenuBarItem {

MenuBarIcon icon(const AwakeController& awake, const LidAwakeController& lid, bool isUpdateWaiting = false);
// A waiting update is said after the awake state, whose words `lookup`
// finds in the app's language.
LocalizedText iconLabel(const MenuBarIcon& icon, const TextLookup& lookup = {});

}  // namespace MenuBarItem
}  // namespace wakeloft
