#include "XPCLidHelperStatus.h"

#import <Foundation/Foundation.h>

#include <cmath>

#import "LidLeaseXPC.h"
#import "LidLeaseXPCInterface.h"
#import "NSStringText.h"
#include "helper/LidHelperService.h"

namespace wakeloft::XPCLidHelperStatus {

std::variant<LidLeaseStatus, std::string> ask(const std::string& helperRequirement, double timeout) {
  NSXPCConnection* connection =
      [[NSXPCConnection alloc] initWithMachServiceName:nsString(LidHelperService::label) options:NSXPCConnectionPrivileged];
  connection.remoteObjectInterface = LidLeaseXPCInterface::make();
  [connection setCodeSigningRequirement:nsString(helperRequirement)];
  [connection resume];

  dispatch_semaphore_t answered = dispatch_semaphore_create(0);
  // Written on XPC's threads before the signal, read here after the wait;
  // the first of the reply and the error wins.
  NSLock* lock = [[NSLock alloc] init];
  __block NSString* reply = nil;
  __block NSString* failure = nil;
  __block BOOL done = NO;
  void (^finish)(NSString*, NSString*) = ^(NSString* text, NSString* error) {
    [lock lock];
    const BOOL first = !done;
    if (first) {
      done = YES;
      reply = text;
      failure = error;
    }
    [lock unlock];
    if (first) dispatch_semaphore_signal(answered);
  };
  id<LidLeaseXPC> helper = [connection remoteObjectProxyWithErrorHandler:^(NSError* error) {
    finish(nil, error.localizedDescription ? error.localizedDescription : @"the connection failed");
  }];
  [helper readLeaseStatusWithReply:^(NSString* _Nullable text) {
    finish(text ? text : @"", nil);
  }];
  const auto wait = static_cast<int64_t>(std::ceil(timeout * NSEC_PER_SEC));
  const bool inTime = dispatch_semaphore_wait(answered, dispatch_time(DISPATCH_TIME_NOW, wait)) == 0;
  [connection invalidate];
  if (!inTime) return "no answer within " + std::to_string(std::lround(timeout)) + " s";

  [lock lock];
  NSString* text = reply;
  NSString* error = failure;
  [lock unlock];
  if (!text) return utf8(error);
  if (const auto status = LidLeaseStatus::read(utf8(text))) return *status;
  // A refusal or a helper of another version; its text is not repeated.
  return std::string("its answer is not a status");
}

}  // namespace wakeloft::XPCLidHelperStatus
