#pragma once

#import <AppKit/AppKit.h>

#include <memory>

#include "lid/DeepwakeAutomationConsent.h"
#include "lid/LidAwakeController.h"

NS_ASSUME_NONNULL_BEGIN

// The Safety popover: Deepwake's battery floor as a pop-up choice, its
// three switches, whether scripts may turn it on, and a line under each
// saying what it does. Follows the lid controller and the consent while it
// is shown. Main thread only.
@interface SafetyPopup : NSViewController

- (instancetype)initWithLid:(std::shared_ptr<wakeloft::LidAwakeController>)lid
                    consent:(std::shared_ptr<wakeloft::DeepwakeAutomationConsent>)consent NS_DESIGNATED_INITIALIZER;
- (instancetype)initWithNibName:(nullable NSNibName)nibNameOrNil
                         bundle:(nullable NSBundle*)nibBundleOrNil NS_UNAVAILABLE;
- (nullable instancetype)initWithCoder:(NSCoder*)coder NS_UNAVAILABLE;

@end

NS_ASSUME_NONNULL_END
