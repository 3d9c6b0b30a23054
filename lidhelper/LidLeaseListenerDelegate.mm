#import "LidLeaseListenerDelegate.h"

#include <memory>

#include "CodeSigningIdentity.h"
#import "LidLeaseConnection.h"
#import "LidLeaseXPCInterface.h"
#import "NSStringText.h"
#include "helper/LidLeaseClientNumbers.h"
#include "helper/LidLeasePeer.h"

using wakeloft::LidLeaseRequest;
using wakeloft::LidLeaseService;

@implementation LidLeaseListenerDelegate {
  NSString* _callerRequirement;
  NSString* _appRequirement;
  LidLeaseService::Requests _requests;
  // XPC asks on its own threads; the numbers carry their own lock.
  std::unique_ptr<wakeloft::LidLeaseClientNumbers> _clients;
}

- (instancetype)initWithCallerRequirement:(NSString*)callerRequirement
                           appRequirement:(NSString*)appRequirement
                                 requests:(LidLeaseService::Requests)requests {
  if ((self = [super init])) {
    _callerRequirement = [callerRequirement copy];
    _appRequirement = [appRequirement copy];
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
  // Told by the process at the peer's pid. Should that pid already belong to
  // another process, the peer that connected is gone and sends nothing
  // more; every message that does come still meets the caller requirement.
  const bool isApp = _appRequirement &&
                     wakeloft::CodeSigningIdentity::processMeets(newConnection.processIdentifier,
                                                                 wakeloft::utf8(_appRequirement));
  const LidLeaseService::Requests requests = wakeloft::LidLeasePeer::admitting(
      isApp ? wakeloft::LidLeasePeer::Kind::app : wakeloft::LidLeasePeer::Kind::command, _requests);
  const std::uint64_t client = _clients->next();
  newConnection.exportedInterface = wakeloft::LidLeaseXPCInterface::make();
  newConnection.exportedObject = [[LidLeaseConnection alloc] initWithClient:client requests:requests];
  newConnection.invalidationHandler = ^{
    requests(client, LidLeaseRequest::disconnect(), [](LidLeaseService::Reply) {});
  };
  [newConnection resume];
  return YES;
}

@end
