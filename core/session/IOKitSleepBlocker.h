#pragma once

#include <cstdint>
#include <memory>
#include <optional>
#include <string>

#include "session/PowerAssertions.h"
#include "session/SleepBlocker.h"

namespace wakeloft {

// Holds at most one power assertion that keeps the Mac from idle sleep. The
// assertion never outlives the blocker. Main thread only.
class IOKitSleepBlocker final : public SleepBlocker {
 public:
  static constexpr const char* assertionType = "PreventUserIdleSystemSleep";
  static constexpr std::uint32_t assertionLevelOn = 255;
  // The name the system shows for the app's assertion in its listings.
  static constexpr const char* appReason = "Wakeloft is keeping this Mac awake";

  IOKitSleepBlocker(std::shared_ptr<PowerAssertions> assertions, std::string reason);
  ~IOKitSleepBlocker() override;
  IOKitSleepBlocker(const IOKitSleepBlocker&) = delete;
  IOKitSleepBlocker& operator=(const IOKitSleepBlocker&) = delete;

  void engage() override;
  void release() override;
  bool isEngaged() const override { return assertionID_.has_value(); }

  const std::optional<std::uint32_t>& assertionID() const { return assertionID_; }
  const std::string& reason() const { return reason_; }

 private:
  std::shared_ptr<PowerAssertions> assertions_;
  std::string reason_;
  std::optional<std::uint32_t> assertionID_;
};

}  // namespace wakeloft
