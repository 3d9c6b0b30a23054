#import "LidLeaseConnection.h"

#include <cstdint>
#include <string>

#import "NSStringText.h"

using wakeloft::LidLeaseRequest;
using wakeloft::LidLeaseService;

namespace {

// Never nil, which the app would read as "granted": bytes that are not
// UTF-8 are repaired instead.
NSString* replyText(const std::string& text) { return wakeloft::nsString(text); }

}  // namespace

@implementation LidLeaseConnection {
  LidLeaseService::Requests _requests;
}

- (instancetype)initWithClient:(std::uint64_t)client requests:(LidLeaseService::Requests)requests {
  if ((self = [super init])) {
    _client = client;
    _requests = std::move(requests);
  }
  return self;
}

// XPC calls these on its own threads; the requests callback only queues.
- (void)renewLeaseUntil:(double)deadline reply:(void (^)(NSString* _Nullable))reply {
  void (^answer)(NSString* _Nullable) = [reply copy];
  _requests(_client, LidLeaseRequest::renew(deadline), [answer](LidLeaseService::Reply text) {
    // Main-loop blocks may run with no autorelease pool around them.
    @autoreleasepool {
      answer(text ? replyText(*text) : nil);
    }
  });
}

- (void)revokeLeaseWithReply:(void (^)(void))reply {
  void (^done)(void) = [reply copy];
  // The result stays with the helper's log; the client learns of trouble at
  // its next renewal.
  _requests(_client, LidLeaseRequest::revoke(), [done](LidLeaseService::Reply) {
    @autoreleasepool {
      done();
    }
  });
}

- (void)readLeaseStatusWithReply:(void (^)(NSString* _Nullable))reply {
  void (^answer)(NSString* _Nullable) = [reply copy];
  _requests(_client, LidLeaseRequest::status(), [answer](LidLeaseService::Reply text) {
    @autoreleasepool {
      answer(text ? replyText(*text) : nil);
    }
  });
}

@end
