#pragma once

#include <cstdint>
#include <memory>
#include <optional>
#include <string>

#include "session/PowerAssertions.h"
#include "session/SleepBlocker.h"

namespace wakeloft {

// Holds at most one power assertion of its type: by default the one that
// keeps the Mac from idle sleep. The assertion never outlives the blocker.
// Main thread only.
class IOKitSleepBlocker final : public SleepBlocker {
 public:
  static constexpr const char* assertionType = "PreventUserIdleSystemSleep";
  // Keeps the display on; never forces it off.
  static constexpr const char* displayAssertionType = "PreventUserIdleDisplaySleep";
  static constexpr std::uint32_t assertionLevelOn = 255;
  // The name the system shows for the app's assertion in its listings.
  static constexpr const char* appReason = "Wakeloft is keeping this Mac awake";

  IOKitSleepBlocker(std::shared_ptr<PowerAssertions> assertions, std::string reason,
                    std::string type = assertionType);
  ~IOKitSleepBlocker() override;
  IOKitSleepBlocker(const IOKitSleepBlocker&) = delete;
  IOKitSleepBlocker& operator=(const IOKitSleepBlocker&) = delete;

  void engage() override;
  void release() override;
  void restore() override;
  bool isEngaged() const override { return assertionID_.has_value(); }

  const std::optional<std::uint32_t>& assertionID() const { return assertionID_; }
  const std::string& reason() const { return reason_; }

 private:
  std::shared_ptr<PowerAssertions> assertions_;
  std::string reason_;
  std::string type_;
  std::optional<std::uint32_t> assertionID_;
};

}  // namespace wakeloft
