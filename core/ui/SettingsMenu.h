#pragma once

#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "glyph/LayoutDirection.h"
#include "prefs/AboutInfo.h"
#include "prefs/OperatingSystemVersion.h"
#include "ui/LocalizedText.h"

namespace wakeloft {

// The "Settings" button at the foot of the panel and the native menu it
// opens, with the popover its commands may show. The menu is built anew each
// time it opens; the popover shown is the one piece of state the interface
// keeps of its own. Main thread only.
class SettingsMenu {
 public:
  enum class Command { choosePresetDurations, safety, automatic, about, checkForUpdates, sendFeedback, quit };
  // The popovers anchored to the button; one at a time.
  enum class Popup { settings, safety, automatic, about };

  // A menu item, or a separator when it has no title.
  struct Item {
    std::optional<LocalizedText> title;
    std::optional<Command> command;
    // Empty for none.
    std::string keyEquivalent;

    bool isSeparator() const { return !title; }
    friend bool operator==(const Item&, const Item&) = default;
  };

  // The anchor view's bounds in its own unflipped coordinates (y grows
  // upwards).
  struct Bounds {
    double x = 0;
    double y = 0;
    double width = 0;
    double height = 0;
  };
  struct Point {
    double x = 0;
    double y = 0;
    friend bool operator==(const Point&, const Point&) = default;
  };

  // What the commands reach beyond the menu: the updater, the browser, the
  // application's terminate (which goes through the quit flow), and bringing
  // the app forward so that a popover can take the keyboard.
  struct Actions {
    std::function<void()> checkForUpdates;
    std::function<void()> sendFeedback;
    std::function<void()> quit;
    std::function<void()> activate;
  };

  static constexpr double minimumWidth = 260;
  static constexpr double buttonHeight = 22;
  static constexpr std::string_view buttonSymbol = "gearshape";
  // In place of the gear while an update waits.
  static constexpr std::string_view buttonSymbolWithUpdateWaiting = "arrow.down.circle";
  static constexpr std::string_view buttonTrailingSymbol = "chevron.down";
  // How far from the anchor the menu pops up, down and outwards.
  static constexpr double popUpOffset = 14;

  explicit SettingsMenu(Actions actions) : actions_(std::move(actions)) {}

  static LocalizedText buttonTitle();
  static std::string_view buttonSymbolFor(const std::optional<std::string>& waitingUpdate);
  // What VoiceOver calls the button; it names a waiting update.
  static LocalizedText buttonAccessibilityLabel(const std::optional<std::string>& waitingUpdate);
  // In order; only Quit has a key equivalent. While an update waits, its
  // item offers that update instead of a check.
  static std::vector<Item> items(const std::optional<std::string>& waitingUpdate = std::nullopt);
  // Below the anchor's bottom edge, beyond its leading edge: the left one in
  // left-to-right layout, the right one in right-to-left.
  static Point popUpLocation(const Bounds& anchor, LayoutDirection layoutDirection);

  // The feedback page for this app, this system and the interface language
  // (the first of the bundle's preferred localisations).
  static std::string feedbackAddress(const std::optional<AboutInfo>& about, const OperatingSystemVersion& system,
                                     const std::vector<std::string>& preferredLocalizations);

  void perform(Command command);
  // The popover went away, by the user or the system.
  void popupClosed() { popup_.reset(); }
  const std::optional<Popup>& popup() const { return popup_; }

 private:
  void show(Popup popup);

  Actions actions_;
  std::optional<Popup> popup_;
};

}  // namespace wakeloft
