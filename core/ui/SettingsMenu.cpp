#include "ui/SettingsMenu.h"

#include "base/MainThread.h"
#include "prefs/FeedbackLink.h"
#include "ui/TextCatalog.h"

namespace wakeloft {

LocalizedText SettingsMenu::buttonTitle() { return TextCatalog::settings; }

std::string_view SettingsMenu::buttonSymbolFor(const std::optional<std::string>& waitingUpdate) {
  return waitingUpdate ? buttonSymbolWithUpdateWaiting : buttonSymbol;
}

LocalizedText SettingsMenu::buttonAccessibilityLabel(const std::optional<std::string>& waitingUpdate) {
  if (!waitingUpdate) return TextCatalog::settings;
  return {TextCatalog::settingsWithUpdateWaiting, {*waitingUpdate}};
}

std::vector<SettingsMenu::Item> SettingsMenu::items(const std::optional<std::string>& waitingUpdate) {
  // The updater's own check shows a waiting update in front, so the item
  // keeps its command and only says what it will find.
  LocalizedText updateTitle = TextCatalog::checkForUpdates;
  if (waitingUpdate) updateTitle = {TextCatalog::installUpdate, {*waitingUpdate}};
  return {
      {TextCatalog::choosePresetDurations, Command::choosePresetDurations, ""},
      {TextCatalog::safetyMenuItem, Command::safety, ""},
      {TextCatalog::automaticMenuItem, Command::automatic, ""},
      {TextCatalog::aboutWakeloft, Command::about, ""},
      {updateTitle, Command::checkForUpdates, ""},
      {TextCatalog::sendFeedback, Command::sendFeedback, ""},
      {std::nullopt, std::nullopt, ""},
      {TextCatalog::quitWakeloft, Command::quit, "q"},
  };
}

SettingsMenu::Point SettingsMenu::popUpLocation(const Bounds& anchor, LayoutDirection layoutDirection) {
  const double x = layoutDirection == LayoutDirection::rightToLeft ? anchor.x + anchor.width + popUpOffset
                                                                   : anchor.x - popUpOffset;
  return {x, anchor.y - popUpOffset};
}

std::string SettingsMenu::feedbackAddress(const std::optional<AboutInfo>& about, const OperatingSystemVersion& system,
                                          const std::vector<std::string>& preferredLocalizations) {
  return FeedbackLink::url(about ? std::optional(about->formattedVersion()) : std::nullopt,
                           FeedbackLink::macOSVersion(system),
                           preferredLocalizations.empty() ? std::nullopt : std::optional(preferredLocalizations[0]));
}

void SettingsMenu::perform(Command command) {
  requireMainThread("SettingsMenu::perform");
  const auto run = [](const std::function<void()>& action) {
    if (action) action();
  };
  switch (command) {
    case Command::choosePresetDurations: show(Popup::settings); return;
    case Command::safety: show(Popup::safety); return;
    case Command::automatic: show(Popup::automatic); return;
    case Command::about: show(Popup::about); return;
    case Command::checkForUpdates: run(actions_.checkForUpdates); return;
    case Command::sendFeedback: run(actions_.sendFeedback); return;
    case Command::quit: run(actions_.quit); return;
  }
}

void SettingsMenu::show(Popup popup) {
  // A menu-bar app is not frontmost while its menu shows; without this the
  // popover could not take keyboard focus.
  if (actions_.activate) actions_.activate();
  popup_ = popup;
}

}  // namespace wakeloft
