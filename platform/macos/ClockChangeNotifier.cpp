#include "clock/ClockChangeNotifier.h"

#include <dispatch/dispatch.h>
#include <notify.h>
#include <notify_keys.h>

#include <cstdint>
#include <string>
#include <system_error>

#include "base/MainThread.h"

namespace wakeloft {

struct ClockChangeNotifier::Watch {
  // Shared with the registration's block, which may already be queued when
  // the notifier goes.
  std::shared_ptr<std::function<void()>> handler = std::make_shared<std::function<void()>>();
  int token = NOTIFY_TOKEN_INVALID;
};

ClockChangeNotifier::ClockChangeNotifier() : watch_(std::make_unique<Watch>()) {
  const auto handler = watch_->handler;
  const std::uint32_t status =
      notify_register_dispatch(kNotifyClockSet, &watch_->token, dispatch_get_main_queue(), ^(int) {
        if (*handler) (*handler)();
      });
  if (status != NOTIFY_STATUS_OK) {
    throw std::system_error(static_cast<int>(status), std::generic_category(),
                            "The clock-change notification could not be registered (notify status " +
                                std::to_string(status) + ")");
  }
}

ClockChangeNotifier::~ClockChangeNotifier() {
  *watch_->handler = nullptr;
  notify_cancel(watch_->token);
}

void ClockChangeNotifier::observe(std::function<void()> handler) {
  requireMainThread("ClockChangeNotifier::observe");
  *watch_->handler = std::move(handler);
}

}  // namespace wakeloft
