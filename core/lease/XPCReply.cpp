#include "lease/XPCReply.h"

#include <utility>

#include "clock/BackgroundQueue.h"
#include "clock/MainRunLoop.h"

namespace wakeloft {

std::shared_ptr<XPCReply> XPCReply::make(std::function<void(Outcome)> deliver) {
  return std::shared_ptr<XPCReply>(new XPCReply(std::move(deliver)));
}

void XPCReply::finish(Outcome outcome) {
  std::function<void(Outcome)> taken;
  {
    std::lock_guard guard(lock_);
    taken = std::exchange(deliver_, nullptr);
  }
  if (!taken) return;  // an earlier outcome won
  MainRunLoop::perform([taken = std::move(taken), outcome = std::move(outcome)]() mutable { taken(std::move(outcome)); });
}

void XPCReply::expire(double seconds) {
  BackgroundQueue::runAfter(seconds, [self = shared_from_this()] { self->finish(Outcome::unanswered()); });
}

}  // namespace wakeloft
