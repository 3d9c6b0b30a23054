#pragma once

#import <Foundation/Foundation.h>

#include "lease/LidLeaseService.h"

NS_ASSUME_NONNULL_BEGIN

// Accepts connections only from code that meets `callerRequirement`, numbers
// each one from 1 and exports a LidLeaseConnection for it; an invalidated
// connection sends `disconnect` for its number. A peer that also meets
// `appRequirement` is the app; any other gets only what the command may ask.
// Without a requirement (no team identifier could be read) it accepts
// nobody.
@interface LidLeaseListenerDelegate : NSObject <NSXPCListenerDelegate>

- (instancetype)init NS_UNAVAILABLE;
+ (instancetype)new NS_UNAVAILABLE;
- (instancetype)initWithCallerRequirement:(nullable NSString*)callerRequirement
                           appRequirement:(nullable NSString*)appRequirement
                                 requests:(wakeloft::LidLeaseService::Requests)requests NS_DESIGNATED_INITIALIZER;

@end

NS_ASSUME_NONNULL_END
