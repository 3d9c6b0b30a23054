#pragma once

#import <AppKit/AppKit.h>

#include <functional>
#include <memory>
#include <string_view>

#include "lid/LidAwakeController.h"
#include "session/AwakeController.h"
#include "session/ProcessBindingController.h"

// The application delegate: asks before a quit that would end a session or
// Deepwake, never questions the system's own quits or the relaunch after an
// update, and holds the quit back until Deepwake has handed the sleep
// setting back (5 seconds at most). Every decision is the portable QuitFlow's;
// this turns AppKit's questions and answers into its terms. It also hands
// the addresses the app is asked to open (wakeloft://) to the automation
// handler, and gives the keyboard back to the user's app when one of them
// brought Wakeloft to the front with nothing to show. Main thread only.
@interface QuitConfirmationDelegate : NSObject <NSApplicationDelegate>

- (instancetype)init NS_DESIGNATED_INITIALIZER;

// Gives the delegate the awake controllers and the processes a session is
// held for; later calls change nothing.
- (void)attachAwake:(std::shared_ptr<wakeloft::AwakeController>)awake
                lid:(std::shared_ptr<wakeloft::LidAwakeController>)lid
            binding:(std::shared_ptr<const wakeloft::ProcessBindingController>)binding;
@property(nonatomic, readonly) BOOL hasControllers;

// Where the addresses go, in the order they come; those that came before
// are handed over at once.
- (void)followAddressesWith:(std::function<void(std::string_view)>)follow;

// Set just before an update relaunches the app.
@property(nonatomic, getter=isRelaunchingForUpdate) BOOL relaunchingForUpdate;

@end
