#import "LidLeaseListenerDelegate.h"

#include <memory>

#import "LidLeaseConnection.h"
#import "LidLeaseXPCInterface.h"
#include "helper/LidLeaseClientNumbers.h"

using wakeloft::LidLeaseRequest;
using wakeloft::LidLeaseService;

@implementation LidLeaseListenerDelegate {
  NSString* _callerRequirement;
  LidLeaseService::Requests _requests;
  // XPC asks on its own threads; the numbers carry their own lock.
  std::unique_ptr<wakeloft::LidLeaseClientNumbers> _clients;
}

- (instancetype)initWithCallerRequirement:(NSString*)callerRequirement requests:(LidLeaseService::Requests)requests {
  if ((self = [super init])) {
    _callerRequirement = [callerRequirement copy];
    _requests = std::move(requests);
    _clients = std::make_unique<wakeloft::LidLeaseClientNumbers>();
  }
  return self;
}

- (BOOL)listener:(NSXPCListener*)listener shouldAcceptNewConnection:(NSXPCConnection*)newConnection {
  if (!_callerRequirement) return NO;
  // The system then checks every message's sender, not just this first one.
  @try {
    [newConnection setCodeSigningRequirement:_callerRequirement];
  } @catch (NSException*) {
    return NO;  // a malformed requirement: accept nobody rather than anybody
  }
  const std::uint64_t client = _clients->next();
  newConnection.exportedInterface = wakeloft::LidLeaseXPCInterface::make();
  newConnection.exportedObject = [[LidLeaseConnection alloc] initWithClient:client requests:_requests];
  const LidLeaseService::Requests requests = _requests;
  newConnection.invalidationHandler = ^{
    requests(client, LidLeaseRequest::disconnect(), [](LidLeaseService::Reply) {});
  };
  [newConnection resume];
  return YES;
}

@end
