#pragma once

#include <utility>

#include "session/ScreenLockNotifier.h"

namespace wakeloft {

// Locks and user switches announced by hand, for tests and the Linux build.
class InMemoryScreenLockNotifier final : public ScreenLockNotifier {
 public:
  void observe(std::function<void(Event)> handler) override { handler_ = std::move(handler); }

  void post(Event event) {
    if (handler_) handler_(event);
  }

 private:
  std::function<void(Event)> handler_;
};

}  // namespace wakeloft
