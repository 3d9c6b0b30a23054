#pragma once

#include <memory>
#include <string>
#include <vector>

#include "lease/LidLeaseService.h"
#include "lease/LidSleepLeaseKeeper.h"
#include "support/InMemorySleepSetting.h"
#include "support/ManualClocks.h"

namespace wakeloft::testing {

// The helper's real keeper and lease service over the in-memory sleep
// setting and manual clocks, with the service's log kept.
struct InMemoryLeaseService {
  InMemoryLeaseService() = default;
  InMemoryLeaseService(const InMemoryLeaseService&) = delete;
  InMemoryLeaseService& operator=(const InMemoryLeaseService&) = delete;

  // The deadline a client sends for `seconds` from now.
  double in(double seconds) const { return clocks.now().adding(seconds).secondsSince1970; }
  std::size_t writes() const { return setting->writeAttempts.size(); }

  ManualMachineClocks clocks;
  std::shared_ptr<InMemorySleepSetting> setting = std::make_shared<InMemorySleepSetting>();
  std::shared_ptr<LidSleepLeaseKeeper> keeper =
      std::make_shared<LidSleepLeaseKeeper>(setting, clocks.dates, clocks.uptime);
  std::vector<std::string> logLines;
  std::shared_ptr<LidLeaseService> service =
      std::make_shared<LidLeaseService>(keeper, [this](const std::string& line) { logLines.push_back(line); });
};

}  // namespace wakeloft::testing
