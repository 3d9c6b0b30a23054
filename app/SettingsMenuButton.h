#pragma once

#import <AppKit/AppKit.h>

#include <memory>

#include "automatic/AutomaticSessionController.h"
#include "automatic/ScreenLockSetting.h"
#include "lid/DeepwakeAutomationConsent.h"
#include "lid/LidAwakeController.h"
#include "prefs/PresetDurationsController.h"
#include "ui/UpdateReminder.h"

NS_ASSUME_NONNULL_BEGIN

// The "Settings" button at the foot of the panel: its native menu, built
// each time it opens and popped up beside the menu anchor, and the preset
// chooser and About box, one popover at a time, anchored to the button. The
// portable SettingsMenu decides what each command does; the Safety popover
// sets Deepwake's guardrails, the Automatic popover the rules that keep the
// Mac awake by themselves. While an update
// waits, the button's symbol and its menu say so. Main thread only.
@interface SettingsMenuButton : NSObject <NSPopoverDelegate>

- (instancetype)initWithPresets:(std::shared_ptr<wakeloft::PresetDurationsController>)presets
                            lid:(std::shared_ptr<wakeloft::LidAwakeController>)lid
                        consent:(std::shared_ptr<wakeloft::DeepwakeAutomationConsent>)consent
                      automatic:(std::shared_ptr<wakeloft::AutomaticSessionController>)automatic
                     screenLock:(std::shared_ptr<wakeloft::ScreenLockSetting>)screenLock
                 updateReminder:(std::shared_ptr<wakeloft::UpdateReminder>)reminder
                checkForUpdates:(void (^)(void))checkForUpdates NS_DESIGNATED_INITIALIZER;
- (instancetype)init NS_UNAVAILABLE;

// The button's row, for the panel to lay out.
@property(nonatomic, readonly) NSView* view;

@end

NS_ASSUME_NONNULL_END
