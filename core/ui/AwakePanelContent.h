#pragma once

#include <optional>
#include <string>
#include <vector>

#include "glyph/AwakeGlyph.h"
#include "prefs/OperatingSystemVersion.h"
#include "status/AwakeSessionControls.h"
#include "ui/Controllers.h"
#include "ui/PanelControls.h"

namespace wakeloft {

// Everything the awake panel shows, top to bottom, computed from the four
// controllers; the view lays it out and performs the actions. Recomputed
// whenever a controller changes, and every second while a countdown runs.
struct AwakePanelContent {
  static constexpr double width = 260;
  static constexpr double blockSpacing = 14;
  // The status line is redrawn this often, so the countdown ticks.
  static constexpr double statusRedrawInterval = 1.0;
  // The caption of the presets sits this far above their row.
  static constexpr double presetsCaptionSpacing = 6;
  // The box a footnote's symbol sits in, so the texts line up; scales with
  // the footnote text style.
  static constexpr double noteSymbolWidth = 12;

  // The glyph and the title; one accessibility element whose label is the
  // spoken status.
  struct Header {
    AwakeGlyph glyph;
    LocalizedText title;
    LocalizedText spokenStatus;
    // Said after the status: why a guardrail ended or paused Deepwake.
    std::optional<LocalizedText> spokenNote = std::nullopt;

    // The one VoiceOver label: the status, then the note as a sentence.
    std::string spokenLabel(const TextLookup& lookup) const;
    friend bool operator==(const Header&, const Header&) = default;
  };

  // "Stay awake without a timer" while a timer runs; otherwise the caption
  // and one button per starred preset, or nothing when none is starred.
  struct SessionControls {
    AwakeSessionControls shown = AwakeSessionControls::presets;
    std::optional<PanelButton> cancelTimer;
    std::optional<LocalizedText> presetsCaption;
    std::vector<PanelButton> presets;

    bool isEmpty() const { return !cancelTimer && presets.empty(); }
    friend bool operator==(const SessionControls&, const SessionControls&) = default;
  };

  // "Keep the Screen On", compact under the session controls, its help
  // saying what else a screen kept on keeps away; the refusal under it.
  struct ScreenOn {
    PanelSwitch toggle;
    std::optional<PanelNote> failure;
    friend bool operator==(const ScreenOn&, const ScreenOn&) = default;
  };

  // The caption under the switch is also the switch's accessibility help,
  // where VoiceOver reads it instead of as a text of its own.
  // The switch stays on while a guardrail pauses Deepwake for power: the
  // user's wish stands.
  struct Deepwake {
    // Asked when a script or Shortcut first turns Deepwake on, until answered.
    struct Question {
      LocalizedText text;
      PanelButton dontAllow;
      PanelButton allow;
      friend bool operator==(const Question&, const Question&) = default;
    };

    PanelSwitch toggle;
    LocalizedText caption;
    std::optional<PanelNote> precaution;
    std::optional<PanelNote> failure;
    // The guardrail at work: why it stopped, the pause, the heat, or the
    // charge and the floor on battery.
    std::optional<PanelNote> guardrail = std::nullopt;
    // A translocated copy: move the app to Applications, with the link that
    // shows that folder.
    std::optional<PanelNote> location = std::nullopt;
    std::optional<Question> automationQuestion = std::nullopt;
    // Where a configuration profile forbids Deepwake, the block is not shown.
    bool isHidden = false;
    friend bool operator==(const Deepwake&, const Deepwake&) = default;
  };

  // Only while a session was asked for but is not running.
  struct Retry {
    std::optional<PanelButton> dontRetry;
    std::optional<PanelNote> failure;
    friend bool operator==(const Retry&, const Retry&) = default;
  };

  struct Login {
    PanelSwitch toggle;
    // Approval pending: the hint with the link to the login-item settings.
    std::optional<PanelNote> approval;
    // Registered but outside the Applications folder.
    std::optional<PanelNote> location;
    std::optional<PanelNote> failure;
    friend bool operator==(const Login&, const Login&) = default;
  };

  Header header;
  LocalizedText statusLine;
  LocalizedText explanation;
  // While the user has paused automatic sessions: until when, with "Resume".
  std::optional<PanelNote> automaticPause = std::nullopt;
  PanelButton mainButton;
  SessionControls sessionControls;
  // Absent where the app keeps no display on.
  std::optional<ScreenOn> screenOn;
  Deepwake deepwake;
  Retry retry;
  // A divider comes before the login section and another after it, then
  // the settings menu.
  Login login;

  // Durations are put into words for `locale`, the app's resolved one:
  // abbreviated on screen, in full words for VoiceOver. The
  // login-items link is named as the running system names that pane.
  static AwakePanelContent current(const Controllers& controllers, const std::string& locale,
                                   const OperatingSystemVersion& system);

  // What the panel does when it appears and each time its window becomes
  // key.
  static PanelAction onOpen() { return PanelAction::refreshOnOpen(); }

  friend bool operator==(const AwakePanelContent&, const AwakePanelContent&) = default;
};

}  // namespace wakeloft
