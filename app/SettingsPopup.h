#pragma once

#import <AppKit/AppKit.h>

#include <memory>

#include "prefs/PresetDurationsController.h"

NS_ASSUME_NONNULL_BEGIN

// The preset chooser: a starrable row per duration that may be starred, and
// the hint under them. Follows the presets controller while it is shown.
// Main thread only.
@interface SettingsPopup : NSViewController

- (instancetype)initWithPresets:(std::shared_ptr<wakeloft::PresetDurationsController>)presets NS_DESIGNATED_INITIALIZER;
- (instancetype)initWithNibName:(nullable NSNibName)nibNameOrNil
                         bundle:(nullable NSBundle*)nibBundleOrNil NS_UNAVAILABLE;
- (nullable instancetype)initWithCoder:(NSCoder*)coder NS_UNAVAILABLE;

@end

NS_ASSUME_NONNULL_END
