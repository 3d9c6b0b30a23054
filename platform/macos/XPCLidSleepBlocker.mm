#include "XPCLidSleepBlocker.h"

#include <utility>

#import "LidLeaseXPC.h"
#import "LidLeaseXPCInterface.h"
#import "NSStringText.h"

#include "helper/LidHelperService.h"

namespace wakeloft {

namespace {

using Outcome = XPCReply::Outcome;

class XPCLidLeaseTransport final : public LidLeaseTransport {
 public:
  explicit XPCLidLeaseTransport(XPCLidSleepBlocker::MakeConnection makeConnection)
      : makeConnection_(std::move(makeConnection)) {}
  ~XPCLidLeaseTransport() override { drop(); }

  bool isOpen() const override { return connection_ != nil; }

  void open(const std::string& requirement) override {
    NSXPCConnection* connection = makeConnection_();
    connection.remoteObjectInterface = LidLeaseXPCInterface::make();
    [connection setCodeSigningRequirement:nsString(requirement)];
    [connection resume];
    connection_ = connection;
  }

  // The reply block and the error handler run on XPC's threads; they only
  // finish the latch, which hands the outcome to the main thread.
  void send(const LidLeaseRequest& request, const std::shared_ptr<XPCReply>& reply) override {
    const std::shared_ptr<XPCReply> latch = reply;
    id proxy = [connection_ remoteObjectProxyWithErrorHandler:^(NSError*) {
      latch->finish(Outcome::failed());
    }];
    if (![proxy conformsToProtocol:@protocol(LidLeaseXPC)]) {
      latch->finish(Outcome::failed());
      return;
    }
    id<LidLeaseXPC> lease = proxy;
    // Each case has its own scope: its block holds a copy of the latch.
    switch (request.kind()) {
      case LidLeaseRequest::Kind::renew: {
        [lease renewLeaseUntil:request.until()
                         reply:^(NSString* _Nullable text) {
                           std::optional<std::string> reason;
                           if (text) reason = utf8(text);
                           latch->finish(Outcome::replied(std::move(reason)));
                         }];
        return;
      }
      case LidLeaseRequest::Kind::revoke: {
        [lease revokeLeaseWithReply:^{
          latch->finish(Outcome::replied(std::nullopt));
        }];
        return;
      }
      case LidLeaseRequest::Kind::status: {
        [lease readLeaseStatusWithReply:^(NSString* _Nullable text) {
          std::optional<std::string> line;
          if (text) line = utf8(text);
          latch->finish(Outcome::replied(std::move(line)));
        }];
        return;
      }
      case LidLeaseRequest::Kind::disconnect:
        // The helper's own word for a client that went away; never sent.
        latch->finish(Outcome::failed());
        return;
    }
  }

  void drop() override {
    [connection_ invalidate];
    connection_ = nil;
  }

 private:
  XPCLidSleepBlocker::MakeConnection makeConnection_;
  NSXPCConnection* connection_ = nil;
};

}  // namespace

NSXPCConnection* XPCLidSleepBlocker::makeHelperConnection() {
  return [[NSXPCConnection alloc] initWithMachServiceName:nsString(LidHelperService::label)
                                                  options:NSXPCConnectionPrivileged];
}

XPCLidSleepBlocker::XPCLidSleepBlocker(std::shared_ptr<LidHelperRegistration> registration,
                                       std::optional<std::string> helperRequirement, double replyTimeout,
                                       MakeConnection makeConnection)
    : LeaseClientLidSleepBlocker(std::move(registration), std::move(helperRequirement), replyTimeout,
                                 std::make_unique<XPCLidLeaseTransport>(std::move(makeConnection))) {}

}  // namespace wakeloft
