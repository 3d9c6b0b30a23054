#include "ui/AwakePanelContent.h"

#include <cstdint>

#include "base/NumberWords.h"
#include "base/TimeOfDayWords.h"
#include "status/AwakeExplanation.h"
#include "status/CountdownText.h"
#include "status/MenuBarIcon.h"
#include "status/SpokenStatus.h"
#include "ui/FailureText.h"
#include "ui/TextCatalog.h"
#include "ui/TextCount.h"

namespace wakeloft {

namespace {

// The processes the session also ends with, when automation bound some:
// the one's name, or how many.
struct BoundProcesses {
  std::size_t count = 0;
  std::string name;
};

BoundProcesses boundProcesses(const Controllers& controllers) {
  if (!controllers.binding) return {};
  const auto processes = controllers.binding->endingLast();
  if (processes.empty()) return {};
  return {processes.size(), processes.front().name};
}

// Several processes are named only while none of their holds has an end, so
// only the texts without time left count them.
LocalizedText untilBound(const BoundProcesses& bound, TextKey one, TextKey several, const std::string& locale) {
  if (bound.count == 1) return {one, {bound.name}};
  return {several, {TextCount::of(static_cast<std::int64_t>(bound.count), locale)}};
}

LocalizedText spokenStatus(const AwakeController& awake, const BoundProcesses& bound, const std::string& locale) {
  const auto status = SpokenStatus::describing(awake.isOn(), awake.remaining());
  const bool isBound = bound.count > 0;
  switch (status.kind()) {
    case SpokenStatus::Kind::off: return TextCatalog::spokenOff;
    case SpokenStatus::Kind::on:
      if (!isBound) return TextCatalog::spokenOn;
      return untilBound(bound, TextCatalog::spokenOnUntilProcessEnds, TextCatalog::spokenOnUntilProcessesEnd, locale);
    case SpokenStatus::Kind::lessThanAMinuteLeft:
      if (isBound) return {TextCatalog::spokenLessThanAMinuteLeftOrUntilProcessEnds, {bound.name}};
      return TextCatalog::spokenLessThanAMinuteLeft;
    case SpokenStatus::Kind::timeLeft: break;
  }
  const auto left = status.left()->spokenLabel(locale);
  if (isBound) return {TextCatalog::spokenTimeLeftOrUntilProcessEnds, {left, bound.name}};
  return {TextCatalog::spokenTimeLeft, {left}};
}

LocalizedText statusLineOf(const AwakeController& awake, const BoundProcesses& bound, const std::string& locale) {
  if (!awake.isOn()) return TextCatalog::statusOff;
  const bool isBound = bound.count > 0;
  if (!awake.activeUntil()) {
    if (!isBound) return TextCatalog::statusOn;
    return untilBound(bound, TextCatalog::statusOnUntilProcessEnds, TextCatalog::statusOnUntilProcessesEnd, locale);
  }
  const auto countdown = CountdownText::formatted(awake.remaining().value_or(0), locale);
  if (isBound) return {TextCatalog::statusOnWithTimeLeftOrUntilProcessEnds, {countdown, bound.name}};
  return {TextCatalog::statusOnWithTimeLeft, {countdown}};
}

using AutomaticRule = AutomaticRules::Rule;

// Why an automatic session runs: the rule named first, with what it names,
// and how many others hold beside it.
struct AutomaticReason {
  AutomaticRule rule;
  std::string subject;  // the app's name, or the schedule's end as a time of day
  std::size_t others = 0;
};

std::optional<AutomaticReason> automaticReason(const AutomaticSessionController& automatic,
                                               const std::string& locale) {
  const auto& holding = automatic.holding();
  if (holding.empty()) return std::nullopt;
  AutomaticReason reason{holding.front(), {}, holding.size() - 1};
  if (reason.rule == AutomaticRule::apps) {
    const auto app = AutomaticRules::runningApp(automatic.settings(), automatic.facts());
    reason.subject = app ? app->name : std::string();
  }
  if (reason.rule == AutomaticRule::schedule) {
    reason.subject = TimeOfDayWords::shortTime(automatic.settings().schedule.end, locale);
  }
  return reason;
}

struct AutomaticWording {
  LocalizedText status;
  LocalizedText spoken;
};

AutomaticWording wordingFor(const AutomaticReason& reason, const std::string& locale) {
  const TextArgument more = TextCount::of(static_cast<std::int64_t>(reason.others), locale);
  const bool alone = reason.others == 0;
  switch (reason.rule) {
    case AutomaticRule::externalDisplay:
      if (alone) return {TextCatalog::statusOnWhileDisplayConnected, TextCatalog::spokenOnWhileDisplayConnected};
      return {{TextCatalog::statusOnWhileDisplayConnectedAndMore, {more}},
              {TextCatalog::spokenOnWhileDisplayConnectedAndMore, {more}}};
    case AutomaticRule::powerAdapter:
      if (alone) return {TextCatalog::statusOnWhileOnPowerAdapter, TextCatalog::spokenOnWhileOnPowerAdapter};
      return {{TextCatalog::statusOnWhileOnPowerAdapterAndMore, {more}},
              {TextCatalog::spokenOnWhileOnPowerAdapterAndMore, {more}}};
    case AutomaticRule::apps:
      if (alone) {
        return {{TextCatalog::statusOnWhileAppOpen, {reason.subject}},
                {TextCatalog::spokenOnWhileAppOpen, {reason.subject}}};
      }
      return {{TextCatalog::statusOnWhileAppOpenAndOneMore, {reason.subject}},
              {TextCatalog::spokenOnWhileAppOpenAndOneMore, {reason.subject}}};
    case AutomaticRule::schedule: break;
  }
  // Named last, the schedule never has others beside it.
  return {{TextCatalog::statusOnUntilScheduleEnds, {reason.subject}},
          {TextCatalog::spokenOnUntilScheduleEnds, {reason.subject}}};
}

// The wording of a session the rules keep; none for any other session, or
// for one held for processes, which the processes' wording tells.
std::optional<AutomaticWording> automaticWording(const Controllers& controllers, const BoundProcesses& bound,
                                                 const std::string& locale) {
  const auto& awake = *controllers.awake;
  if (!controllers.automatic || !awake.isOn() || !awake.isAutomatic() || bound.count > 0) return std::nullopt;
  if (const auto left = controllers.automatic->graceLeft()) {
    return AutomaticWording{{TextCatalog::statusOnEndingIn, {CountdownText::formatted(*left, locale)}},
                            TextCatalog::spokenOnEndingSoon};
  }
  const auto reason = automaticReason(*controllers.automatic, locale);
  if (!reason) return std::nullopt;
  return wordingFor(*reason, locale);
}

// Paused by the user: until the one rule that holds stops, or until none
// does when several hold or they have just stopped.
std::optional<PanelNote> automaticPauseNote(const Controllers& controllers, const std::string& locale) {
  if (!controllers.automatic || !controllers.automatic->isSuppressed()) return std::nullopt;
  const auto reason = automaticReason(*controllers.automatic, locale);
  LocalizedText text = TextCatalog::pausedUntilNoRuleHolds;
  if (reason && reason->others == 0) {
    switch (reason->rule) {
      case AutomaticRule::externalDisplay: text = TextCatalog::pausedUntilDisplayDisconnected; break;
      case AutomaticRule::powerAdapter: text = TextCatalog::pausedUntilPowerAdapterDisconnected; break;
      case AutomaticRule::apps: text = {TextCatalog::pausedUntilAppQuits, {reason->subject}}; break;
      case AutomaticRule::schedule: text = {TextCatalog::pausedUntilScheduleEnds, {reason->subject}}; break;
    }
  }
  return PanelNote{NoteSymbol::information, text,
                   PanelButton{TextCatalog::resume, PanelAction::resumeAutomaticSessions(),
                               LocalizedText(TextCatalog::resumeAutomaticSessions)}};
}

// A power assertion cannot keep a closed laptop on battery awake; only
// Deepwake can, so a session the rules keep there says so.
bool lidClosingStillSleeps(const Controllers& controllers) {
  const auto& awake = *controllers.awake;
  return controllers.automatic && awake.isOn() && awake.isAutomatic() && !controllers.lid->isOn() &&
         !controllers.automatic->holding().empty() && !controllers.automatic->facts().isOnPowerAdapter;
}

LocalizedText sentenceFor(AwakeExplanation explanation) {
  switch (explanation.value()) {
    case AwakeExplanation::sleepsNormally: return TextCatalog::sleepsNormally;
    case AwakeExplanation::awakeIndefinitely: return TextCatalog::awakeIndefinitely;
    case AwakeExplanation::awakeUntilSessionEnds: return TextCatalog::awakeUntilSessionEnds;
    case AwakeExplanation::awakeWithLidClosedIndefinitely: return TextCatalog::awakeWithLidClosedIndefinitely;
    case AwakeExplanation::awakeWithLidClosedUntilSessionEnds: return TextCatalog::awakeWithLidClosedUntilSessionEnds;
  }
  return TextCatalog::sleepsNormally;
}

AwakePanelContent::SessionControls sessionControlsFor(const AwakeController& awake,
                                                      const PresetDurationsController& presets,
                                                      const std::string& locale) {
  AwakePanelContent::SessionControls controls;
  controls.shown = AwakeSessionControls::shown(awake.isOn(), awake.activeUntil());
  if (controls.shown == AwakeSessionControls::cancelTimer) {
    controls.cancelTimer = PanelButton{TextCatalog::stayAwakeWithoutTimer, PanelAction::turnOnAwakeMode(std::nullopt)};
    return controls;
  }
  if (presets.pinned().empty()) return controls;
  controls.presetsCaption = TextCatalog::stayAwakeFor;
  for (const auto& duration : presets.pinned()) {
    controls.presets.push_back({LocalizedText::verbatim(duration.label(locale)), PanelAction::turnOnAwakeMode(duration),
                                LocalizedText::verbatim(duration.spokenLabel(locale))});
  }
  return controls;
}

std::optional<PanelNote> precautionNote(LidClosePrecaution precaution) {
  switch (precaution.kind()) {
    case LidClosePrecaution::Kind::none: return std::nullopt;
    case LidClosePrecaution::Kind::beforeFirstUse:
      return PanelNote{NoteSymbol::heat, TextCatalog::heatWarning,
                       PanelButton{TextCatalog::iUnderstand, PanelAction::acknowledgeHeatWarning(),
                                   LocalizedText(TextCatalog::iUnderstandTheHeatWarning)}};
    case LidClosePrecaution::Kind::noHeatPath: return PanelNote{NoteSymbol::heat, TextCatalog::noHeatPath, std::nullopt};
  }
  return std::nullopt;
}

using Rule = DeepwakeGuardrails::Stop::Rule;

LocalizedText stopText(const DeepwakeGuardrails::Stop& stop, const std::string& locale) {
  const auto floor = NumberWords::percent(stop.batteryFloor, locale);
  switch (stop.rule) {
    case Rule::batteryFloor:
      return {stop.whenTurningOn ? TextCatalog::refusedAtBatteryFloor : TextCatalog::stoppedAtBatteryFloor, {floor}};
    case Rule::lowPowerMode:
      return stop.whenTurningOn ? TextCatalog::refusedInLowPowerMode : TextCatalog::stoppedInLowPowerMode;
    case Rule::criticalHeat: return stop.whenTurningOn ? TextCatalog::refusedByHeat : TextCatalog::stoppedByHeat;
    case Rule::lidOpened: break;
  }
  return TextCatalog::stoppedWhenLidOpened;
}

std::optional<PanelNote> guardrailNote(const LidAwakeController& lid, const std::string& locale) {
  if (const auto& stop = lid.guardrailStop()) {
    return PanelNote{stop->rule == Rule::criticalHeat ? NoteSymbol::heat : NoteSymbol::information,
                     stopText(*stop, locale)};
  }
  const auto& conditions = lid.machineConditions();
  switch (lid.guardrailNotice()) {
    case DeepwakeGuardrails::Notice::none: return std::nullopt;
    case DeepwakeGuardrails::Notice::pausedForPower:
      return PanelNote{NoteSymbol::information, TextCatalog::pausedWaitingForPower};
    case DeepwakeGuardrails::Notice::seriousHeat: return PanelNote{NoteSymbol::heat, TextCatalog::runningHot};
    case DeepwakeGuardrails::Notice::batteryAboveFloor: break;
  }
  return PanelNote{NoteSymbol::information,
                   {TextCatalog::onBatteryWithFloor,
                    {NumberWords::percent(conditions.batteryCharge.value_or(0), locale),
                     NumberWords::percent(lid.guardrailSettings().batteryFloor, locale)}}};
}

// The charge on battery is there to see; what ended, paused or warns of
// Deepwake is also said.
std::optional<LocalizedText> spokenGuardrail(const LidAwakeController& lid, const std::optional<PanelNote>& note) {
  if (!note || (!lid.guardrailStop() && lid.guardrailNotice() == DeepwakeGuardrails::Notice::batteryAboveFloor)) {
    return std::nullopt;
  }
  return note->text;
}

std::optional<PanelNote> locationNote(const LidAwakeController& lid) {
  if (lid.refusal() != LidAwakeRefusal::translocated) return std::nullopt;
  return PanelNote{NoteSymbol::information, TextCatalog::runsTranslocated,
                   PanelButton{TextCatalog::showApplicationsFolder, PanelAction::revealApplicationsFolder()}};
}

std::optional<PanelNote> failureNote(const std::optional<AwakeFailure>& failure) {
  if (!failure) return std::nullopt;
  return PanelNote{NoteSymbol::error, FailureText::describing(*failure), std::nullopt};
}

std::optional<AwakePanelContent::ScreenOn> screenOnSection(const Controllers& controllers) {
  if (!controllers.screenOn) return std::nullopt;
  const auto& screenOn = *controllers.screenOn;
  AwakePanelContent::ScreenOn section{{TextCatalog::keepScreenOn, screenOn.keepsScreenOn(), true,
                                       PanelAction::setKeepScreenOn(true), PanelAction::setKeepScreenOn(false),
                                       TextCatalog::keepScreenOnHelp},
                                      std::nullopt};
  if (const auto& failure = screenOn.lastFailure()) {
    const auto* refused = std::get_if<AwakeFailure::AssertionRefused>(&failure->value());
    section.failure = refused ? PanelNote{NoteSymbol::error, {TextCatalog::screenOnRefused, {refused->code}}}
                              : failureNote(failure);
  }
  return section;
}

// macOS 15 renamed the pane.
LocalizedText loginItemsLink(const OperatingSystemVersion& system) {
  return system.majorVersion >= 15 ? TextCatalog::openLoginItemsAndExtensions : TextCatalog::openLoginItems;
}

AwakePanelContent::Login loginSection(const LoginItemController& loginItem, const OperatingSystemVersion& system) {
  AwakePanelContent::Login login{{TextCatalog::openAtLogin, loginItem.isRegistered(), true,
                                  PanelAction::setOpenAtLogin(true), PanelAction::setOpenAtLogin(false)},
                                 {},
                                 {},
                                 {}};
  if (loginItem.needsApproval()) {
    login.approval = PanelNote{NoteSymbol::information, TextCatalog::approveInSystemSettings,
                               PanelButton{loginItemsLink(system), PanelAction::openLoginItemsSettings()}};
  }
  if (loginItem.isRegistered() && !loginItem.isAtStableLocation()) {
    login.location = PanelNote{NoteSymbol::information, TextCatalog::notInApplications, std::nullopt};
  }
  login.failure = failureNote(loginItem.lastFailure());
  return login;
}

}  // namespace

std::string AwakePanelContent::Header::spokenLabel(const TextLookup& lookup) const {
  std::string label = spokenStatus.resolved(lookup);
  if (spokenNote) label += ". " + spokenNote->resolved(lookup);
  return label;
}

AwakePanelContent AwakePanelContent::current(const Controllers& controllers, const std::string& locale,
                                             const OperatingSystemVersion& system) {
  const auto& awake = *controllers.awake;
  const auto& lid = *controllers.lid;
  const auto bound = boundProcesses(controllers);

  AwakePanelContent content{
      .header = {MenuBarIcon::current(awake.isOn(), awake.activeUntil(), lid.isOn()).glyph(), TextCatalog::wakeloft,
                 spokenStatus(awake, bound, locale)},
      .statusLine = statusLineOf(awake, bound, locale),
      .explanation = sentenceFor(AwakeExplanation::describing(awake.isOn(), awake.activeUntil(), lid.isOn())),
      .mainButton = {awake.isOn() ? TextCatalog::turnOff : TextCatalog::turnOn, PanelAction::toggleAwakeMode()},
      .sessionControls = sessionControlsFor(awake, *controllers.presets, locale),
      .screenOn = screenOnSection(controllers),
      // A reason the mode cannot be used at all disables the switch; the
      // precaution below says what to do about it. The caption explains the
      // coined name, so VoiceOver gives it as the switch's help.
      .deepwake = {{TextCatalog::deepwake, lid.isOn() || lid.isPausedForPower(), !lid.refusal(),
                    PanelAction::setDeepwake(true), PanelAction::setDeepwake(false), TextCatalog::deepwakeCaption},
                   TextCatalog::deepwakeCaption,
                   precautionNote(lid.precaution()),
                   failureNote(lid.lastFailure()),
                   guardrailNote(lid, locale),
                   locationNote(lid)},
      .retry = {},
      .login = loginSection(*controllers.loginItem, system),
  };
  content.header.spokenNote = spokenGuardrail(lid, content.deepwake.guardrail);
  content.deepwake.isHidden = lid.refusal() == LidAwakeRefusal::forbiddenByOrganization;
  if (controllers.consent && controllers.consent->isAsking()) {
    content.deepwake.automationQuestion = {TextCatalog::deepwakeAutomationQuestion,
                                           {TextCatalog::dontAllow, PanelAction::answerDeepwakeAutomation(false)},
                                           {TextCatalog::allow, PanelAction::answerDeepwakeAutomation(true)}};
  }
  if (awake.isRequested() && !awake.isOn()) {
    content.retry.dontRetry = PanelButton{TextCatalog::dontRetry, PanelAction::stopRetrying()};
  }
  content.retry.failure = failureNote(awake.lastFailure());
  if (const auto automatic = automaticWording(controllers, bound, locale)) {
    content.statusLine = automatic->status;
    content.header.spokenStatus = automatic->spoken;
  }
  if (lidClosingStillSleeps(controllers)) content.explanation = TextCatalog::lidClosedSleepsOnBattery;
  content.automaticPause = automaticPauseNote(controllers, locale);
  return content;
}

}  // namespace wakeloft
