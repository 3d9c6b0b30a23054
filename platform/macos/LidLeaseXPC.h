#pragma once

#import <Foundation/Foundation.h>

// The one contract between the app and the lid helper. Only a number, texts
// and reply blocks cross it, so the interface needs no class lists. The
// method signatures fix the type encodings both sides must agree on:
// v32@0:8d16@?<v@?@"NSString">24, v24@0:8@?<v@?>16 and
// v24@0:8@?<v@?@"NSString">16.
NS_ASSUME_NONNULL_BEGIN

@protocol LidLeaseXPC

// Asks for the lease until `deadline`, seconds since 1970. The reply carries
// nil when granted, else the refusal's reason text.
- (void)renewLeaseUntil:(double)deadline reply:(void (^)(NSString * _Nullable))reply;

// Ends this client's lease. The reply only says the helper has handled it;
// trouble putting the setting back shows at the next renewal.
- (void)revokeLeaseWithReply:(void (^)(void))reply;

// How the setting and the helper's lease stand, read without changing
// either: the reply carries the status line, or a refusal's reason. The one
// call the app's command may make.
- (void)readLeaseStatusWithReply:(void (^)(NSString * _Nullable))reply;

@end

NS_ASSUME_NONNULL_END
