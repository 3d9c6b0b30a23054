#include "helper/LidLeasePeer.h"

namespace wakeloft {

LidLeaseService::Requests LidLeasePeer::admitting(Kind peer, LidLeaseService::Requests requests) {
  if (peer == Kind::app) return requests;
  return [requests = std::move(requests)](std::uint64_t client, LidLeaseRequest request,
                                          LidLeaseService::ReplyHandler reply) {
    switch (request.kind()) {
      case LidLeaseRequest::Kind::status:
        requests(client, request, std::move(reply));
        return;
      case LidLeaseRequest::Kind::disconnect:
        return;
      case LidLeaseRequest::Kind::renew:
      case LidLeaseRequest::Kind::revoke:
        break;
    }
    if (reply) reply(std::string(commandRefusal));
  };
}

}  // namespace wakeloft
