#pragma once

#import <Foundation/Foundation.h>

#include <cstdint>

#import "LidLeaseXPC.h"
#include "lease/LidLeaseService.h"

NS_ASSUME_NONNULL_BEGIN

// The object one accepted connection exports: it turns the connection's
// calls into requests of its client number for the lease service. Made only
// by the listener's delegate, which numbers the connection.
@interface LidLeaseConnection : NSObject <LidLeaseXPC>

- (instancetype)init NS_UNAVAILABLE;
+ (instancetype)new NS_UNAVAILABLE;
- (instancetype)initWithClient:(std::uint64_t)client
                      requests:(wakeloft::LidLeaseService::Requests)requests NS_DESIGNATED_INITIALIZER;

@property(nonatomic, readonly) std::uint64_t client;

@end

NS_ASSUME_NONNULL_END
