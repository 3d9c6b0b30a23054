#include "ui/TextCatalog.h"

#include <array>

namespace wakeloft {

std::span<const TextKey> TextCatalog::all() {
  static constexpr std::array keys{
      assertionRefused,
      lidHelperUnavailable,
      lidHelperRequiresApproval,
      settingUnreadable,
      settingUnwritten,
      settingNotPutBack,
      deadlineNotANumber,
      settingOnElsewhere,
      settingTurnedOffElsewhere,
      wakeloft,
      spokenOff,
      spokenOn,
      spokenLessThanAMinuteLeft,
      spokenTimeLeft,
      statusOnWithTimeLeft,
      statusOn,
      statusOff,
      sleepsNormally,
      awakeIndefinitely,
      awakeUntilSessionEnds,
      awakeWithLidClosedIndefinitely,
      awakeWithLidClosedUntilSessionEnds,
      turnOn,
      turnOff,
      stayAwakeWithoutTimer,
      stayAwakeFor,
      deepwake,
      deepwakeCaption,
      heatWarning,
      iUnderstand,
      iUnderstandTheHeatWarning,
      noHeatPath,
      dontRetry,
      openAtLogin,
      approveInSystemSettings,
      notInApplications,
      openLoginItemsAndExtensions,
      openLoginItems,
      settings,
      choosePresetDurations,
      aboutWakeloft,
      checkForUpdates,
      sendFeedback,
      quitWakeloft,
      presetDurations,
      presetDurationsHint,
      version,
      quitAndStopAwakeMode,
      awakeModeQuitConsequence,
      quit,
      cancel,
      leftInThisSession,
      quitAndEndDeepwakeQuestion,
      deepwakeQuitConsequence,
      quitAndEndDeepwake,
  };
  return keys;
}

}  // namespace wakeloft
