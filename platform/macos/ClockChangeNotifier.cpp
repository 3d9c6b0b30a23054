#include "ClockChangeNotifier.h"

#include <dispatch/dispatch.h>
#include <notify.h>
#include <notify_keys.h>

#include <cstdint>
#include <stdexcept>
#include <string>

#include "base/MainThread.h"

namespace wakeloft {

ClockChangeNotifier::ClockChangeNotifier()
    : handler_(std::make_shared<std::function<void()>>()), token_(NOTIFY_TOKEN_INVALID) {
  const auto handler = handler_;
  const std::uint32_t status =
      notify_register_dispatch(kNotifyClockSet, &token_, dispatch_get_main_queue(), ^(int) {
        if (*handler) (*handler)();
      });
  if (status != NOTIFY_STATUS_OK) {
    throw std::runtime_error("The clock-change notification could not be registered (notify status " +
                             std::to_string(status) + ")");
  }
}

ClockChangeNotifier::~ClockChangeNotifier() {
  *handler_ = nullptr;
  notify_cancel(token_);
}

void ClockChangeNotifier::observe(std::function<void()> handler) {
  requireMainThread("ClockChangeNotifier::observe");
  *handler_ = std::move(handler);
}

}  // namespace wakeloft
